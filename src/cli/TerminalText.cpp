#include "cli/TerminalText.h"

#include <array>
#include <cstdio>

namespace ravelinth::cli {

QByteArray terminalText(const QString &text) {
    QString safe;
    safe.reserve(text.size());
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code == u'\\') {
            safe += u"\\\\"_qs;
        } else if (code == u'\n') {
            safe += u"\\n"_qs;
        } else if (code == u'\t') {
            safe += u"\\t"_qs;
        } else if (code == u'\r') {
            safe += u"\\r"_qs;
        } else if (code < 0x20 || code == 0x7f || (code >= 0x80 && code < 0xa0)) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%02X", unsigned(code));
            safe += QLatin1StringView(escape.data());
        } else {
            safe += c;
        }
    }
    return safe.toUtf8();
}

} // namespace ravelinth::cli
