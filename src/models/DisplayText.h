#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace ravelinth {

// A path or name, which on Linux is bytes, as text for people: UTF-8 with U+FFFD for bytes that
// are not. A byte-order mark at the start stays, since it is part of the name; QString::fromUtf8
// would drop it, and a name shown without it names another file.
QString displayText(QByteArrayView bytes);
// The same text as UTF-8 bytes. Valid UTF-8 is its own display text and comes back untouched
// (shared, not copied), which is what makes writing a million paths cheap.
QByteArray displayUtf8(const QByteArray &bytes);

} // namespace ravelinth
