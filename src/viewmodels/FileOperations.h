#pragma once

#include "models/FileItem.h"
#include "services/ListExportService.h"
#include "viewmodels/TrashReport.h"
#include "viewmodels/TrashRequest.h"

#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantList>

#include <optional>

namespace ravelinth {

class FileListModel;
class TrashService;

// What is done to listed files: moved to the Trash, revealed in the file manager, opened, their
// path copied, the list exported. Files are named by identifier and looked up in the list, and
// every action works on their exact path bytes, so a name that is not UTF-8 is handled as it is on
// disk.
//
// The window asks for a move through the two request entry points. While confirmation is
// required a request waits, with its files captured, until it is confirmed or cancelled; the
// window's sheet binds to the pending properties. Every batch move leaves a report of what could
// not be moved, which stays until it is dismissed or the next batch replaces it.
class FileOperations : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool confirmationRequired READ confirmationRequired WRITE setConfirmationRequired
                   NOTIFY confirmationRequiredChanged)
    Q_PROPERTY(bool hasPendingMove READ hasPendingMove NOTIFY pendingMoveChanged)
    Q_PROPERTY(int pendingCount READ pendingCount NOTIFY pendingMoveChanged)
    Q_PROPERTY(qint64 pendingSize READ pendingSize NOTIFY pendingMoveChanged)
    // How many of them have hard links elsewhere, so that the sheet can warn about the space.
    Q_PROPERTY(int pendingLinkedCount READ pendingLinkedCount NOTIFY pendingMoveChanged)
    // Only the first few names: the sheet says how many more there are.
    Q_PROPERTY(QStringList pendingNames READ pendingNames NOTIFY pendingMoveChanged)
    // Set after a batch in which something could not be moved.
    Q_PROPERTY(bool hasTrashReport READ hasTrashReport NOTIFY trashReportChanged)
    Q_PROPERTY(int reportMovedCount READ reportMovedCount NOTIFY trashReportChanged)
    // {name, path, reason} per file that stayed.
    Q_PROPERTY(QVariantList reportFailures READ reportFailures NOTIFY trashReportChanged)

public:
    static constexpr qsizetype pendingNamesShown = 5;

    FileOperations(FileListModel &files, TrashService &trash, QObject *parent = nullptr);

    // The selected files, in list order.
    QList<FileItem> selectedFiles() const;

    // The one way the window moves files: asks first when confirmation is required, else moves
    // at once. A request naming no listed file does nothing.
    Q_INVOKABLE void requestMoveSelectedToTrash();
    Q_INVOKABLE void requestMoveToTrash(const QStringList &fileIds);
    // Moves exactly the files captured by the pending request; nothing when none is pending.
    Q_INVOKABLE void confirmPendingMove();
    // Drops the pending request; the files and the selection stay as they are.
    Q_INVOKABLE void cancelPendingMove();
    Q_INVOKABLE void dismissTrashReport();

    bool confirmationRequired() const { return m_confirmationRequired; }
    void setConfirmationRequired(bool required);
    bool hasPendingMove() const { return m_pending.has_value(); }
    int pendingCount() const;
    qint64 pendingSize() const;
    int pendingLinkedCount() const;
    QStringList pendingNames() const;
    const std::optional<TrashRequest> &pendingRequest() const { return m_pending; }
    bool hasTrashReport() const { return m_report.has_value(); }
    int reportMovedCount() const;
    QVariantList reportFailures() const;
    const std::optional<TrashReport> &trashReport() const { return m_report; }

    // Without asking: the selection as one batch (the whole selection clears), or the named
    // files as one batch (only what moved leaves the selection). Both report their failures.
    void moveSelectedToTrash();
    void moveToTrash(const QStringList &fileIds);
    // One file on its own, whose failure goes to `failed` as the error's description.
    void moveToTrash(const FileItem &file);
    Q_INVOKABLE void revealSelected();
    // Shows the files, selected, in one file-manager window.
    Q_INVOKABLE void reveal(const QStringList &fileIds) const;
    // Opens each file with its default application.
    Q_INVOKABLE void open(const QStringList &fileIds) const;
    // Puts the path of the first file (and only that one) on the clipboard as plain text.
    Q_INVOKABLE void copyPath(const QStringList &fileIds) const;
    // Asks that the folder holding the file be left out of later scans.
    Q_INVOKABLE void excludeFolderOf(const QString &fileId);
    // The identifiers among `fileIds` that name a listed file, in the files' order.
    Q_INVOKABLE QStringList existing(const QStringList &fileIds) const;
    // Their display paths, in the order asked.
    Q_INVOKABLE QStringList pathsOf(const QStringList &fileIds) const;
    // Saves the rows as displayed (filter, search and sort applied) to a local file, in the
    // background. The name's extension picks CSV or JSON; a name without either takes the save
    // dialog's filter (0 CSV, 1 JSON) and its extension. Ends in `exported` or `failed`.
    Q_INVOKABLE void exportList(const QUrl &destination, int nameFilterIndex);

signals:
    void folderExclusionRequested(const QByteArray &folder);
    // Files left the list; the disk and the statistics have changed.
    void filesMoved();
    void failed(const QString &message);
    void exported(const QString &path, int rowCount);
    void confirmationRequiredChanged();
    void pendingMoveChanged();
    void trashReportChanged();
    // A batch moved files to the Trash: how many, and their total size.
    void batchMoved(int count, qint64 size);

private:
    QList<const FileItem *> lookUp(const QStringList &fileIds, bool inFilesOrder) const;
    QList<FileItem> copiesOf(const QStringList &fileIds) const;
    void request(TrashRequest request);
    void carryOut(const TrashRequest &request);
    void setReport(std::optional<TrashReport> report);

    FileListModel &m_files;
    TrashService &m_trash;
    bool m_confirmationRequired = false;
    std::optional<TrashRequest> m_pending;
    std::optional<TrashReport> m_report;
    ListExportService m_exports;
};

} // namespace ravelinth
