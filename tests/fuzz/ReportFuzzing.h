#pragma once

#include "services/DiskInfoService.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace ravelinth::fuzz {

[[noreturn]] inline void fail(const char *what) {
    std::fprintf(stderr, "fuzz check failed: %s\n", what);
    std::abort();
}

// A reader either yields a record of the volume mounted at "/" whose figures add up, or one of
// its documented errors with a readable text; figures whose difference overflows are among those
// errors. With `freeWithinSize`, no figure of a record is negative.
inline int checkReport(const std::uint8_t *data, std::size_t size,
                       DiskInfoOutcome (*read)(const QByteArray &), bool freeWithinSize) {
    const QByteArray json(reinterpret_cast<const char *>(data), qsizetype(size));
    const DiskInfoOutcome outcome = read(json);
    if (outcome) {
        if (outcome->mountPoint != u"/")
            fail("a volume not mounted at / was chosen");
        if (outcome->usedBytes != outcome->totalBytes - outcome->freeBytes)
            fail("used bytes are not total minus free");
        if (freeWithinSize && (outcome->freeBytes < 0 || outcome->usedBytes < 0))
            fail("a negative figure was accepted");
        const DiskInfoOutcome again = read(json);
        if (!again || again->totalBytes != outcome->totalBytes || again->name != outcome->name)
            fail("the same document read twice gave different records");
    } else if (outcome.error().description().isEmpty()) {
        fail("an error without a description");
    }
    return 0;
}

} // namespace ravelinth::fuzz
