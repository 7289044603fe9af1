#include "viewmodels/MoveUndo.h"

#include "models/ByteCountFormatter.h"
#include "services/FileScannerService.h"
#include "services/TrashService.h"
#include "services/TrashUndo.h"
#include "utility/WhenFinished.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/ScanController.h"

namespace ravelinth {

MoveUndo::MoveUndo(TrashService &trash, FileListModel &files, const ScanController &scan,
                   QObject *parent)
    : QObject(parent), m_trash(trash), m_files(files), m_scan(scan) {
    askWhetherUndoable();
}

void MoveUndo::askWhetherUndoable() {
    whenFinished(m_trash.hasBatchToUndo(), this, [this](bool can) { setCanUndo(can); });
}

void MoveUndo::setCanUndo(bool can) {
    if (m_canUndo == can)
        return;
    m_canUndo = can;
    emit canUndoChanged();
}

void MoveUndo::setNotice(const QString &text) {
    if (m_noticeText == text)
        return;
    m_noticeText = text;
    emit noticeChanged();
}

void MoveUndo::noteMove(int count, qint64 size) {
    setNotice(u"Moved "_qs + QString::number(count) +
              (count == 1 ? u" file ("_qs : u" files ("_qs) + formatByteCount(size) +
              u") to the Trash"_qs);
    setCanUndo(true);
}

void MoveUndo::dismissNotice() {
    setNotice({});
}

void MoveUndo::undo() {
    if (m_undoing)
        return;
    m_undoing = true;
    emit isUndoingChanged();
    setNotice({});
    whenFinished(
        m_trash.undoLatestBatch(), this, [this](const std::optional<UndoOutcome> &outcome) {
            m_undoing = false;
            emit isUndoingChanged();
            askWhetherUndoable();
            if (!outcome) {
                emit failed(u"There is no move to the Trash to undo."_qs);
                return;
            }
            QList<FileItem> listed;
            QStringList failures;
            for (const RestoreResult &result : outcome->results) {
                if (!result.restored) {
                    failures.append(result.error);
                    continue;
                }
                const std::optional<FileItem> file = FileScannerService::examineFile(result.path);
                if (file && m_scan.resultWouldKeep(file->path, file->size))
                    listed.append(*file);
            }
            m_files.addFiles(listed);
            emit filesRestored();
            if (!failures.isEmpty())
                emit failed(u"Not everything could be put back from the Trash.\n"_qs +
                            failures.join(u'\n'));
        });
}

} // namespace ravelinth
