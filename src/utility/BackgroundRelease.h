#pragma once

#include <QList>

#include <thread>
#include <utility>

namespace ravelinth {

// Letting go of the last reference to a million files frees a million paths, a quarter of a
// second the window would stand still for. A long list is let go on a thread of its own instead;
// if someone else still holds it, that thread only drops a count. The thread is a plain one, so
// thread checkers see that the list was handed over whole.
template <typename T> void releaseInBackground(QList<T> &&list) {
    constexpr qsizetype longList = 20000;
    if (list.size() < longList) {
        list = {};
        return;
    }
    std::thread([doomed = std::move(list)]() mutable { doomed = {}; }).detach();
}

} // namespace ravelinth
