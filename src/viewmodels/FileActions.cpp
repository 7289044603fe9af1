#include "viewmodels/FileActions.h"

#include "services/FinderService.h"
#include "viewmodels/RavelinthViewModel.h"

#include <QHash>
#include <QUuid>

namespace ravelinth {

FileActions::FileActions(QObject *parent) : QObject(parent) {}

RavelinthViewModel *FileActions::viewModel() const {
    return m_viewModel;
}

void FileActions::setViewModel(RavelinthViewModel *viewModel) {
    if (m_viewModel == viewModel)
        return;
    m_viewModel = viewModel;
    emit viewModelChanged();
}

QList<const FileItem *> FileActions::lookUp(const QStringList &fileIds, bool inFilesOrder) const {
    QList<const FileItem *> found;
    if (!m_viewModel || fileIds.isEmpty())
        return found;
    QHash<QUuid, qsizetype> wanted;
    for (const QString &id : fileIds)
        wanted.insert(QUuid::fromString(id), wanted.size());
    QList<const FileItem *> byRequest(fileIds.size(), nullptr);
    for (const FileItem &file : m_viewModel->files()) {
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

QStringList FileActions::existing(const QStringList &fileIds) const {
    QStringList ids;
    for (const FileItem *file : lookUp(fileIds, true))
        ids.append(file->id.toString(QUuid::WithoutBraces));
    return ids;
}

void FileActions::reveal(const QStringList &fileIds) const {
    QList<QByteArray> paths;
    for (const FileItem *file : lookUp(fileIds, false))
        paths.append(file->path);
    if (!paths.isEmpty())
        FinderService::shared().revealInFinder(paths);
}

void FileActions::open(const QStringList &fileIds) const {
    for (const FileItem *file : lookUp(fileIds, false))
        FinderService::shared().openFile(file->path);
}

void FileActions::copyPath(const QStringList &fileIds) const {
    const QList<const FileItem *> files = lookUp(fileIds, false);
    if (!files.isEmpty())
        FinderService::shared().copyToClipboard(files.constFirst()->displayPath());
}

void FileActions::moveToTrash(const QStringList &fileIds) const {
    if (!m_viewModel)
        return;
    // Copies: each move changes the view model's list.
    QList<FileItem> files;
    for (const FileItem *file : lookUp(fileIds, false))
        files.append(*file);
    for (const FileItem &file : std::as_const(files))
        m_viewModel->moveToTrash(file);
}

} // namespace ravelinth
