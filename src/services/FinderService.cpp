#include "services/FinderService.h"

#include "platform/FileManager.h"
#include "platform/SessionBusProbe.h"
#include "platform/StandardLocations.h"
#include "platform/WorkingFolder.h"
#include "utility/WhenFinished.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDeadlineTimer>
#include <QMetaMethod>
#include <QPromise>
#include <QtConcurrent>

namespace ravelinth {

namespace {

// A file manager that is there answers at once; a bus or a file manager that hangs must not
// hold the fallback long. The whole reveal, asking whether the bus speaks at all included, ends
// within this time.
constexpr int revealTimeLimitMs = 2500;
constexpr int busProbeLimitMs = 1000;

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
    QList<QByteArray> absolute;
    absolute.reserve(paths.size());
    for (const QByteArray &path : paths)
        absolute.append(platform::absolutePath(path).value_or(path));
    const QDeadlineTimer deadline(revealTimeLimitMs);
    // Qt connects to the session bus on the calling thread and waits there for the bus's first
    // answer, so whether the bus speaks is asked off this thread first.
    whenFinished(QtConcurrent::run(
                     [] { return platform::sessionBusAnswers(QDeadlineTimer(busProbeLimitMs)); }),
                 this, [this, absolute, deadline](bool busAnswers) {
                     showItems(absolute, busAnswers, deadline);
                 });
}

void FinderService::openFile(const QByteArray &path) {
    platform::openFile(path);
}

void FinderService::copyToClipboard(const QString &text) {
    platform::copyTextToClipboard(text);
}

void FinderService::showItems(const QList<QByteArray> &paths, bool busAnswers,
                              QDeadlineTimer deadline) {
    const QByteArray first = paths.isEmpty() ? QByteArray() : paths.constFirst();
    const auto fallBack = [this, first] {
        if (!first.isEmpty())
            platform::openFolder(folderOf(first));
        emit revealCompleted(false);
    };
    if (!busAnswers) {
        fallBack();
        return;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        fallBack();
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.FileManager1"_qs, u"/org/freedesktop/FileManager1"_qs,
        u"org.freedesktop.FileManager1"_qs, u"ShowItems"_qs);
    call << platform::fileUris(paths) << QString();
    const int timeoutMs = int(qMax<qint64>(1, deadline.remainingTime()));
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, timeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, fallBack](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (finished->isError()) {
                    fallBack();
                    return;
                }
                emit revealCompleted(true);
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
