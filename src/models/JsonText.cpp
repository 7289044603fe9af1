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

} // namespace ravelinth
