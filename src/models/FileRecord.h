#pragma once

#include "models/FileItem.h"

#include <QByteArray>
#include <QByteArrayView>

namespace ravelinth {

// A kept file written for other programs, appended to a buffer so that a long list is built in
// large blocks. Text fields are display text (U+FFFD for bytes that are not UTF-8); the JSON
// object adds "rawPath", the exact bytes percent-encoded, when the path is not UTF-8.

// {"path", ["rawPath",] "name", "size", "fileExtension", "modifiedDate", "category",
// "isSafeToDelete", "linkCount"}: the object `scan --json` lists and a JSON export holds.
void appendFileJson(QByteArray &out, const FileItem &file);

// RFC 4180: CRLF after every record, a field quoted (its quotes doubled) only when it holds a
// comma, a quote, CR or LF. Size in bytes, the category's display name, the modification time in
// ISO 8601 UTC with milliseconds, safe as true or false.
inline constexpr QByteArrayView fileCsvHeader = "name,path,size,category,modified,safe\r\n";
void appendCsvField(QByteArray &out, QByteArrayView utf8);
void appendFileCsv(QByteArray &out, const FileItem &file);

} // namespace ravelinth
