#pragma once

#include "models/Expected.h"
#include "models/FileItem.h"
#include "models/ListExportFormat.h"
#include "utility/SerialQueue.h"

#include <QFuture>
#include <QIODevice>
#include <QList>
#include <QString>

namespace ravelinth {

// The number of rows written, or why the file could not be written.
using ListExportOutcome = Expected<qsizetype, QString>;

// Writes a list of files to a file as CSV or as JSON (an array of the objects `scan --json`
// lists). The rows are given as indices into `files`, in the order they are written, which is
// how the table holds what it displays: a snapshot of it costs two shared lists, not a copy.
//
// The file is written whole or not at all: an export that fails leaves what was there before.
class ListExportService {
public:
    // Runs on a thread of this service's own, one export after another.
    QFuture<ListExportOutcome> exportRows(ListExportTarget target, QList<FileItem> files,
                                          QList<int> rows);

    static ListExportOutcome exportRowsNow(const ListExportTarget &target,
                                           const QList<FileItem> &files, const QList<int> &rows);
    // Writes in blocks of a few megabytes; false when the device refused a block.
    static bool writeRows(QIODevice &device, ListExportFormat format, const QList<FileItem> &files,
                          const QList<int> &rows);

private:
    SerialQueue m_queue;
};

} // namespace ravelinth
