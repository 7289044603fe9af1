#pragma once

#include "models/FileItem.h"
#include "viewmodels/FileSelection.h"

#include <QAbstractTableModel>
#include <QList>
#include <QSet>
#include <QUuid>

namespace ravelinth {

// The file list as the table shows it: one row per displayed file, six columns (icon, name,
// size, category, modified, status); every role answers on every column so a cell can draw
// from any of them. The rows are indices into the view model's files, published whole when a
// query finishes, so a keystroke never makes the table re-read a half-built list.
class DisplayedFilesModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Role {
        FileIdRole = Qt::UserRole + 1,
        NameRole,
        PathRole,
        FolderRole,
        SizeRole,
        SizeTextRole,
        ExtensionRole,
        CategoryRole,
        CategoryIconRole,
        CategoryColorRole,
        ModifiedMSecsRole,
        IsSafeToDeleteRole,
        IsDefinitelySafeRole,
        SelectedRole,
    };

    explicit DisplayedFilesModel(const FileSelection &selection, QObject *parent = nullptr);

    // `generation` is the version of the files list the rows index.
    void publish(QList<FileItem> files, QList<int> rows, quint64 generation);
    void selectionChanged();

    enum Column {
        IconColumn,
        NameColumn,
        SizeColumn,
        CategoryColumn,
        ModifiedColumn,
        StatusColumn
    };
    static constexpr int columnCountValue = 6;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QList<int> &rows() const { return m_rows; }
    const FileItem *fileAt(int row) const;
    // The row's index into the files list of version generation(); -1 for no such row.
    int fileIndexAt(int row) const { return row >= 0 && row < m_rows.size() ? m_rows[row] : -1; }
    quint64 generation() const { return m_generation; }

private:
    const FileSelection &m_selection;
    quint64 m_generation = 0;
    QList<FileItem> m_files;
    QList<int> m_rows;
};

} // namespace ravelinth
