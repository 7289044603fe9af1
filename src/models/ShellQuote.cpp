#include "models/ShellQuote.h"

#include "models/DisplayText.h"

namespace ravelinth {

namespace {

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// The length of the valid UTF-8 character starting at `at`, or 0 when the bytes there are not
// one: overlong forms, surrogates and values above U+10FFFF count as invalid, as a decoder that
// replaces them with U+FFFD sees it.
qsizetype utf8Length(QByteArrayView bytes, qsizetype at) {
    const auto byteAt = [&](qsizetype i) {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
    };
    const unsigned char lead = byteAt(at);
    if (lead < 0x80)
        return 1;
    qsizetype length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0)
            low = 0xA0; // overlong below U+0800
        if (lead == 0xED)
            high = 0x9F; // surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0)
            low = 0x90; // overlong below U+10000
        if (lead == 0xF4)
            high = 0x8F; // above U+10FFFF
    } else {
        return 0;
    }
    const unsigned char second = byteAt(at + 1);
    if (second < low || second > high)
        return 0;
    for (qsizetype i = 2; i < length; ++i) {
        if (!isContinuation(byteAt(at + i)))
            return 0;
    }
    return at + length <= bytes.size() ? length : 0;
}

bool isValidUtf8(QByteArrayView bytes) {
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype length = utf8Length(bytes, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

void appendHexEscape(QString &out, unsigned char byte) {
    static constexpr char digits[] = "0123456789abcdef";
    out += QLatin1String("\\x");
    out += QLatin1Char(digits[byte >> 4]);
    out += QLatin1Char(digits[byte & 0x0F]);
}

} // namespace

QString ansiCQuoted(QByteArrayView bytes) {
    QString out = QStringLiteral("$'");
    for (qsizetype at = 0; at < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        const qsizetype length = utf8Length(bytes, at);
        if (length == 0 || byte < 0x20 || byte == 0x7F) {
            appendHexEscape(out, byte);
            ++at;
        } else if (byte == '\\' || byte == '\'') {
            out += QLatin1Char('\\');
            out += QLatin1Char(static_cast<char>(byte));
            ++at;
        } else {
            out += QString::fromUtf8(bytes.sliced(at, length));
            at += length;
        }
    }
    out += QLatin1Char('\'');
    return out;
}

QString pathForCopying(QByteArrayView path) {
    if (isValidUtf8(path))
        return displayText(path);
    return ansiCQuoted(path);
}

} // namespace ravelinth
