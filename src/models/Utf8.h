#pragma once

#include <QByteArrayView>

namespace ravelinth {

// The length of the well-formed UTF-8 sequence starting at `at` (Unicode's table 3-7: no
// overlong forms, no surrogates, nothing past U+10FFFF), or 0 when the bytes there are not one.
// These are the sequences a decoder keeps; it turns everything else into U+FFFD.
qsizetype utf8SequenceLength(QByteArrayView bytes, qsizetype at);

// Done by hand because every listed and exported path asks, and decoding into a string to find
// out costs an allocation per path.
bool isValidUtf8(QByteArrayView bytes);

} // namespace ravelinth
