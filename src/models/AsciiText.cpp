#include "models/AsciiText.h"

namespace ravelinth {

namespace {
constexpr char asciiLower(char c) {
    return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c;
}
} // namespace

bool asciiContainsIgnoringCase(QByteArrayView haystack, QByteArrayView needle) {
    if (needle.isEmpty())
        return true;
    const qsizetype last = haystack.size() - needle.size();
    for (qsizetype start = 0; start <= last; ++start) {
        qsizetype i = 0;
        while (i < needle.size() && asciiLower(haystack[start + i]) == needle[i])
            ++i;
        if (i == needle.size())
            return true;
    }
    return false;
}

} // namespace ravelinth
