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

bool AsciiCollation::isPrintable(QByteArrayView name) {
    for (char c : name) {
        if (c < first || c > '~')
            return false;
    }
    return true;
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
        m_byPlace[size_t(i) + 1] = c;
    }
    m_agrees = verify(locale);
}

void AsciiCollation::appendKey(QByteArrayView name, std::vector<std::uint8_t> &out) const {
    const size_t length = size_t(name.size());
    const size_t start = out.size();
    out.resize(start + 2 * length + 1);
    std::uint8_t *ranks = out.data() + start;
    std::uint8_t *places = ranks + length + 1;
    for (size_t i = 0; i < length; ++i) {
        const size_t c = size_t(std::uint8_t(name[qsizetype(i)]) - std::uint8_t(first));
        ranks[i] = m_letterRank[c];
        places[i] = m_place[c];
    }
    ranks[length] = 0;
}

std::size_t AsciiCollation::nameOfKey(const std::uint8_t *key, std::size_t length,
                                      char16_t *out) const {
    const size_t characters = (length - 1) / 2;
    const std::uint8_t *places = key + characters + 1;
    for (size_t i = 0; i < characters; ++i)
        out[i] = char16_t(m_byPlace[places[i]]);
    return characters;
}

// Every name of one or two characters, sorted by key, must be in the collator's order, and so
// must the probes; joined letters and reweighed punctuation show up there.
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
    std::vector<std::pair<std::vector<std::uint8_t>, QByteArray>> keyed;
    keyed.reserve(names.size());
    for (const QByteArray &name : names) {
        std::vector<std::uint8_t> key;
        appendKey(name, key);
        keyed.emplace_back(std::move(key), name);
    }
    std::sort(keyed.begin(), keyed.end());
    keyed.erase(std::unique(keyed.begin(), keyed.end()), keyed.end());
    for (size_t i = 1; i < keyed.size(); ++i) {
        if (keyed[i - 1].first == keyed[i].first)
            return false;
        if (collator.compare(QString::fromLatin1(keyed[i - 1].second),
                             QString::fromLatin1(keyed[i].second)) >= 0)
            return false;
    }
    return true;
}

} // namespace ravelinth
