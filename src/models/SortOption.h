#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace ravelinth {

// The six orders of the file list, in picker order; the raw value is the display name.
class SortOption {
    Q_GADGET

public:
    enum Value {
        sizeDescending,
        sizeAscending,
        nameAscending,
        nameDescending,
        dateNewest,
        dateOldest
    };
    Q_ENUM(Value)
    static constexpr int count = 6;

    constexpr SortOption(Value value = sizeDescending) : m_value(value) {}
    constexpr operator Value() const { return m_value; }

    static const std::array<SortOption, count> &allCases();
    QString rawValue() const;
    static std::optional<SortOption> fromRawValue(QStringView rawValue);

private:
    Value m_value;
};

} // namespace ravelinth
