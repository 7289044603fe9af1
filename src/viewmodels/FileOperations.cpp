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

void FileOperations::requestMoveSelectedToTrash() {
    request({selectedFiles(), TrashRequest::Scope::selection});
}

void FileOperations::requestMoveToTrash(const QStringList &fileIds) {
    request({copiesOf(fileIds), TrashRequest::Scope::namedFiles});
}

void FileOperations::request(TrashRequest request) {
    if (request.files.isEmpty())
        return;
    if (!m_confirmationRequired) {
        carryOut(request);
        return;
    }
    // A newer request replaces one still waiting: the sheet then shows the newer one.
    m_pending = std::move(request);
    emit pendingMoveChanged();
}

void FileOperations::confirmPendingMove() {
    if (!m_pending)
        return;
    const TrashRequest confirmed = std::move(*m_pending);
    m_pending.reset();
    emit pendingMoveChanged();
    carryOut(confirmed);
}

void FileOperations::cancelPendingMove() {
    if (!m_pending)
        return;
    m_pending.reset();
    emit pendingMoveChanged();
}

void FileOperations::setConfirmationRequired(bool required) {
    if (m_confirmationRequired == required)
        return;
    m_confirmationRequired = required;
    emit confirmationRequiredChanged();
}

int FileOperations::pendingCount() const {
    return m_pending ? int(m_pending->files.size()) : 0;
}

qint64 FileOperations::pendingSize() const {
    return m_pending ? m_pending->totalSize() : 0;
}

int FileOperations::pendingLinkedCount() const {
    return m_pending ? m_pending->linkedCount() : 0;
}

QStringList FileOperations::pendingNames() const {
    return m_pending ? m_pending->names(pendingNamesShown) : QStringList();
}

void FileOperations::carryOut(const TrashRequest &request) {
    QList<QByteArray> paths;
    paths.reserve(request.files.size());
    for (const FileItem &file : request.files)
        paths.append(file.path);
    const bool clearSelection = request.scope == TrashRequest::Scope::selection;
    whenFinished(m_trash.moveToTrash(paths), this,
                 [this, files = request.files, clearSelection](const QList<TrashResult> &results) {
                     TrashReport report = TrashReport::make(files, results);
                     qint64 movedSize = 0;
                     for (const FileItem &file : files)
                         movedSize += report.movedPaths.contains(file.path) ? file.size : 0;
                     if (report.movedCount() > 0)
                         emit batchMoved(report.movedCount(), movedSize);
                     // By path, so that a batch that finishes after another removes only what
                     // it moved itself.
                     m_files.removePaths(report.movedPaths);
                     if (clearSelection) {
                         m_files.editSelection().reset(0, m_files.files().size());
                         m_files.selectionEdited();
                     }
                     // Each batch replaces the last one's report, a clean one by none at all.
                     setReport(report.failures.isEmpty() ? std::nullopt
                                                         : std::optional(std::move(report)));
                     emit filesMoved();
                 });
}

void FileOperations::moveSelectedToTrash() {
    carryOut({selectedFiles(), TrashRequest::Scope::selection});
}

void FileOperations::moveToTrash(const QStringList &fileIds) {
    carryOut({copiesOf(fileIds), TrashRequest::Scope::namedFiles});
}

void FileOperations::moveToTrash(const FileItem &file) {
    const QByteArray path = file.path;
    const qint64 size = file.size;
    whenFinished(m_trash.moveToTrash(path), this,
                 [this, path, size](const TrashMoveOutcome &outcome) {
                     if (!outcome) {
                         emit failed(outcome.error().description());
                         return;
                     }
                     // The journal holds this move like any batch's, so it is offered for undo the
                     // same way.
                     emit batchMoved(1, size);
                     m_files.removePaths({path});
                     emit filesMoved();
                 });
}

void FileOperations::setReport(std::optional<TrashReport> report) {
    if (!report && !m_report)
        return;
    m_report = std::move(report);
    emit trashReportChanged();
}

void FileOperations::dismissTrashReport() {
    setReport(std::nullopt);
}

int FileOperations::reportMovedCount() const {
    return m_report ? m_report->movedCount() : 0;
}

QVariantList FileOperations::reportFailures() const {
    return m_report ? m_report->failureList() : QVariantList();
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

// Copies, in the order asked: the request outlives the list it was taken from.
QList<FileItem> FileOperations::copiesOf(const QStringList &fileIds) const {
    QList<FileItem> files;
    for (const FileItem *file : lookUp(fileIds, false))
        files.append(*file);
    return files;
}

void FileOperations::excludeFolderOf(const QString &fileId) {
    const QList<const FileItem *> files = lookUp({fileId}, false);
    if (!files.isEmpty())
        emit folderExclusionRequested(files.first()->parentPath().toByteArray());
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

void FileOperations::exportList(const QUrl &destination, int nameFilterIndex) {
    if (!destination.isLocalFile()) {
        emit failed(u"The list can only be exported to a local file."_qs);
        return;
    }
    ListExportTarget target =
        listExportTarget(destination.toLocalFile(),
                         nameFilterIndex == 1 ? ListExportFormat::json : ListExportFormat::csv);
    const QString path = target.path;
    whenFinished(m_exports.exportRows(std::move(target), m_files.shownFiles(), m_files.shownRows()),
                 this, [this, path](const ListExportOutcome &outcome) {
                     if (outcome)
                         emit exported(path, int(*outcome));
                     else
                         emit failed(outcome.error());
                 });
}

void FileOperations::copyPath(const QStringList &fileIds) const {
    const QList<const FileItem *> files = lookUp(fileIds, false);
    if (!files.isEmpty())
        FinderService::shared().copyToClipboard(pathForCopying(files.constFirst()->path));
}

} // namespace ravelinth
