#include "models/AsciiText.h"
#include "platform/AsciiCollation.h"
#include "platform/NameSortKeys.h"
#include "services/FileListQuery.h"
#include "utility/ParallelHalves.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace ravelinth {

namespace {

// A pass over fewer files than this is quicker than starting a thread for half of it.
constexpr qsizetype parallelFrom = 100000;
// Longer names (there are none on Linux) take the collation library's keys.
constexpr qsizetype tableNamesUpTo = 256;

// One name's place in the sort. A printable-ASCII name is ordered by the ASCII table straight
// from its bytes; any other has a key made by the collation library. The prefix is the first
// sixteen bytes of either, which settles most comparisons without reading the name or the key,
// but it orders only names of one kind.
struct NameEntry {
    std::uint64_t high;
    std::uint64_t low;
    int index;
    int key; // its number in the library's keys; -1 for a name the table orders
};

class NameComparison {
public:
    NameComparison(const QList<FileItem> &files, const AsciiCollation *table,
                   const NameSortKeys &keys)
        : m_files(files), m_table(table), m_keys(keys) {}

    int operator()(const NameEntry &a, const NameEntry &b) const {
        const bool tableA = a.key < 0;
        const bool tableB = b.key < 0;
        if (tableA == tableB && (a.high != b.high || a.low != b.low))
            return a.high != b.high ? (a.high < b.high ? -1 : 1) : (a.low < b.low ? -1 : 1);
        if (tableA && tableB)
            return m_table->compare(m_files[a.index].name(), m_files[b.index].name());
        if (!tableA && !tableB)
            return m_keys.compare(a.key, b.key);
        // A mixed pair, rare: the ASCII name is given a library key for the occasion.
        return tableA ? -m_keys.compareWith(b.key, widened(a.index).view())
                      : m_keys.compareWith(a.key, widened(b.index).view());
    }

private:
    struct Wide {
        char16_t text[tableNamesUpTo];
        qsizetype size = 0;
        QStringView view() const { return QStringView(text, size); }
    };
    Wide widened(int index) const {
        const QByteArrayView name = m_files[index].name();
        Wide wide;
        wide.size = name.size();
        for (qsizetype i = 0; i < name.size(); ++i)
            wide.text[i] = char16_t(name[i]);
        return wide;
    }

    const QList<FileItem> &m_files;
    const AsciiCollation *m_table;
    const NameSortKeys &m_keys;
};

// Orders `entries` by their prefixes with a stable radix sort, sixteen bits a pass from the last
// (a pass whose digit every entry shares is skipped), then sorts each run of equal prefixes with
// `before`. Names in one folder tree share their first letters ("build_", "backup-"), so buckets
// by the first two leave long comparison sorts; the radix passes cost the same whatever the
// names. `entries` must hold names of one kind, for which the prefix orders; `scratch` is as long.
template <typename Before>
void sortByPrefix(std::span<NameEntry> entries, std::span<NameEntry> scratch, Before before) {
    constexpr size_t worthIt = 4096;
    if (entries.size() < worthIt) {
        std::sort(entries.begin(), entries.end(), before);
        return;
    }
    constexpr int digits = 8;
    std::vector<std::uint32_t> starts(size_t(1) << 16);
    NameEntry *from = entries.data();
    NameEntry *to = scratch.data();
    for (int digit = 0; digit < digits; ++digit) {
        const auto digitOf = [digit](const NameEntry &entry) {
            const std::uint64_t word = digit < digits / 2 ? entry.low : entry.high;
            return size_t(word >> (16 * (digit % (digits / 2))) & 0xffff);
        };
        std::fill(starts.begin(), starts.end(), 0);
        for (const NameEntry &entry : std::span(from, entries.size()))
            ++starts[digitOf(entry)];
        if (starts[digitOf(*from)] == entries.size())
            continue;
        std::uint32_t sum = 0;
        for (std::uint32_t &start : starts)
            sum += std::exchange(start, sum);
        for (const NameEntry &entry : std::span(from, entries.size()))
            to[starts[digitOf(entry)]++] = entry;
        std::swap(from, to);
    }
    if (from != entries.data())
        std::copy_n(from, entries.size(), entries.data());
    const auto samePrefix = [](const NameEntry &a, const NameEntry &b) {
        return a.high == b.high && a.low == b.low;
    };
    for (auto begin = entries.begin(); begin != entries.end();) {
        const auto end = std::find_if_not(begin + 1, entries.end(), [&](const NameEntry &entry) {
            return samePrefix(*begin, entry);
        });
        if (end - begin > 1)
            std::sort(begin, end, before);
        begin = end;
    }
}

// Entries in memory of their own, left unset until written: fresh pages cost a fault each, and
// the two halves' sorts take those faults on two cores instead of one thread zeroing them first.
class NameEntries {
public:
    explicit NameEntries(size_t size)
        : m_entries(std::make_unique_for_overwrite<NameEntry[]>(size)), m_size(size) {}
    std::span<NameEntry> span() const { return {m_entries.get(), m_size}; }

private:
    std::unique_ptr<NameEntry[]> m_entries;
    size_t m_size;
};

// Both halves sorted, each on a core of its own, then merged into the memory the radix passes
// used: a million entries are tens of megabytes, and a third buffer of them costs its faults.
template <typename Before>
NameEntries sortHalves(std::array<std::vector<NameEntry>, 2> &halves, Before before) {
    NameEntries merged(halves[0].size() + halves[1].size());
    const std::span<NameEntry> scratch = merged.span();
    inTwoHalves(qsizetype(scratch.size()), parallelFrom, [&](int part, qsizetype, qsizetype) {
        std::vector<NameEntry> &half = halves[size_t(part)];
        sortByPrefix(std::span(half),
                     scratch.subspan(part == 0 ? 0 : halves[0].size(), half.size()), before);
    });
    std::merge(halves[0].begin(), halves[0].end(), halves[1].begin(), halves[1].end(),
               scratch.begin(), before);
    halves = {};
    return merged;
}

// Puts the few `others` into the sorted `sorted` by binary search: each comparison between the
// two kinds costs a library key, so this is for a handful, not for half the list.
template <typename Before>
std::vector<NameEntry> insertSorted(std::span<const NameEntry> sorted,
                                    std::span<const NameEntry> others, Before before) {
    std::vector<NameEntry> all;
    all.reserve(sorted.size() + others.size());
    auto from = sorted.begin();
    for (const NameEntry &other : others) {
        const auto at = std::lower_bound(from, sorted.end(), other, before);
        all.insert(all.end(), from, at);
        all.push_back(other);
        from = at;
    }
    all.insert(all.end(), from, sorted.end());
    return all;
}

} // namespace

void addNameOrder(FileListOrders &orders, const QList<FileItem> &files) {
    const QLocale locale;
    std::shared_ptr<const AsciiCollation> table = AsciiCollation::forLocale(locale);
    std::array<std::vector<NameEntry>, 2> tableNames;
    std::array<std::vector<NameEntry>, 2> libraryNames;
    std::array<NameSortKeys, 2> parts{NameSortKeys(locale), NameSortKeys(locale)};
    const auto collect = [&] {
        inTwoHalves(files.size(), parallelFrom, [&](int part, qsizetype begin, qsizetype end) {
            std::vector<NameEntry> &tabled = tableNames[size_t(part)];
            std::vector<NameEntry> &keyed = libraryNames[size_t(part)];
            NameSortKeys &keys = parts[size_t(part)];
            tabled.reserve(size_t(end - begin));
            for (qsizetype i = begin; i < end; ++i) {
                const FileItem &file = files[i];
                // A file made by make() knows its name's kind and first bytes; only the others
                // and the names the library orders are read from the path, wherever it lies.
                const bool known = file.nameKind != FileItem::NameKind::unknown;
                // The whole name, or its first bytes: enough for the prefix.
                const QByteArrayView nameStart =
                    known ? QByteArrayView(file.nameHead.data(),
                                           qstrnlen(file.nameHead.data(), file.nameHead.size()))
                          : file.name();
                const bool printable =
                    known ? file.nameKind == FileItem::NameKind::printableAscii
                          : nameStart.size() <= tableNamesUpTo && isPrintableAscii(nameStart);
                if (table && printable) {
                    const auto [high, low] = table->prefix(nameStart);
                    tabled.push_back({high, low, int(i), -1});
                } else {
                    keyed.push_back({0, 0, int(i), int(keys.size())});
                    keys.appendUtf8(file.name());
                }
            }
        });
    };
    collect();
    const size_t others = libraryNames[0].size() + libraryNames[1].size();
    // Past a few, the others' binary searches cost more than keys for every name.
    constexpr size_t fewOthers = 32;
    if (table && others > 0 && others * fewOthers > size_t(files.size())) {
        table = nullptr;
        tableNames = {};
        libraryNames = {};
        parts = {NameSortKeys(locale), NameSortKeys(locale)};
        collect();
    }
    const int firstPartKeys = int(parts[0].size());
    NameSortKeys keys = std::move(parts[0]);
    keys.appendAll(std::move(parts[1]));
    for (size_t part = 0; part < 2; ++part) {
        for (NameEntry &entry : libraryNames[part]) {
            entry.key += part == 0 ? 0 : firstPartKeys;
            const NameSortKeys::Prefix prefix = keys.prefix(entry.key);
            entry.high = prefix.high;
            entry.low = prefix.low;
        }
    }

    // The index last makes the order total, so ties keep list order.
    const NameComparison compare(files, table.get(), keys);
    const auto before = [&](const NameEntry &a, const NameEntry &b) {
        const int order = compare(a, b);
        return order != 0 ? order < 0 : a.index < b.index;
    };
    const NameEntries tableSorted = sortHalves(tableNames, before);
    const NameEntries librarySorted = sortHalves(libraryNames, before);
    std::vector<NameEntry> both;
    if (!librarySorted.span().empty())
        both = insertSorted(tableSorted.span(), librarySorted.span(), before);
    const std::span<const NameEntry> sorted =
        librarySorted.span().empty() ? tableSorted.span() : std::span<const NameEntry>(both);

    std::vector<int> order(sorted.size());
    QList<int> ranks(files.size());
    int rank = 0;
    for (size_t i = 0; i < sorted.size(); ++i) {
        if (i > 0 && compare(sorted[i - 1], sorted[i]) != 0)
            ++rank;
        order[i] = sorted[i].index;
        ranks[sorted[i].index] = rank;
    }
    orders.byName = std::move(order);
    orders.nameRanks = std::move(ranks);
}

} // namespace ravelinth
