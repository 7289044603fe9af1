#include "cli/JsonWriter.h"

#include <array>
#include <charconv>

namespace ravelinth::cli {

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

void JsonWriter::pathField(const char *name, const char *rawName, const QByteArray &path) {
    field(name, QString::fromUtf8(path));
    if (!isValidUtf8(path))
        field(rawName, QString::fromLatin1(percentEncodeRawPath(path)));
}

} // namespace ravelinth::cli
