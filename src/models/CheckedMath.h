#pragma once

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

namespace ravelinth {

// Byte counts never wrap: an overflowing sum is a programming error and stops the program.
inline qint64 checkedAdd(qint64 a, qint64 b) {
    qint64 result;
    if (__builtin_add_overflow(a, b, &result)) {
        std::fputs("ravelinth: 64-bit size overflow\n", stderr);
        std::abort();
    }
    return result;
}

inline qint64 checkedSubtract(qint64 a, qint64 b) {
    qint64 result;
    if (__builtin_sub_overflow(a, b, &result)) {
        std::fputs("ravelinth: 64-bit size overflow\n", stderr);
        std::abort();
    }
    return result;
}

} // namespace ravelinth
