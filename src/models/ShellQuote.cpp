#include "models/ShellQuote.h"

#include "models/DisplayText.h"
#include "models/Utf8.h"

namespace ravelinth {

namespace {

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
        const qsizetype length = utf8SequenceLength(bytes, at);
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
