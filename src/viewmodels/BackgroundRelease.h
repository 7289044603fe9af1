#pragma once

#include <QList>
#include <QThreadPool>

#include <utility>

namespace ravelinth {

// Letting go of the last reference to a million files frees a million paths, a quarter of a
// second the window would stand still for. A long list is let go on a pool thread instead; if
// someone else still holds it, that thread only drops a count.
template <typename T> void releaseInBackground(QList<T> &&list) {
    constexpr qsizetype longList = 20000;
    if (list.size() < longList) {
        list = {};
        return;
    }
    QThreadPool::globalInstance()->start([doomed = std::move(list)]() mutable { doomed = {}; });
}

} // namespace ravelinth
