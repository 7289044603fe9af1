#include "services/TrashUndo.h"

#include "models/FileItem.h"
#include "platform/TrashRestore.h"
#include "services/MoveJournal.h"

namespace ravelinth::trashundo {

namespace {

QString failureText(const QByteArray &path, const QString &reason) {
    return u"Failed to restore '"_qs + QString::fromUtf8(lastPathComponent(path)) + u"': "_qs +
           reason;
}

RestoreResult restore(const platform::TrashedItem &item,
                      const std::optional<platform::EntryIdentity> &expected, qint64 size) {
    RestoreResult result{item.originalPath, item.filesPath, false, {}, size};
    const platform::RestoreAttempt attempt = platform::restoreFromTrash(item, expected);
    result.restored = attempt.restored;
    if (!attempt.restored)
        result.error = failureText(item.originalPath, attempt.error);
    return result;
}

} // namespace

std::optional<UndoOutcome> undoLatestBatchNow(MoveJournal &journal) {
    const std::optional<JournalBatch> batch = journal.latestBatchToUndo();
    if (!batch)
        return std::nullopt;
    UndoOutcome outcome{batch->id, {}};
    for (auto item = batch->items.crbegin(); item != batch->items.crend(); ++item) {
        const platform::TrashedItem trashed{
            item->trashPath, platform::trashInfoPathFor(item->trashPath), item->originalPath, {}};
        const platform::EntryIdentity identity{dev_t(item->device), ino_t(item->inode)};
        outcome.results.append(restore(trashed, identity, item->size));
    }
    // When this cannot be written the journal still offers the batch: the next undo finds its
    // items gone from the Trash and says so, which loses nothing.
    (void)journal.markUndone(batch->id);
    return outcome;
}

RestoreResult restoreNewestNow(const QByteArray &path) {
    const std::optional<platform::TrashedItem> item = platform::findNewestTrashedItem(path);
    if (!item)
        return {path, {}, false, failureText(path, u"It is not in the Trash"_qs), 0};
    return restore(*item, std::nullopt, 0);
}

} // namespace ravelinth::trashundo
