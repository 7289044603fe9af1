#include "services/TrashService.h"

#include "models/FileItem.h"
#include "platform/Trash.h"
#include "services/MoveJournal.h"
#include "services/ProtectedLocations.h"
#include "services/TrashUndo.h"
#include "utility/SerialQueue.h"

#include <QUuid>

namespace ravelinth {

QString TrashError::description() const {
    if (m_code == fileNotFound)
        return u"File not found: "_qs + QString::fromUtf8(m_path);
    return u"Failed to move '"_qs + QString::fromUtf8(lastPathComponent(m_path)) +
           u"' to Trash: "_qs + m_reason;
}

struct TrashService::Private {
    // Moves happen one after another, in the order they were asked for.
    SerialQueue queue;
};

TrashService::TrashService(QObject *parent) : QObject(parent), d(std::make_unique<Private>()) {}

TrashService::~TrashService() = default;

namespace {

struct Moved {
    TrashSuccess success;
    platform::EntryIdentity identity;
    qint64 size = 0;
};

Expected<Moved, TrashError> moveOne(const QByteArray &path) {
    const platform::EntryResolution resolution = platform::resolveEntry(path);
    if (!resolution.entry)
        return TrashError::makeMoveFailed(path, resolution.error);
    const platform::ResolvedEntry &entry = *resolution.entry;
    if (const std::optional<QString> refusal = trashRefusal(entry))
        return TrashError::makeMoveFailed(entry.path, *refusal);
    if (!entry.identity)
        return TrashError::makeMoveFailed(entry.path, resolution.error);
    const qint64 size = platform::entrySize(entry.path).value_or(0);
    const platform::TrashAttempt attempt = platform::moveToTrash(entry.path, *entry.identity);
    if (!attempt.moved)
        return TrashError::makeMoveFailed(entry.path, attempt.error);
    return Moved{TrashSuccess{path, entry.path, attempt.trashPath, {}}, *entry.identity, size};
}

} // namespace

TrashBatch::TrashBatch(MoveJournal *journal)
    : m_id(QUuid::createUuid().toString(QUuid::WithoutBraces)),
      m_time(QDateTime::currentDateTimeUtc()),
      m_ownJournal(journal ? nullptr : std::make_unique<MoveJournal>()),
      m_journal(journal ? journal : m_ownJournal.get()) {}

TrashBatch::~TrashBatch() = default;

Expected<TrashSuccess, TrashError> TrashBatch::moveOrFail(const QByteArray &path) {
    Expected<Moved, TrashError> outcome = moveOne(path);
    if (!outcome)
        return outcome.error();
    TrashSuccess success = outcome->success;
    // Without a place in the trash there is nothing to put back from.
    if (!success.trashPath) {
        success.journalError = u"Where it went in the Trash could not be found"_qs;
        return success;
    }
    const JournalItem item{success.movedPath, *success.trashPath, quint64(outcome->identity.device),
                           quint64(outcome->identity.inode), outcome->size};
    if (const std::optional<QString> error = m_journal->record(m_id, m_time, item))
        success.journalError = *error;
    return success;
}

TrashResult TrashBatch::move(const QByteArray &path) {
    Expected<TrashSuccess, TrashError> outcome = moveOrFail(path);
    if (!outcome) {
        const TrashError &error = outcome.error();
        return TrashFailure{path, error.description(),
                            error.reason().isEmpty() ? error.description() : error.reason()};
    }
    return *outcome;
}

TrashMoveOutcome TrashService::moveToTrashNow(const QByteArray &path) {
    TrashBatch batch;
    Expected<TrashSuccess, TrashError> outcome = batch.moveOrFail(path);
    if (!outcome)
        return outcome.error();
    return outcome->trashPath;
}

QList<TrashResult> TrashService::moveToTrashNow(const QList<QByteArray> &paths) {
    TrashBatch batch;
    QList<TrashResult> results;
    results.reserve(paths.size());
    for (const QByteArray &path : paths)
        results.append(batch.move(path));
    return results;
}

QFuture<TrashMoveOutcome> TrashService::moveToTrash(QByteArray path) {
    return d->queue.run([path = std::move(path)] { return moveToTrashNow(path); });
}

QFuture<std::optional<UndoOutcome>> TrashService::undoLatestBatch() {
    return d->queue.run([] {
        MoveJournal journal;
        return trashundo::undoLatestBatchNow(journal);
    });
}

QFuture<bool> TrashService::hasBatchToUndo() {
    return d->queue.run([] { return MoveJournal().latestBatchToUndo().has_value(); });
}

QFuture<QList<TrashResult>> TrashService::moveToTrash(QList<QByteArray> paths) {
    return d->queue.run([paths = std::move(paths)] { return moveToTrashNow(paths); });
}

} // namespace ravelinth
