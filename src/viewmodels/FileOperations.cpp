#include "viewmodels/FileOperations.h"

#include "models/ShellQuote.h"
#include "services/FinderService.h"
#include "services/TrashService.h"
#include "utility/WhenFinished.h"
#include "viewmodels/FileListModel.h"

#include <QHash>
#include <QSet>
#include <QUuid>

namespace ravelinth {

FileOperations::FileOperations(FileListModel &files, TrashService &trash, QObject *parent)
    : QObject(parent), m_files(files), m_trash(trash) {}

QList<FileItem> FileOperations::selectedFiles() const {
    QList<FileItem> selected;
    const FileSelection &selection = m_files.selection();
    if (selection.count() == 0)
        return selected;
    const QList<FileItem> &files = m_files.files();
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (selection.contains(i))
            selected.append(files[i]);
    }
    return selected;
}

void FileOperations::moveSelectedToTrash() {
    QList<QByteArray> paths;
    for (const FileItem &file : selectedFiles())
        paths.append(file.path);
    whenFinished(m_trash.moveToTrash(paths), this, [this](const QList<TrashResult> &results) {
        QSet<QByteArray> moved;
        for (const TrashResult &result : results) {
            if (const auto *success = std::get_if<TrashSuccess>(&result))
                moved.insert(success->originalPath);
        }
        m_files.removePaths(moved);
        m_files.editSelection().reset(0, m_files.files().size());
        m_files.selectionEdited();
        emit filesMoved();
    });
}

void FileOperations::moveToTrash(const FileItem &file) {
    const QByteArray path = file.path;
    whenFinished(m_trash.moveToTrash(path), this, [this, path](const TrashMoveOutcome &outcome) {
        if (!outcome) {
            emit failed(outcome.error().description());
            return;
        }
        m_files.removePaths({path});
        emit filesMoved();
    });
}

void FileOperations::moveToTrash(const QStringList &fileIds) {
    // Copies: each move changes the list.
    QList<FileItem> files;
    for (const FileItem *file : lookUp(fileIds, false))
        files.append(*file);
    for (const FileItem &file : std::as_const(files))
        moveToTrash(file);
}

void FileOperations::revealSelected() {
    QList<QByteArray> paths;
    for (const FileItem &file : selectedFiles())
        paths.append(file.path);
    FinderService::shared().revealInFinder(paths);
}

QList<const FileItem *> FileOperations::lookUp(const QStringList &fileIds,
                                               bool inFilesOrder) const {
    QList<const FileItem *> found;
    if (fileIds.isEmpty())
        return found;
    QHash<QUuid, qsizetype> wanted;
    for (const QString &id : fileIds)
        wanted.insert(QUuid::fromString(id), wanted.size());
    QList<const FileItem *> byRequest(fileIds.size(), nullptr);
    for (const FileItem &file : m_files.files()) {
        const auto it = wanted.constFind(file.id);
        if (it == wanted.cend())
            continue;
        if (inFilesOrder)
            found.append(&file);
        else
            byRequest[*it] = &file;
    }
    if (!inFilesOrder) {
        for (const FileItem *file : std::as_const(byRequest)) {
            if (file)
                found.append(file);
        }
    }
    return found;
}

QStringList FileOperations::existing(const QStringList &fileIds) const {
    QStringList ids;
    for (const FileItem *file : lookUp(fileIds, true))
        ids.append(file->id.toString(QUuid::WithoutBraces));
    return ids;
}

QStringList FileOperations::pathsOf(const QStringList &fileIds) const {
    QStringList paths;
    for (const FileItem *file : lookUp(fileIds, false))
        paths.append(file->displayPath());
    return paths;
}

void FileOperations::reveal(const QStringList &fileIds) const {
    QList<QByteArray> paths;
    for (const FileItem *file : lookUp(fileIds, false))
        paths.append(file->path);
    if (!paths.isEmpty())
        FinderService::shared().revealInFinder(paths);
}

void FileOperations::open(const QStringList &fileIds) const {
    for (const FileItem *file : lookUp(fileIds, false))
        FinderService::shared().openFile(file->path);
}

void FileOperations::copyPath(const QStringList &fileIds) const {
    const QList<const FileItem *> files = lookUp(fileIds, false);
    if (!files.isEmpty())
        FinderService::shared().copyToClipboard(pathForCopying(files.constFirst()->path));
}

} // namespace ravelinth
