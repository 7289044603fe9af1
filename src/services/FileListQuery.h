#pragma once

#include "models/FileItem.h"
#include "models/SortOption.h"

#include <QList>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace ravelinth {

// What the file list shows of the files: a category filter, a search text and an order.
struct FileListQuery {
    std::optional<ScanCategory> categoryFilter;
    QString searchText;
    SortOption sortOption = SortOption::sizeDescending;
};

// The whole list in each kind of order, worked out once per list: a query then only filters,
// walking the order it needs, which costs one pass whatever the order.
struct FileListOrders {
    // Largest first and oldest first, ties in list order. Never changed once made, so the orders
    // with names share them with the orders made before the names instead of copying them.
    std::shared_ptr<const std::vector<int>> bySize = std::make_shared<const std::vector<int>>();
    std::shared_ptr<const std::vector<int>> byDate = std::make_shared<const std::vector<int>>();
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
