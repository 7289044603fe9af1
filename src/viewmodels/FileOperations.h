#pragma once

#include "models/FileItem.h"

#include <QObject>
#include <QStringList>

namespace ravelinth {

class FileListModel;
class TrashService;

// What is done to listed files: moved to the Trash, revealed in the file manager, opened, their
// path copied. Files are named by identifier and looked up in the list, and every action works on
// their exact path bytes, so a name that is not UTF-8 is handled as it is on disk.
class FileOperations : public QObject {
    Q_OBJECT

public:
    FileOperations(FileListModel &files, TrashService &trash, QObject *parent = nullptr);

    // The selected files, in list order.
    QList<FileItem> selectedFiles() const;

    Q_INVOKABLE void moveSelectedToTrash();
    Q_INVOKABLE void revealSelected();
    // Each file on its own, so that every failure is reported.
    Q_INVOKABLE void moveToTrash(const QStringList &fileIds);
    void moveToTrash(const FileItem &file);
    // Shows the files, selected, in one file-manager window.
    Q_INVOKABLE void reveal(const QStringList &fileIds) const;
    // Opens each file with its default application.
    Q_INVOKABLE void open(const QStringList &fileIds) const;
    // Puts the path of the first file (and only that one) on the clipboard as plain text.
    Q_INVOKABLE void copyPath(const QStringList &fileIds) const;
    // The identifiers among `fileIds` that name a listed file, in the files' order.
    Q_INVOKABLE QStringList existing(const QStringList &fileIds) const;
    // Their display paths, in the order asked.
    Q_INVOKABLE QStringList pathsOf(const QStringList &fileIds) const;

signals:
    // Files left the list; the disk and the statistics have changed.
    void filesMoved();
    void failed(const QString &message);

private:
    QList<const FileItem *> lookUp(const QStringList &fileIds, bool inFilesOrder) const;

    FileListModel &m_files;
    TrashService &m_trash;
};

} // namespace ravelinth
