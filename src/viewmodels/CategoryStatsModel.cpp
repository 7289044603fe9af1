#include "viewmodels/CategoryStatsModel.h"

#include "models/CheckedMath.h"

#include <algorithm>
#include <array>
#include <limits>

namespace ravelinth {

void CategoryStatsModel::setStats(QList<CategoryStats> stats) {
    std::stable_sort(
        stats.begin(), stats.end(),
        [](const CategoryStats &a, const CategoryStats &b) { return a.totalSize > b.totalSize; });
    const int before = count();
    beginResetModel();
    m_stats = std::move(stats);
    endResetModel();
    if (count() != before)
        emit countChanged();
    emit statsChanged();
}

void CategoryStatsModel::countFiles(const QList<FileItem> &files) {
    QList<CategoryStats> stats;
    std::array<qsizetype, ScanCategory::count> slot;
    slot.fill(-1);
    for (const FileItem &file : files) {
        qsizetype &index = slot[size_t(file.category.index())];
        if (index < 0) {
            index = stats.size();
            stats.append(CategoryStats::make(file.category));
        }
        CategoryStats &entry = stats[index];
        entry.fileCount = checkedAdd(entry.fileCount, 1);
        entry.totalSize = checkedAdd(entry.totalSize, file.countedSize());
    }
    setStats(std::move(stats));
}

int CategoryStatsModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant CategoryStatsModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const CategoryStats &stats = m_stats[index.row()];
    switch (role) {
    case CategoryRole:
        return stats.category.index();
    case Qt::DisplayRole:
    case NameRole:
        return stats.category.rawValue();
    case IconRole:
        return stats.category.icon();
    case ColorRole:
        return stats.category.color().name();
    case FileCountRole:
        return int(std::min<qint64>(stats.fileCount, std::numeric_limits<int>::max()));
    case TotalSizeRole:
        return double(stats.totalSize);
    default:
        return {};
    }
}

QHash<int, QByteArray> CategoryStatsModel::roleNames() const {
    return {{CategoryRole, "category"}, {NameRole, "name"},           {IconRole, "icon"},
            {ColorRole, "color"},       {FileCountRole, "fileCount"}, {TotalSizeRole, "totalSize"}};
}

} // namespace ravelinth
