#pragma once

#include "services/DiskInfoService.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace ravelinth::fuzz {

// Used bytes are total minus free, and an overflowing subtraction stops the program on purpose.
// Documents whose sizes come near the 64-bit limit would only find that deliberate stop, so they
// are left out.
inline bool hasSizesNearTheLimit(const QByteArray &json, const QString &arrayKey,
                                 const QString &sizeKey, const QString &freeKey) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonArray volumes = document.object().value(arrayKey).toArray();
    for (const QJsonValue &volume : volumes) {
        for (const QString &key : {sizeKey, freeKey}) {
            const QJsonValue value = volume.toObject().value(key);
            if (value.isDouble() && std::fabs(value.toDouble()) >= 4611686018427387904.0)
                return true;
        }
    }
    return false;
}

[[noreturn]] inline void fail(const char *what) {
    std::fprintf(stderr, "fuzz check failed: %s\n", what);
    std::abort();
}

// A reader either yields a record of the volume mounted at "/" whose figures add up, or one of
// its documented errors with a readable text.
inline int checkReport(const std::uint8_t *data, std::size_t size,
                       DiskInfoOutcome (*read)(const QByteArray &), const QString &arrayKey,
                       const QString &sizeKey, const QString &freeKey) {
    const QByteArray json(reinterpret_cast<const char *>(data), qsizetype(size));
    if (hasSizesNearTheLimit(json, arrayKey, sizeKey, freeKey))
        return -1;
    const DiskInfoOutcome outcome = read(json);
    if (outcome) {
        if (outcome->mountPoint != u"/")
            fail("a volume not mounted at / was chosen");
        if (outcome->usedBytes != outcome->totalBytes - outcome->freeBytes)
            fail("used bytes are not total minus free");
        const DiskInfoOutcome again = read(json);
        if (!again || again->totalBytes != outcome->totalBytes || again->name != outcome->name)
            fail("the same document read twice gave different records");
    } else if (outcome.error().description().isEmpty()) {
        fail("an error without a description");
    }
    return 0;
}

} // namespace ravelinth::fuzz
