#pragma once

#include <QByteArrayView>
#include <QString>

namespace ravelinth {

// A path or name, which on Linux is bytes, as text for people: UTF-8 with U+FFFD for bytes that
// are not. A byte-order mark at the start stays, since it is part of the name; QString::fromUtf8
// would drop it, and a name shown without it names another file.
QString displayText(QByteArrayView bytes);

} // namespace ravelinth
