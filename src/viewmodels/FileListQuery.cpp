#include "viewmodels/FileListQuery.h"

#include <QCollator>

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

bool matchesSearch(const FileItem &file, const QString &searchText) {
    return file.displayName().contains(searchText, Qt::CaseInsensitive) ||
           file.displayPath().contains(searchText, Qt::CaseInsensitive);
}

QList<int> queryFileList(const QList<FileItem> &files, const FileListQuery &query,
                         const QList<int> &nameRanks) {
    QList<int> kept;
    kept.reserve(files.size());
    for (qsizetype i = 0; i < files.size(); ++i) {
        const FileItem &file = files[i];
        if (query.categoryFilter && file.category != *query.categoryFilter)
            continue;
        if (!query.searchText.isEmpty() && !matchesSearch(file, query.searchText))
            continue;
        kept.append(int(i));
    }

    const auto sortBy = [&](auto before) { std::stable_sort(kept.begin(), kept.end(), before); };
    switch (query.sortOption) {
    case SortOption::sizeDescending:
        sortBy([&](int a, int b) { return files[a].size > files[b].size; });
        break;
    case SortOption::sizeAscending:
        sortBy([&](int a, int b) { return files[a].size < files[b].size; });
        break;
    case SortOption::nameAscending:
    case SortOption::nameDescending: {
        const QList<int> ranks =
            nameRanks.size() == files.size() ? nameRanks : computeNameRanks(files);
        if (query.sortOption == SortOption::nameAscending)
            sortBy([&](int a, int b) { return ranks[a] < ranks[b]; });
        else
            sortBy([&](int a, int b) { return ranks[a] > ranks[b]; });
        break;
    }
    case SortOption::dateNewest:
        sortBy([&](int a, int b) { return files[a].modifiedMSecs > files[b].modifiedMSecs; });
        break;
    case SortOption::dateOldest:
        sortBy([&](int a, int b) { return files[a].modifiedMSecs < files[b].modifiedMSecs; });
        break;
    }
    return kept;
}

} // namespace ravelinth
