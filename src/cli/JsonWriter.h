#pragma once

#include "models/JsonText.h"

#include <QByteArray>
#include <QString>

#include <cstdio>

namespace ravelinth::cli {

// Writes JSON straight to a stream, so that a result of a million files never has to exist as
// one document in memory.
class JsonWriter {
public:
    explicit JsonWriter(FILE *stream) : m_stream(stream) {}

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    void key(const char *name);
    void value(const QString &text);
    void value(qint64 number);
    void value(double number);
    void value(bool flag);
    void rawValue(const QByteArray &json);

    template <typename T> void field(const char *name, const T &v) {
        key(name);
        value(v);
    }
    // A path as text under `name`; one that is not UTF-8 also under `rawName`, percent-encoded,
    // so that its exact bytes survive.
    void pathField(const char *name, const char *rawName, const QByteArray &path);

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void write(const char *text, std::size_t length) { std::fwrite(text, 1, length, m_stream); }
    void write(const QByteArray &bytes) { write(bytes.constData(), std::size_t(bytes.size())); }

    FILE *m_stream;
    bool m_needsComma = false;
    bool m_afterKey = false;
};

} // namespace ravelinth::cli
