#pragma once

#include <QObject>
#include <QString>

namespace ravelinth::views {

// The formatters views need without a view model at hand: byte counts in the program's one
// style, and numbers with one decimal rounded the way printf rounds them.
class TextFormat : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Bytes arrive as a double from QML; every count the program meets fits its 53-bit mantissa.
    Q_INVOKABLE QString byteCount(double bytes) const;
    // "%.1f": exact halves go to the even digit (3.25 -> "3.2"), unlike Number.toFixed.
    Q_INVOKABLE QString oneDecimal(double value) const;
};

} // namespace ravelinth::views
