#include "TextFormat.h"

#include "QmlTypes.h"
#include "models/ByteCountFormatter.h"
#include "models/ProgressText.h"
#include "models/RelativeDateFormatter.h"

#include <QDateTime>
#include <QTimeZone>

#include <cmath>
#include <optional>

namespace ravelinth::views {

namespace {

// QML hands over whatever a binding holds: a role of a row that has just gone reads as undefined,
// which arrives as NaN. Converting that, or anything past 2^63, to an integer is undefined.
std::optional<qint64> wholeNumber(double value) {
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!std::isfinite(value) || value < -limit || value >= limit)
        return std::nullopt;
    return qint64(value);
}

} // namespace

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
    return formatByteCount(wholeNumber(bytes).value_or(0),
                           binary ? ByteUnits::binary : ByteUnits::decimal);
}

QString TextFormat::oneDecimal(double value) const {
    return formatOneDecimal(value);
}

QString TextFormat::groupedInteger(double value) const {
    return formatGroupedInteger(wholeNumber(value).value_or(0));
}

QString TextFormat::relativeDate(double msecsSinceEpoch) const {
    const std::optional<qint64> msecs = wholeNumber(msecsSinceEpoch);
    if (!msecs)
        return {};
    // Both ends in UTC: the calendar arithmetic itself happens in the system zone.
    return formatRelativeDate(QDateTime::fromMSecsSinceEpoch(*msecs, QTimeZone::utc()),
                              QDateTime::currentDateTimeUtc());
}

QString TextFormat::lastPathComponent(const QString &path) const {
    return lastPathComponentText(path);
}

QString TextFormat::shortenedFileName(const QString &name) const {
    return ravelinth::shortenedFileName(name);
}

} // namespace ravelinth::views
