#include "cli/JsonWriter.h"

#include <QStringDecoder>

#include <array>
#include <charconv>

namespace ravelinth::cli {

QByteArray jsonString(const QString &text) {
    QByteArray out;
    out.reserve(text.size() + 2);
    out.append('"');
    for (const char c : text.toUtf8()) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
        case '"':
            out.append("\\\"");
            break;
        case '\\':
            out.append("\\\\");
            break;
        case '\n':
            out.append("\\n");
            break;
        case '\r':
            out.append("\\r");
            break;
        case '\t':
            out.append("\\t");
            break;
        default:
            if (byte < 0x20) {
                std::array<char, 8> escape{};
                std::snprintf(escape.data(), escape.size(), "\\u%04x", byte);
                out.append(escape.data());
            } else {
                out.append(c);
            }
        }
    }
    out.append('"');
    return out;
}

QByteArray percentEncodeRawPath(const QByteArray &path) {
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

bool isValidUtf8(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder.decode(bytes);
    return !decoder.hasError();
}

void JsonWriter::separate() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_needsComma)
        write(",", 1);
}

void JsonWriter::open(char bracket) {
    separate();
    write(&bracket, 1);
    m_needsComma = false;
}

void JsonWriter::close(char bracket) {
    write(&bracket, 1);
    m_needsComma = true;
}

void JsonWriter::key(const char *name) {
    separate();
    write(jsonString(QString::fromUtf8(name)));
    write(":", 1);
    m_afterKey = true;
}

void JsonWriter::value(const QString &text) {
    separate();
    write(jsonString(text));
    m_needsComma = true;
}

void JsonWriter::value(qint64 number) {
    separate();
    write(QByteArray::number(number));
    m_needsComma = true;
}

void JsonWriter::value(double number) {
    separate();
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    write(buffer.data(), std::size_t(result.ptr - buffer.data()));
    m_needsComma = true;
}

void JsonWriter::value(bool flag) {
    separate();
    write(flag ? "true" : "false", flag ? 4 : 5);
    m_needsComma = true;
}

void JsonWriter::rawValue(const QByteArray &json) {
    separate();
    write(json);
    m_needsComma = true;
}

} // namespace ravelinth::cli
