#pragma once

#include "models/FileItem.h"

#include <QAbstractListModel>
#include <QList>
#include <QSet>
#include <QUuid>

namespace ravelinth {

// The file list as the table shows it: one row per displayed file. The rows are indices into
// the view model's files, published whole when a query finishes, so a keystroke never makes
// the table re-read a half-built list.
class DisplayedFilesModel : public QAbstractListModel {
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

    explicit DisplayedFilesModel(const QSet<QUuid> &selection, QObject *parent = nullptr);

    void publish(QList<FileItem> files, QList<int> rows);
    void selectionChanged();

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QList<int> &rows() const { return m_rows; }
    const FileItem *fileAt(int row) const;

private:
    const QSet<QUuid> &m_selection;
    QList<FileItem> m_files;
    QList<int> m_rows;
};

} // namespace ravelinth
