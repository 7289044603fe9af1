#pragma once

#include <QByteArrayView>

namespace ravelinth {

// `needle` must be lower-case ASCII; bytes of `haystack` outside A-Z are compared as they are.
// `needle` must already be lower-case ASCII.
bool asciiContainsIgnoringCase(QByteArrayView haystack, QByteArrayView needle);

} // namespace ravelinth
