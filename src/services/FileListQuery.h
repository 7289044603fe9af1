#pragma once

#include "models/FileItem.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace ravelinth {

// The orders a query can put the list in. The names people pick them by are the view model's
// (SortOption); the query only needs to know which order it walks.
enum class FileListSort {
    sizeDescending,
    sizeAscending,
    nameAscending,
    nameDescending,
    dateNewest,
    dateOldest
};

inline constexpr std::array<FileListSort, 6> allFileListSorts{
    FileListSort::sizeDescending, FileListSort::sizeAscending, FileListSort::nameAscending,
    FileListSort::nameDescending, FileListSort::dateNewest,    FileListSort::dateOldest};

// What the file list shows of the files: a category filter, a search text and an order.
struct FileListQuery {
    std::optional<ScanCategory> categoryFilter;
    QString searchText;
    FileListSort sortOption = FileListSort::sizeDescending;
};

// The whole list in each kind of order, worked out once per list: a query then only filters,
// walking the order it needs, which costs one pass whatever the order.
struct FileListOrders {
    std::vector<int> bySize; // largest first, ties in list order
    std::vector<int> byDate; // oldest first, ties in list order
    // Names in the locale's collation order, ties in list order, and each file's place in it
    // (names that collate equal share a rank). Empty until worked out: the collation is slow.
    std::vector<int> byName;
    QList<int> nameRanks;

    bool hasNames() const { return !nameRanks.isEmpty() || byName.empty(); }
};

// Sizes and dates only; fast.
FileListOrders computeFileListOrders(const QList<FileItem> &files);
// Adds the names' collation order.
void addNameOrder(FileListOrders &orders, const QList<FileItem> &files);

// Indices into `files` of the entries the query keeps, in its order; the sort is stable, so
// ties keep the order of `files`. `orders` may lack the name order; it is then computed here
// when the query needs it.
QList<int> queryFileList(const QList<FileItem> &files, const FileListQuery &query,
                         const FileListOrders &orders);
QList<int> queryFileList(const QList<FileItem> &files, const FileListQuery &query);

bool matchesSearch(const FileItem &file, const QString &searchText);

} // namespace ravelinth
