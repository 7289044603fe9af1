#pragma once

#include "models/FileItem.h"
#include "viewmodels/SortOption.h"

#include <QList>
#include <QString>

#include <optional>

namespace ravelinth {

// What the file list shows of the files: a category filter, a search text and an order.
struct FileListQuery {
    std::optional<ScanCategory> categoryFilter;
    QString searchText;
    SortOption sortOption = SortOption::sizeDescending;
};

// The locale's collation order of the files' names as one number per file: names that collate
// equal share a rank. Sorting by these ranks is sorting by the collation, so a change between
// the two name orders costs an integer sort instead of millions of collator calls.
QList<int> computeNameRanks(const QList<FileItem> &files);

// Indices into `files` of the entries the query keeps, in its order; the sort is stable, so
// ties keep the order of `files`. `nameRanks` (from computeNameRanks) may be empty when the
// order is not by name or not known yet; it is then computed here.
QList<int> queryFileList(const QList<FileItem> &files, const FileListQuery &query,
                         const QList<int> &nameRanks = {});

bool matchesSearch(const FileItem &file, const QString &searchText);

} // namespace ravelinth
