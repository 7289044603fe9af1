#include "services/FileListQuery.h"

#include "models/AsciiText.h"
#include "utility/ParallelHalves.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace ravelinth {

namespace {

// A pass over fewer files than this is quicker than starting a thread for half of it.
constexpr qsizetype parallelFrom = 100000;

// Sorting (key, index) pairs keeps the keys together in memory; the index as the second key
// makes the order total, which is what a stable sort on the key alone would give.
template <typename Key, typename KeyOf> std::vector<int> orderBy(qsizetype count, KeyOf keyOf) {
    std::vector<std::pair<Key, int>> keyed;
    keyed.reserve(size_t(count));
    for (int i = 0; i < int(count); ++i)
        keyed.emplace_back(keyOf(i), i);
    std::sort(keyed.begin(), keyed.end());
    std::vector<int> order(keyed.size());
    for (size_t i = 0; i < keyed.size(); ++i)
        order[i] = keyed[i].second;
    return order;
}

// The name is the end of the path, so a name that contains the text means a path that does:
// testing the path alone gives the same answer as testing the name, then the path. An ASCII text
// in an ASCII path is compared byte by byte; anything else is decoded and case-folded.
bool pathMatches(const FileItem &file, const QString &searchText, const QByteArray &asciiText) {
    if (!asciiText.isEmpty() && isAsciiText(file.path))
        return asciiContainsIgnoringCase(file.path, asciiText);
    return file.displayPath().contains(searchText, Qt::CaseInsensitive);
}

QByteArray asciiFormOf(const QString &text) {
    for (QChar c : text) {
        if (c.unicode() >= 0x80)
            return {};
    }
    return text.toLatin1().toLower();
}

// Which files the filter and the search keep, one flag per file. A large search runs in two
// halves at once: a keystroke must not wait on one core.
std::vector<char> keptFlags(const QList<FileItem> &files, const FileListQuery &query) {
    constexpr qsizetype prefetchDistance = 8;
    std::vector<char> kept(size_t(files.size()), 0);
    const QByteArray asciiText = asciiFormOf(query.searchText);
    const auto filterRange = [&](qsizetype begin, qsizetype end) {
        for (qsizetype i = begin; i < end; ++i) {
            // The paths lie all over the heap, in the order the walk met them: asking for the
            // ones a few rows ahead keeps several memory reads in flight.
            if (i + prefetchDistance < end)
                __builtin_prefetch(files[i + prefetchDistance].path.constData());
            const FileItem &file = files[i];
            kept[size_t(i)] =
                (!query.categoryFilter || file.category == *query.categoryFilter) &&
                (query.searchText.isEmpty() || pathMatches(file, query.searchText, asciiText));
        }
    };
    // A category filter alone reads one byte per file: too little to be worth a thread.
    const qsizetype threadFrom =
        query.searchText.isEmpty() ? std::numeric_limits<qsizetype>::max() : parallelFrom;
    inTwoHalves(files.size(), threadFrom,
                [&](int, qsizetype begin, qsizetype end) { filterRange(begin, end); });
    return kept;
}

// Walks `order` forwards, or backwards group by group of equal keys so that ties still come in
// list order, and keeps the files `isKept` accepts.
template <typename KeyOf, typename IsKept>
QList<int> pick(const std::vector<int> &order, bool backwards, KeyOf keyOf, IsKept isKept) {
    QList<int> rows;
    rows.reserve(qsizetype(order.size()));
    if (!backwards) {
        for (int index : order) {
            if (isKept(index))
                rows.append(index);
        }
        return rows;
    }
    size_t end = order.size();
    while (end > 0) {
        size_t begin = end - 1;
        const auto key = keyOf(order[begin]);
        while (begin > 0 && keyOf(order[begin - 1]) == key)
            --begin;
        for (size_t i = begin; i < end; ++i) {
            if (isKept(order[i]))
                rows.append(order[i]);
        }
        end = begin;
    }
    return rows;
}

} // namespace

FileListOrders computeFileListOrders(const QList<FileItem> &files) {
    FileListOrders orders;
    const auto bySizeDescending = [&](qsizetype a, qsizetype b) {
        return files[a].size > files[b].size;
    };
    // A scan delivers its files largest first, and removing files keeps that.
    bool sorted = true;
    for (qsizetype i = 1; i < files.size() && sorted; ++i)
        sorted = !bySizeDescending(i, i - 1);
    if (sorted) {
        std::vector<int> identity(size_t(files.size()));
        std::iota(identity.begin(), identity.end(), 0);
        orders.bySize = std::make_shared<const std::vector<int>>(std::move(identity));
    } else {
        orders.bySize = std::make_shared<const std::vector<int>>(
            orderBy<qint64>(files.size(), [&](int i) { return -files[i].size; }));
    }
    orders.byDate = std::make_shared<const std::vector<int>>(
        orderBy<qint64>(files.size(), [&](int i) { return files[i].modifiedMSecs; }));
    return orders;
}

bool matchesSearch(const FileItem &file, const QString &searchText) {
    return pathMatches(file, searchText, asciiFormOf(searchText));
}

QList<int> queryFileList(const QList<FileItem> &files, const FileListQuery &query) {
    FileListOrders orders = computeFileListOrders(files);
    const bool byName = query.sortOption == SortOption::nameAscending ||
                        query.sortOption == SortOption::nameDescending;
    if (byName)
        addNameOrder(orders, files);
    return queryFileList(files, query, orders);
}

QList<int> queryFileList(const QList<FileItem> &files, const FileListQuery &query,
                         const FileListOrders &orders) {
    const bool filters = query.categoryFilter || !query.searchText.isEmpty();
    const std::vector<char> kept = filters ? keptFlags(files, query) : std::vector<char>();
    const auto isKept = [&](int index) { return !filters || kept[size_t(index)]; };
    const auto size = [&](int index) { return files[index].size; };
    const auto date = [&](int index) { return files[index].modifiedMSecs; };

    switch (query.sortOption) {
    case SortOption::sizeDescending:
    case SortOption::sizeAscending:
        return pick(*orders.bySize, query.sortOption == SortOption::sizeAscending, size, isKept);
    case SortOption::nameAscending:
    case SortOption::nameDescending: {
        if (orders.nameRanks.size() != files.size()) {
            FileListOrders named;
            addNameOrder(named, files);
            return queryFileList(files, query, named);
        }
        const auto rank = [&](int index) { return orders.nameRanks[index]; };
        return pick(orders.byName, query.sortOption == SortOption::nameDescending, rank, isKept);
    }
    case SortOption::dateNewest:
    case SortOption::dateOldest:
        return pick(*orders.byDate, query.sortOption == SortOption::dateNewest, date, isKept);
    }
    return {};
}

} // namespace ravelinth
