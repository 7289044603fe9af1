#pragma once

#include <QtGlobal>

#include <thread>

namespace ravelinth {

// Runs `work(part, begin, end)` for the two halves of [0, count), part 0 and part 1, and returns
// where the second half begins. A count of
// at least `minimumForThread` has its second half run on a thread of its own meanwhile: two
// cores halve a pass over a million files. A plain joined thread, not a pool's, so that thread
// checkers see the hand-over of what each half wrote.
template <typename Work>
qsizetype inTwoHalves(qsizetype count, qsizetype minimumForThread, Work work) {
    const qsizetype half = count / 2;
    if (count < minimumForThread) {
        work(0, qsizetype(0), half);
        work(1, half, count);
        return half;
    }
    std::thread second([&] { work(1, half, count); });
    work(0, qsizetype(0), half);
    second.join();
    return half;
}

} // namespace ravelinth
