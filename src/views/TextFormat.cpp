#include "TextFormat.h"

#include "QmlTypes.h"
#include "models/ByteCountFormatter.h"
#include "models/ProgressText.h"
#include "models/RelativeDateFormatter.h"

#include <QDateTime>
#include <QTimeZone>

namespace ravelinth::views {

TextFormat::TextFormat(const Preferences &preferences) {
    const auto follow = [this, &preferences] {
        if (m_binaryUnits == preferences.showSizesInBinary())
            return;
        m_binaryUnits = preferences.showSizesInBinary();
        emit binaryUnitsChanged();
    };
    connect(&preferences, &Preferences::changed, this, follow);
    follow();
}

TextFormat *TextFormat::create(QQmlEngine *engine, QJSEngine *scriptEngine) {
    // Owned by the engine, as every singleton QML makes.
    return new TextFormat(*RavelinthViewModelForeign::create(engine, scriptEngine)->preferences());
}

QString TextFormat::byteCount(double bytes, bool binary) const {
    return formatByteCount(qint64(bytes), binary ? ByteUnits::binary : ByteUnits::decimal);
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
