#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace ravelinth {

class MoveJournal;

struct RestoreResult {
    QByteArray path;      // where the item belongs, and is again when restored
    QByteArray trashPath; // where it lay in the Trash
    bool restored = false;
    QString error; // why not, naming the item
    qint64 size = 0;
};

struct UndoOutcome {
    QString batchId;
    QList<RestoreResult> results; // one per item of the batch, in the order they were put back
};

// Putting moved items back from the Trash. Nothing is ever replaced: an item whose place is
// taken again stays in the Trash, and says so.
namespace trashundo {

// Puts back every item of the newest batch of moves not yet undone, last moved first (so a folder
// comes back before what was moved out of it), then marks the batch undone even where an item
// failed, so that the next undo reaches the batch before it. nullopt when there is none.
std::optional<UndoOutcome> undoLatestBatchNow(MoveJournal &journal);

// Puts back the newest item of the trash folders that was moved from `path` (absolute, without
// links; by any program).
RestoreResult restoreNewestNow(const QByteArray &path);

} // namespace trashundo

} // namespace ravelinth
