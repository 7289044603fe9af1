#include "services/TrashService.h"

#include "models/FileItem.h"
#include "platform/Trash.h"
#include "services/ProtectedLocations.h"

#include <QThreadPool>
#include <QtConcurrent>

namespace ravelinth {

QString TrashError::description() const {
    if (m_code == fileNotFound)
        return u"File not found: "_qs + QString::fromUtf8(m_path);
    return u"Failed to move '"_qs + QString::fromUtf8(lastPathComponent(m_path)) +
           u"' to Trash: "_qs + m_reason;
}

struct TrashService::Private {
    // Moves happen one after another, in the order they were asked for.
    QThreadPool pool;
};

TrashService::TrashService(QObject *parent) : QObject(parent), d(std::make_unique<Private>()) {
    d->pool.setMaxThreadCount(1);
}

TrashService::~TrashService() {
    d->pool.waitForDone();
}

TrashMoveOutcome TrashService::moveToTrashNow(const QByteArray &path) {
    if (isProtectedLocation(path))
        return TrashError::makeMoveFailed(path, u"Protected system location"_qs);
    const platform::TrashAttempt attempt = platform::moveToTrash(absolutePath(path));
    if (!attempt.moved)
        return TrashError::makeMoveFailed(path, attempt.error);
    return attempt.trashPath;
}

QList<TrashResult> TrashService::moveToTrashNow(const QList<QByteArray> &paths) {
    QList<TrashResult> results;
    results.reserve(paths.size());
    for (const QByteArray &path : paths) {
        const TrashMoveOutcome outcome = moveToTrashNow(path);
        if (outcome)
            results.append(TrashSuccess{path, *outcome});
        else
            results.append(TrashFailure{path, outcome.error().description()});
    }
    return results;
}

QFuture<TrashMoveOutcome> TrashService::moveToTrash(QByteArray path) {
    return QtConcurrent::run(&d->pool, [path = std::move(path)] { return moveToTrashNow(path); });
}

QFuture<QList<TrashResult>> TrashService::moveToTrash(QList<QByteArray> paths) {
    return QtConcurrent::run(&d->pool,
                             [paths = std::move(paths)] { return moveToTrashNow(paths); });
}

} // namespace ravelinth
