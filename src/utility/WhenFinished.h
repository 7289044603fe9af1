#pragma once

#include <QFuture>
#include <QFutureWatcher>
#include <QObject>

#include <type_traits>
#include <utility>

namespace ravelinth {

// Calls `handler` on `context`'s thread once `future` has finished, with its result unless the
// future is void. Nothing is called when the future was cancelled or `context` is gone by then.
//
// This takes the place of QFuture::then(context, …): that hands the continuation's promise from
// the worker to the context's thread inside QtCore, out of sight of ThreadSanitizer, whereas a
// watcher reads the result under the future's own lock, which the checker sees taken on both
// sides.
template <typename T, typename Handler>
void whenFinished(const QFuture<T> &future, QObject *context, Handler handler) {
    auto *watcher = new QFutureWatcher<T>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context,
                     [watcher, handler = std::move(handler)]() mutable {
                         watcher->deleteLater();
                         if (watcher->isCanceled())
                             return;
                         if constexpr (std::is_void_v<T>)
                             handler();
                         else
                             handler(watcher->result());
                     });
    watcher->setFuture(future);
}

} // namespace ravelinth
