#pragma once

#include <QByteArrayView>
#include <QString>

namespace ravelinth {

// A path as text someone can paste and still reach the file. Valid UTF-8 comes back as it is;
// anything else comes back in bash's ANSI-C quoting, $'…', where each byte that is not part of a
// valid UTF-8 character is written \xNN, so the text names the exact bytes and not the U+FFFD that
// a display would show.
QString pathForCopying(QByteArrayView path);

// The bytes in ANSI-C quoting: valid UTF-8 characters as they are, backslash and apostrophe
// escaped, control characters and bytes outside UTF-8 as \xNN.
QString ansiCQuoted(QByteArrayView bytes);

} // namespace ravelinth
