#pragma once

#include <QEventLoop>
#include <QFuture>
#include <QFutureWatcher>

namespace ravelinth::cli {

// The commands run their services' asynchronous operations and wait for them in an event loop,
// so queued deliveries from the worker threads still reach the main thread.
template <typename T> T awaitResult(QFuture<T> future) {
    QFutureWatcher<T> watcher;
    QEventLoop loop;
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(future);
    if (!future.isFinished())
        loop.exec();
    return future.result();
}

} // namespace ravelinth::cli
