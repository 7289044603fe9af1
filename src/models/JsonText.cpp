#include "models/JsonText.h"

namespace ravelinth {

void appendJsonString(QByteArray &out, QByteArrayView utf8) {
    static constexpr char hex[] = "0123456789abcdef";
    out.append('"');
    const char *run = utf8.data();
    const char *const end = run + utf8.size();
    // Plain runs are copied whole: a name rarely holds anything that needs escaping.
    for (const char *at = run; at != end; ++at) {
        const auto byte = static_cast<unsigned char>(*at);
        if (byte >= 0x20 && byte != '"' && byte != '\\')
            continue;
        out.append(run, at - run);
        run = at + 1;
        switch (byte) {
        case '"':
            out.append("\\\"", 2);
            break;
        case '\\':
            out.append("\\\\", 2);
            break;
        case '\n':
            out.append("\\n", 2);
            break;
        case '\r':
            out.append("\\r", 2);
            break;
        case '\t':
            out.append("\\t", 2);
            break;
        default: {
            const char escape[] = {'\\', 'u', '0', '0', hex[byte >> 4], hex[byte & 0xf]};
            out.append(escape, sizeof escape);
        }
        }
    }
    out.append(run, end - run);
    out.append('"');
}

QByteArray jsonString(const QString &text) {
    const QByteArray utf8 = text.toUtf8();
    QByteArray out;
    out.reserve(utf8.size() + 2);
    appendJsonString(out, utf8);
    return out;
}

QByteArray percentEncodeRawPath(QByteArrayView path) {
    static constexpr char hex[] = "0123456789ABCDEF";
    QByteArray out;
    out.reserve(path.size());
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte <= 0x7e && byte != '%') {
            out.append(c);
        } else {
            out.append('%');
            out.append(hex[byte >> 4]);
            out.append(hex[byte & 0xf]);
        }
    }
    return out;
}

// Unicode's well-formed sequences (its table 3-7), the same the UTF-8 decoder accepts: no
// overlong forms, no surrogates, nothing past U+10FFFF. Done by hand because every exported row
// asks, and decoding into a string to find out costs an allocation per path.
bool isValidUtf8(QByteArrayView bytes) {
    const auto *at = reinterpret_cast<const unsigned char *>(bytes.data());
    const auto *const end = at + bytes.size();
    while (at != end) {
        const unsigned char lead = *at;
        if (lead < 0x80) {
            ++at;
            continue;
        }
        qsizetype length = 0;
        unsigned char low = 0x80;
        unsigned char high = 0xBF;
        if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            low = lead == 0xE0 ? 0xA0 : 0x80;
            high = lead == 0xED ? 0x9F : 0xBF;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            low = lead == 0xF0 ? 0x90 : 0x80;
            high = lead == 0xF4 ? 0x8F : 0xBF;
        } else {
            return false;
        }
        if (end - at < length || at[1] < low || at[1] > high)
            return false;
        for (qsizetype i = 2; i < length; ++i) {
            if ((at[i] & 0xC0) != 0x80)
                return false;
        }
        at += length;
    }
    return true;
}

} // namespace ravelinth
