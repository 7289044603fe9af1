#include "services/FinderService.h"

#include "platform/FileManager.h"
#include "platform/StandardLocations.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMetaMethod>
#include <QPromise>

namespace ravelinth {

namespace {

// A file manager that is there answers at once; one that hangs must not hold the fallback long.
constexpr int showItemsTimeoutMs = 3000;

QByteArray folderOf(const QByteArray &path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

} // namespace

struct FinderService::Private {
    std::optional<QPromise<std::optional<QString>>> pendingSelection;
};

FinderService::FinderService(QObject *parent) : QObject(parent), d(std::make_unique<Private>()) {}

FinderService::~FinderService() = default;

FinderService &FinderService::shared() {
    static FinderService *instance = new FinderService;
    return *instance;
}

void FinderService::revealInFinder(const QList<QByteArray> &paths) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.FileManager1"_qs, u"/org/freedesktop/FileManager1"_qs,
        u"org.freedesktop.FileManager1"_qs, u"ShowItems"_qs);
    call << platform::fileUris(paths) << QString();
    const QByteArray first = paths.isEmpty() ? QByteArray() : paths.constFirst();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        if (!first.isEmpty())
            platform::openFolder(folderOf(first));
        emit revealCompleted(false);
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, showItemsTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, first](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const bool answered = !finished->isError();
                if (!answered && !first.isEmpty())
                    platform::openFolder(folderOf(first));
                emit revealCompleted(answered);
            });
}

QFuture<std::optional<QString>>
FinderService::selectFolder(const QString &title, const std::optional<QString> &initialPath) {
    // A chooser already open is answered with nothing: only one can be shown at a time.
    if (d->pendingSelection) {
        d->pendingSelection->addResult(std::nullopt);
        d->pendingSelection->finish();
        d->pendingSelection.reset();
    }
    QPromise<std::optional<QString>> promise;
    QFuture<std::optional<QString>> future = promise.future();
    promise.start();
    if (!isSignalConnected(QMetaMethod::fromSignal(&FinderService::folderSelectionRequested))) {
        promise.addResult(std::nullopt);
        promise.finish();
        return future;
    }
    d->pendingSelection.emplace(std::move(promise));
    emit folderSelectionRequested(title, initialPath.value_or(platform::homeDirectory()));
    return future;
}

void FinderService::completeFolderSelection(const QString &path) {
    if (!d->pendingSelection)
        return;
    d->pendingSelection->addResult(path.isEmpty() ? std::nullopt : std::optional<QString>(path));
    d->pendingSelection->finish();
    d->pendingSelection.reset();
}

} // namespace ravelinth
