#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace ravelinth {
class Preferences;
}

namespace ravelinth::views {

// Every text the views format from a number or a path, in one place, so that a byte count reads
// the same on every screen. Each function hands over to the core's formatter of that kind.
class TextFormat : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    // The user's choice of 1024-based units, to be passed to byteCount so that a binding
    // re-reads its text when the choice changes.
    Q_PROPERTY(bool binaryUnits READ binaryUnits NOTIFY binaryUnitsChanged)

public:
    // Follows `preferences`, which outlive it.
    explicit TextFormat(const Preferences &preferences);
    // Made by QML, following the one root's preferences. (Qt 6.4 would rather use a default
    // constructor than this, so there is none.)
    static TextFormat *create(QQmlEngine *engine, QJSEngine *scriptEngine);
    bool binaryUnits() const { return m_binaryUnits; }

    // Bytes arrive as a double from QML; every count the program meets fits its 53-bit mantissa.
    // Callers pass the units preference, so that their bindings follow it.
    Q_INVOKABLE QString byteCount(double bytes, bool binary) const;
    // "%.1f": exact halves go to the even digit (3.25 -> "3.2"), unlike Number.toFixed.
    Q_INVOKABLE QString oneDecimal(double value) const;
    // With the locale's digit grouping, as the progress strip counts files.
    Q_INVOKABLE QString groupedInteger(double value) const;
    // A modification time (milliseconds since the epoch) in words relative to now: "2 days ago".
    Q_INVOKABLE QString relativeDate(double msecsSinceEpoch) const;
    // The examined file's name, and that name cut when it is too long for the strip.
    Q_INVOKABLE QString lastPathComponent(const QString &path) const;
    Q_INVOKABLE QString shortenedFileName(const QString &name) const;

signals:
    void binaryUnitsChanged();

private:
    bool m_binaryUnits = false;
};

} // namespace ravelinth::views
