#include "models/FileRecord.h"

#include "models/IsoTime.h"
#include "models/JsonText.h"

#include <array>
#include <charconv>

namespace ravelinth {

namespace {

// The display names as UTF-8, made once rather than once per row.
const QByteArray &categoryName(ScanCategory category) {
    static const std::array<QByteArray, ScanCategory::count> names = [] {
        std::array<QByteArray, ScanCategory::count> made;
        for (const ScanCategory c : ScanCategory::allCases())
            made[std::size_t(c.index())] = c.rawValue().toUtf8();
        return made;
    }();
    return names[std::size_t(category.index())];
}

// The path and name as display text. A valid UTF-8 path is its own display text, so the common
// case copies nothing, not even a reference.
struct DisplayFields {
    explicit DisplayFields(const FileItem &file) : exact(isValidUtf8(file.path)) {
        if (exact) {
            path = file.path;
            name = file.name();
        } else {
            decodedPath = displayUtf8(file.path);
            decodedName = displayUtf8(file.name().toByteArray());
            path = decodedPath;
            name = decodedName;
        }
    }
    bool exact;
    QByteArray decodedPath;
    QByteArray decodedName;
    QByteArrayView path;
    QByteArrayView name;
};

void appendNumber(QByteArray &out, qint64 number) {
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, number);
    out.append(digits, result.ptr - digits);
}

// FileItem::fileExtension() as UTF-8, without the string it builds when the extension is ASCII
// (where lowering it by hand is the same thing).
void appendExtension(QByteArray &out, QByteArrayView name) {
    const qsizetype dot = name.lastIndexOf('.');
    if (dot <= 0 || dot == name.size() - 1) {
        appendJsonString(out, {});
        return;
    }
    const QByteArrayView extension = name.sliced(dot + 1);
    char lowered[32];
    if (extension.size() > qsizetype(sizeof lowered)) {
        appendJsonString(out, fileExtensionOf(name).toUtf8());
        return;
    }
    for (qsizetype i = 0; i < extension.size(); ++i) {
        const char c = extension[i];
        if (static_cast<unsigned char>(c) >= 0x80) {
            appendJsonString(out, fileExtensionOf(name).toUtf8());
            return;
        }
        lowered[i] = c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    }
    appendJsonString(out, QByteArrayView(lowered, extension.size()));
}

} // namespace

void appendFileJson(QByteArray &out, const FileItem &file) {
    const DisplayFields fields(file);
    out.append("{\"path\":");
    appendJsonString(out, fields.path);
    if (!fields.exact) {
        out.append(",\"rawPath\":");
        appendJsonString(out, percentEncodeRawPath(file.path));
    }
    out.append(",\"name\":");
    appendJsonString(out, fields.name);
    out.append(",\"size\":");
    appendNumber(out, file.size);
    out.append(",\"fileExtension\":");
    appendExtension(out, file.name());
    out.append(",\"modifiedDate\":\"");
    appendIsoUtc(out, file.modifiedMSecs);
    out.append("\",\"category\":");
    appendJsonString(out, categoryName(file.category));
    out.append(file.isSafeToDelete() ? ",\"isSafeToDelete\":true" : ",\"isSafeToDelete\":false");
    out.append(",\"linkCount\":");
    appendNumber(out, qint64(file.linkCount));
    out.append('}');
}

void appendCsvField(QByteArray &out, QByteArrayView utf8) {
    bool needsQuotes = false;
    for (const char c : utf8)
        needsQuotes |= c == ',' || c == '"' || c == '\r' || c == '\n';
    if (!needsQuotes) {
        out.append(utf8);
        return;
    }
    out.append('"');
    const char *run = utf8.data();
    const char *const end = run + utf8.size();
    for (const char *at = run; at != end; ++at) {
        if (*at != '"')
            continue;
        out.append(run, at + 1 - run); // the quote itself, then once more
        run = at;
    }
    out.append(run, end - run);
    out.append('"');
}

void appendFileCsv(QByteArray &out, const FileItem &file) {
    const DisplayFields fields(file);
    appendCsvField(out, fields.name);
    out.append(',');
    appendCsvField(out, fields.path);
    out.append(',');
    appendNumber(out, file.size);
    out.append(',');
    appendCsvField(out, categoryName(file.category));
    out.append(',');
    appendIsoUtc(out, file.modifiedMSecs);
    out.append(file.isSafeToDelete() ? ",true\r\n" : ",false\r\n");
}

} // namespace ravelinth
