#pragma once

#include "services/FileListQuery.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace ravelinth {

// The six orders of the file list, in picker order; the raw value is the display name. The
// orders themselves are the list query's, so a query takes a SortOption as it is.
class SortOption {
public:
    using Value = FileListSort;
    static constexpr Value sizeDescending = Value::sizeDescending;
    static constexpr Value sizeAscending = Value::sizeAscending;
    static constexpr Value nameAscending = Value::nameAscending;
    static constexpr Value nameDescending = Value::nameDescending;
    static constexpr Value dateNewest = Value::dateNewest;
    static constexpr Value dateOldest = Value::dateOldest;
    static constexpr int count = int(allFileListSorts.size());

    constexpr SortOption(Value value = sizeDescending) : m_value(value) {}
    constexpr operator Value() const { return m_value; }

    static const std::array<SortOption, count> &allCases();
    QString rawValue() const;
    static std::optional<SortOption> fromRawValue(QStringView rawValue);

private:
    Value m_value;
};

} // namespace ravelinth
