#include "viewmodels/FileListQuery.h"

#include "models/AsciiText.h"

#include <QCollator>
#include <QtConcurrent>

#include <algorithm>

namespace ravelinth {

QList<int> computeNameRanks(const QList<FileItem> &files) {
    // Sort keys are computed once per name; comparing them is a byte comparison.
    QCollator collator{QLocale()};
    collator.setCaseSensitivity(Qt::CaseSensitive);
    collator.setNumericMode(false);
    std::vector<QCollatorSortKey> keys;
    keys.reserve(size_t(files.size()));
    for (const FileItem &file : files)
        keys.push_back(collator.sortKey(file.displayName()));
    std::vector<int> order(size_t(files.size()));
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = int(i);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return keys[size_t(a)].compare(keys[size_t(b)]) < 0; });
    QList<int> ranks(files.size());
    int rank = 0;
    for (size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && keys[size_t(order[i - 1])].compare(keys[size_t(order[i])]) != 0)
            ++rank;
        ranks[order[i]] = rank;
    }
    return ranks;
}

namespace {

bool isAscii(QByteArrayView bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return uchar(c) < 0x80; });
}

// The name is the end of the path, so a name that contains the text means a path that does:
// testing the path alone gives the same answer as testing the name, then the path. An ASCII text
// in an ASCII path is compared byte by byte; anything else is decoded and case-folded.
bool pathMatches(const FileItem &file, const QString &searchText, const QByteArray &asciiText) {
    if (!asciiText.isEmpty() && isAscii(file.path))
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

// Sorting (key, index) pairs keeps the keys together in memory; the index as the second key
// makes the order total, which is what a stable sort on the key alone would give.
template <typename Key, typename KeyOf>
void sortByKey(QList<int> &rows, KeyOf keyOf, bool descending) {
    std::vector<std::pair<Key, int>> keyed;
    keyed.reserve(size_t(rows.size()));
    for (int row : std::as_const(rows))
        keyed.emplace_back(keyOf(row), row);
    if (descending) {
        std::sort(keyed.begin(), keyed.end(), [](const auto &a, const auto &b) {
            return a.first > b.first || (a.first == b.first && a.second < b.second);
        });
    } else {
        std::sort(keyed.begin(), keyed.end());
    }
    for (size_t i = 0; i < keyed.size(); ++i)
        rows[qsizetype(i)] = keyed[i].second;
}

} // namespace

bool matchesSearch(const FileItem &file, const QString &searchText) {
    return pathMatches(file, searchText, asciiFormOf(searchText));
}

QList<int> queryFileList(const QList<FileItem> &files, const FileListQuery &query,
                         const QList<int> &nameRanks) {
    const QByteArray asciiText = asciiFormOf(query.searchText);
    const auto filterRange = [&](qsizetype begin, qsizetype end) {
        QList<int> kept;
        kept.reserve(end - begin);
        for (qsizetype i = begin; i < end; ++i) {
            const FileItem &file = files[i];
            if (query.categoryFilter && file.category != *query.categoryFilter)
                continue;
            if (!query.searchText.isEmpty() && !pathMatches(file, query.searchText, asciiText))
                continue;
            kept.append(int(i));
        }
        return kept;
    };
    // Large searches run in two halves at once: a keystroke must not wait on one core.
    QList<int> kept;
    const qsizetype half = files.size() / 2;
    if (!query.searchText.isEmpty() && half > 50000) {
        QFuture<QList<int>> second = QtConcurrent::run(filterRange, half, files.size());
        kept = filterRange(0, half);
        kept.append(second.result());
    } else {
        kept = filterRange(0, files.size());
    }

    switch (query.sortOption) {
    case SortOption::sizeDescending:
    case SortOption::sizeAscending:
        sortByKey<qint64>(
            kept, [&](int row) { return files[row].size; },
            query.sortOption == SortOption::sizeDescending);
        break;
    case SortOption::nameAscending:
    case SortOption::nameDescending: {
        const QList<int> ranks =
            nameRanks.size() == files.size() ? nameRanks : computeNameRanks(files);
        sortByKey<int>(
            kept, [&](int row) { return ranks[row]; },
            query.sortOption == SortOption::nameDescending);
        break;
    }
    case SortOption::dateNewest:
    case SortOption::dateOldest:
        sortByKey<qint64>(
            kept, [&](int row) { return files[row].modifiedMSecs; },
            query.sortOption == SortOption::dateNewest);
        break;
    }
    return kept;
}

} // namespace ravelinth
