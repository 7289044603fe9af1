#pragma once

#include "models/CategoryStats.h"
#include "models/FileItem.h"

#include <QAbstractListModel>
#include <QList>

namespace ravelinth {

// How much each category holds, largest first: the dashboard's breakdown and the sidebar.
class CategoryStatsModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        CategoryRole = Qt::UserRole + 1, // the ScanCategory value
        NameRole,
        IconRole,
        ColorRole, // "#AARRGGBB"
        FileCountRole,
        TotalSizeRole,
    };

    using QAbstractListModel::QAbstractListModel;

    const QList<CategoryStats> &stats() const { return m_stats; }
    // Taken as given, then ordered largest first (a stable order: equal sizes keep theirs).
    void setStats(QList<CategoryStats> stats);
    // Categories in the order their first file is met, then largest first.
    void countFiles(const QList<FileItem> &files);
    int count() const { return int(m_stats.size()); }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void countChanged();
    void statsChanged();

private:
    QList<CategoryStats> m_stats;
};

} // namespace ravelinth
