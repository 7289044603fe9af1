#pragma once

#include <QByteArrayView>

namespace ravelinth {

// `needle` must already be lower-case ASCII; bytes of `haystack` outside A-Z are compared as
// they are.
bool asciiContainsIgnoringCase(QByteArrayView haystack, QByteArrayView needle);

// True when every byte is below 0x80.
bool isAsciiText(QByteArrayView bytes);
// True when every byte is a printable ASCII character (space to tilde).
bool isPrintableAscii(QByteArrayView bytes);

} // namespace ravelinth
