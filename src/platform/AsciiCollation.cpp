#include "platform/AsciiCollation.h"

#include <QCollator>
#include <QString>

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>

namespace ravelinth {

namespace {

QCollator collatorFor(const QLocale &locale) {
    QCollator collator(locale);
    collator.setCaseSensitivity(Qt::CaseSensitive);
    collator.setNumericMode(false);
    collator.setIgnorePunctuation(false);
    return collator;
}

// Pairs whose order a locale's joined letters, expansions or punctuation weights would change.
constexpr const char *probes[][2] = {
    {"a-b", "ab"},  {"a b", "ab"}, {"a.b", "ab"}, {"a_b", "ab"}, {"-a", "a"},    {"a1", "a-1"},
    {"Aa", "aA"},   {"aB", "Ab"},  {"ab", "AB"},  {"ch", "cz"},  {"ch", "h"},    {"ch", "hz"},
    {"ch", "ci"},   {"aa", "az"},  {"aa", "ab"},  {"ll", "lz"},  {"ll", "m"},    {"dz", "dzz"},
    {"dzs", "dzz"}, {"cs", "cz"},  {"gy", "gz"},  {"ly", "lz"},  {"ny", "nz"},   {"sz", "sza"},
    {"zs", "zz"},   {"ty", "tz"},  {"rr", "rz"},  {"nj", "nz"},  {"lj", "lz"},   {"ae", "az"},
    {"oe", "oz"},   {"ue", "uz"},  {"ss", "st"},  {"th", "tz"},  {"ij", "iz"},   {"ij", "y"},
    {"v", "w"},     {"vz", "wa"},  {"x1", "x10"}, {"x9", "x10"}, {"A.b", "a-B"}, {"abc", "abC"},
};

} // namespace

std::shared_ptr<const AsciiCollation> AsciiCollation::forLocale(const QLocale &locale) {
    static std::mutex mutex;
    static std::map<QString, std::shared_ptr<const AsciiCollation>> made;
    // The short tag alone is "en" for both English and C, which collate differently.
    const QString name = locale.bcp47Name() + u'|' + locale.name();
    const std::lock_guard lock(mutex);
    auto found = made.find(name);
    if (found == made.end()) {
        auto collation = std::make_shared<const AsciiCollation>(locale);
        found = made.emplace(name, collation->agreesWithCollator() ? collation : nullptr).first;
    }
    return found->second;
}

AsciiCollation::AsciiCollation(const QLocale &locale) {
    const QCollator collator = collatorFor(locale);
    const auto text = [](char c) { return QString(QChar(char16_t(c))); };
    std::array<char, count> chars{};
    for (int i = 0; i < count; ++i)
        chars[size_t(i)] = char(first + i);
    std::stable_sort(chars.begin(), chars.end(),
                     [&](char a, char b) { return collator.compare(text(a), text(b)) < 0; });
    for (int i = 1; i < count; ++i) {
        if (collator.compare(text(chars[size_t(i) - 1]), text(chars[size_t(i)])) >= 0)
            return;
    }
    // Two neighbours share a letter when the case of the first character decides against what
    // follows: "A" + the lowest still comes after "a" + the highest only if the letters differ.
    const QString lowest = text(chars.front());
    const QString highest = text(chars.back());
    std::uint8_t rank = 1;
    for (int i = 0; i < count; ++i) {
        const char c = chars[size_t(i)];
        if (i > 0 && collator.compare(text(c) + lowest, text(chars[size_t(i) - 1]) + highest) > 0)
            ++rank;
        m_letterRank[size_t(c - first)] = rank;
        m_place[size_t(c - first)] = std::uint8_t(i + 1);
    }
    m_agrees = verify(locale);
}

std::pair<std::uint64_t, std::uint64_t> AsciiCollation::prefix(QByteArrayView name) const {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    const qsizetype length = name.size();
    for (qsizetype i = 0; i < 8; ++i)
        high = high << 8 | (i < length ? rankOf(name[i]) : 0);
    for (qsizetype i = 8; i < 16; ++i)
        low = low << 8 | (i < length ? rankOf(name[i]) : 0);
    return {high, low};
}

int AsciiCollation::compare(QByteArrayView a, QByteArrayView b) const {
    const qsizetype common = std::min(a.size(), b.size());
    for (qsizetype i = 0; i < common; ++i) {
        const int difference = int(rankOf(a[i])) - int(rankOf(b[i]));
        if (difference != 0)
            return difference;
    }
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    for (qsizetype i = 0; i < common; ++i) {
        const int difference = int(placeOf(a[i])) - int(placeOf(b[i]));
        if (difference != 0)
            return difference;
    }
    return 0;
}

// Every name of one or two characters, sorted by the table, must be in the collator's order, and
// so must the probes; joined letters and reweighed punctuation show up there.
bool AsciiCollation::verify(const QLocale &locale) const {
    const QCollator collator = collatorFor(locale);
    std::vector<QByteArray> names;
    names.reserve(count * count + count + 2 * std::size(probes));
    for (int a = 0; a < count; ++a) {
        names.emplace_back(1, char(first + a));
        for (int b = 0; b < count; ++b)
            names.push_back(QByteArray(1, char(first + a)) + char(first + b));
    }
    for (const auto &pair : probes) {
        names.emplace_back(pair[0]);
        names.emplace_back(pair[1]);
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    std::sort(names.begin(), names.end(),
              [&](const QByteArray &a, const QByteArray &b) { return compare(a, b) < 0; });
    for (size_t i = 1; i < names.size(); ++i) {
        if (compare(names[i - 1], names[i]) == 0)
            return false;
        if (collator.compare(QString::fromLatin1(names[i - 1]), QString::fromLatin1(names[i])) >= 0)
            return false;
    }
    return true;
}

} // namespace ravelinth
