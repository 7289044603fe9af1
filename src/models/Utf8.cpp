#include "models/Utf8.h"

namespace ravelinth {

qsizetype utf8SequenceLength(QByteArrayView bytes, qsizetype at) {
    const auto byteAt = [&](qsizetype i) {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
    };
    const unsigned char lead = byteAt(at);
    if (lead < 0x80)
        return at < bytes.size() ? 1 : 0;
    qsizetype length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;  // overlong below U+0800
        high = lead == 0xED ? 0x9F : 0xBF; // surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;  // overlong below U+10000
        high = lead == 0xF4 ? 0x8F : 0xBF; // above U+10FFFF
    } else {
        return 0;
    }
    if (at + length > bytes.size())
        return 0;
    const unsigned char second = byteAt(at + 1);
    if (second < low || second > high)
        return 0;
    for (qsizetype i = 2; i < length; ++i) {
        if ((byteAt(at + i) & 0xC0) != 0x80)
            return 0;
    }
    return length;
}

bool isValidUtf8(QByteArrayView bytes) {
    for (qsizetype at = 0; at < bytes.size();) {
        if (static_cast<unsigned char>(bytes[at]) < 0x80) {
            ++at;
            continue;
        }
        const qsizetype length = utf8SequenceLength(bytes, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

} // namespace ravelinth
