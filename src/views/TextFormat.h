#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace ravelinth::views {

// Every text the views format from a number or a path, in one place, so that a byte count reads
// the same on every screen. Each function hands over to the core's formatter of that kind.
class TextFormat : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // Bytes arrive as a double from QML; every count the program meets fits its 53-bit mantissa.
    Q_INVOKABLE QString byteCount(double bytes) const;
    // "%.1f": exact halves go to the even digit (3.25 -> "3.2"), unlike Number.toFixed.
    Q_INVOKABLE QString oneDecimal(double value) const;
    // With the locale's digit grouping, as the progress strip counts files.
    Q_INVOKABLE QString groupedInteger(double value) const;
    // A modification time (milliseconds since the epoch) in words relative to now: "2 days ago".
    Q_INVOKABLE QString relativeDate(double msecsSinceEpoch) const;
    // The examined file's name, and that name cut when it is too long for the strip.
    Q_INVOKABLE QString lastPathComponent(const QString &path) const;
    Q_INVOKABLE QString shortenedFileName(const QString &name) const;
};

} // namespace ravelinth::views
