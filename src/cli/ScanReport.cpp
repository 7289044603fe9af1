#include "cli/ScanReport.h"

#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "models/ByteCountFormatter.h"
#include "models/DisplayText.h"
#include "models/FileRecord.h"
#include "models/ScanState.h"

namespace ravelinth::cli {

namespace {

QString isoDate(const QDateTime &date) {
    return date.toUTC().toString(Qt::ISODateWithMs);
}

} // namespace

void writeTableReport(FILE *stream, const ScanResult &result) {
    if (!result.files.isEmpty())
        std::fprintf(stream, "%10s  %-12s  %-6s  %s\n", "SIZE", "CATEGORY", "STATUS", "PATH");
    for (const FileItem &file : result.files) {
        std::fprintf(stream, "%10s  %-12s  %-6s  %s\n",
                     formatByteCount(file.size).toUtf8().constData(),
                     file.category.rawValue().toUtf8().constData(),
                     file.isSafeToDelete() ? "Safe" : "Review",
                     terminalText(file.displayPath()).constData());
    }
    if (!result.files.isEmpty())
        std::fputc('\n', stream);
    const QString status =
        ScanState::completed(result.files.size(), result.totalSize, result.duration)
            .statusMessage();
    std::fprintf(stream, "%s\n", status.toUtf8().constData());
}

void writeSkippedMountLines(FILE *stream, const ScanResult &result) {
    for (const SkippedMount &mount : result.skippedMounts) {
        const QString type =
            mount.fsType.isEmpty() ? u"unknown type"_qs : displayText(mount.fsType);
        std::fprintf(stream, "Not entered: %s (%s: %s)\n",
                     terminalText(displayText(mount.path)).constData(),
                     terminalText(type).constData(), mount.reasonText().toUtf8().constData());
    }
}

void writeUnreadableLine(FILE *stream, const ScanResult &result) {
    if (result.unreadableFolders == 0)
        return;
    std::fprintf(stream, "%lld %s could not be read\n",
                 static_cast<long long>(result.unreadableFolders),
                 result.unreadableFolders == 1 ? "folder" : "folders");
}

void writeCsvReport(FILE *stream, const ScanResult &result) {
    QByteArray block(fileCsvHeader.toByteArray());
    for (const FileItem &file : result.files) {
        appendFileCsv(block, file);
        if (block.size() >= (1 << 16)) {
            std::fwrite(block.constData(), 1, std::size_t(block.size()), stream);
            block.clear();
        }
    }
    std::fwrite(block.constData(), 1, std::size_t(block.size()), stream);
}

void writeJsonReport(FILE *stream, const ScanResult &result, qint64 filesScanned,
                     qint64 bytesScanned) {
    JsonWriter json(stream);
    json.beginObject();
    json.field("scannedPath", displayText(result.scannedPath));
    if (!isValidUtf8(result.scannedPath)) {
        json.key("rawScannedPath");
        json.value(QString::fromLatin1(percentEncodeRawPath(result.scannedPath)));
    }
    json.field("filesScanned", filesScanned);
    json.field("bytesScanned", bytesScanned);
    json.field("totalSize", result.totalSize);
    json.field("duration", result.duration);
    json.field("timestamp", isoDate(result.timestamp));
    json.key("files");
    json.beginArray();
    QByteArray object;
    for (const FileItem &file : result.files) {
        object.clear();
        appendFileJson(object, file);
        json.rawValue(object);
    }
    json.endArray();
    json.key("categoryStats");
    json.beginArray();
    for (const CategoryStats &stats : result.categoryStats) {
        json.beginObject();
        json.field("category", stats.category.rawValue());
        json.field("fileCount", stats.fileCount);
        json.field("totalSize", stats.totalSize);
        json.endObject();
    }
    json.endArray();
    json.field("unreadableFolders", result.unreadableFolders);
    json.key("unreadablePaths");
    json.beginArray();
    for (const QByteArray &path : result.unreadablePaths) {
        json.beginObject();
        json.pathField("path", "rawPath", path);
        json.endObject();
    }
    json.endArray();
    json.key("skippedMounts");
    json.beginArray();
    for (const SkippedMount &mount : result.skippedMounts) {
        json.beginObject();
        json.pathField("path", "rawPath", mount.path);
        json.field("fsType", displayText(mount.fsType));
        json.field("reason", mount.reasonCode());
        json.endObject();
    }
    json.endArray();
    json.endObject();
    std::fputc('\n', stream);
}

} // namespace ravelinth::cli
