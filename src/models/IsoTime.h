#pragma once

#include <QByteArray>
#include <QString>

namespace ravelinth {

// A moment as ISO 8601 in UTC with milliseconds, "2026-11-24T20:52:00.000Z": the text
// QDateTime::toString(Qt::ISODateWithMs) gives for a UTC time, written without building a
// QDateTime, since an export formats one for every row.
void appendIsoUtc(QByteArray &out, qint64 msecsSinceEpoch);
QString isoUtcText(qint64 msecsSinceEpoch);

} // namespace ravelinth
