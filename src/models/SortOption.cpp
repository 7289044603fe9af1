#include "models/SortOption.h"

namespace ravelinth {

const std::array<SortOption, SortOption::count> &SortOption::allCases() {
    static const std::array<SortOption, count> cases{sizeDescending, sizeAscending, nameAscending,
                                                     nameDescending, dateNewest,    dateOldest};
    return cases;
}

QString SortOption::rawValue() const {
    switch (m_value) {
    case sizeDescending:
        return u"Size (Largest)"_qs;
    case sizeAscending:
        return u"Size (Smallest)"_qs;
    case nameAscending:
        return u"Name (A-Z)"_qs;
    case nameDescending:
        return u"Name (Z-A)"_qs;
    case dateNewest:
        return u"Date (Newest)"_qs;
    case dateOldest:
        break;
    }
    return u"Date (Oldest)"_qs;
}

std::optional<SortOption> SortOption::fromRawValue(QStringView rawValue) {
    for (SortOption option : allCases()) {
        if (option.rawValue() == rawValue)
            return option;
    }
    return std::nullopt;
}

} // namespace ravelinth
