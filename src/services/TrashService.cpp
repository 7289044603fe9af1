#include "services/TrashService.h"

#include "models/FileItem.h"
#include "platform/Trash.h"
#include "services/ProtectedLocations.h"
#include "utility/SerialQueue.h"

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

Expected<TrashSuccess, TrashError> moveOne(const QByteArray &path) {
    const platform::EntryResolution resolution = platform::resolveEntry(path);
    if (!resolution.entry)
        return TrashError::makeMoveFailed(path, resolution.error);
    const platform::ResolvedEntry &entry = *resolution.entry;
    if (const std::optional<QString> refusal = trashRefusal(entry))
        return TrashError::makeMoveFailed(entry.path, *refusal);
    if (!entry.identity)
        return TrashError::makeMoveFailed(entry.path, resolution.error);
    const platform::TrashAttempt attempt = platform::moveToTrash(entry.path, *entry.identity);
    if (!attempt.moved)
        return TrashError::makeMoveFailed(entry.path, attempt.error);
    return TrashSuccess{path, entry.path, attempt.trashPath};
}

} // namespace

TrashMoveOutcome TrashService::moveToTrashNow(const QByteArray &path) {
    Expected<TrashSuccess, TrashError> outcome = moveOne(path);
    if (!outcome)
        return outcome.error();
    return outcome->trashPath;
}

TrashResult TrashService::moveOneToTrashNow(const QByteArray &path) {
    Expected<TrashSuccess, TrashError> outcome = moveOne(path);
    if (!outcome) {
        const TrashError &error = outcome.error();
        return TrashFailure{path, error.description(),
                            error.reason().isEmpty() ? error.description() : error.reason()};
    }
    return *outcome;
}

QList<TrashResult> TrashService::moveToTrashNow(const QList<QByteArray> &paths) {
    QList<TrashResult> results;
    results.reserve(paths.size());
    for (const QByteArray &path : paths)
        results.append(moveOneToTrashNow(path));
    return results;
}

QFuture<TrashMoveOutcome> TrashService::moveToTrash(QByteArray path) {
    return d->queue.run([path = std::move(path)] { return moveToTrashNow(path); });
}

QFuture<QList<TrashResult>> TrashService::moveToTrash(QList<QByteArray> paths) {
    return d->queue.run([paths = std::move(paths)] { return moveToTrashNow(paths); });
}

} // namespace ravelinth
