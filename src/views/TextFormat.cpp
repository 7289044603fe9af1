#include "TextFormat.h"

#include "models/ByteCountFormatter.h"
#include "models/ProgressText.h"
#include "models/RelativeDateFormatter.h"

#include <QDateTime>
#include <QTimeZone>

namespace ravelinth::views {

QString TextFormat::byteCount(double bytes) const {
    return formatByteCount(qint64(bytes));
}

QString TextFormat::oneDecimal(double value) const {
    return formatOneDecimal(value);
}

QString TextFormat::groupedInteger(double value) const {
    return formatGroupedInteger(qint64(value));
}

QString TextFormat::relativeDate(double msecsSinceEpoch) const {
    // Both ends in UTC: the calendar arithmetic itself happens in the system zone.
    return formatRelativeDate(
        QDateTime::fromMSecsSinceEpoch(qint64(msecsSinceEpoch), QTimeZone::utc()),
        QDateTime::currentDateTimeUtc());
}

QString TextFormat::lastPathComponent(const QString &path) const {
    return lastPathComponentText(path);
}

QString TextFormat::shortenedFileName(const QString &name) const {
    return ravelinth::shortenedFileName(name);
}

} // namespace ravelinth::views
