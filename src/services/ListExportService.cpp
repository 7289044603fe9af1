#include "services/ListExportService.h"

#include "models/FileRecord.h"
#include "utility/ParallelHalves.h"

#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <array>

namespace ravelinth {

namespace {

// About two megabytes of text a block, so that memory stays flat for any length of list.
constexpr qsizetype rowsPerBlock = 16384;
constexpr qsizetype rowsPerThread = 2048;

// A sorted list visits its files in an order that has nothing to do with where they lie in
// memory, so nearly every row starts with two cache misses: the record, then its path. Both are
// asked for a few rows ahead, so that the formatting waits on them less.
constexpr qsizetype recordsAhead = 32;
constexpr qsizetype pathsAhead = 16;

void prefetchAhead(const QList<FileItem> &files, const QList<int> &rows, qsizetype i) {
    if (i + recordsAhead < rows.size())
        __builtin_prefetch(&files[rows[i + recordsAhead]]);
    if (i + pathsAhead < rows.size())
        __builtin_prefetch(files[rows[i + pathsAhead]].path.constData());
}

} // namespace

bool ListExportService::writeRows(QIODevice &device, ListExportFormat format,
                                  const QList<FileItem> &files, const QList<int> &rows) {
    const bool csv = format == ListExportFormat::csv;
    if (device.write(csv ? fileCsvHeader.toByteArray() : QByteArray("[")) < 0)
        return false;
    // Each block's rows are formatted in two halves at once, each into a buffer of its own, and
    // written in order: two cores halve the time a long list takes.
    std::array<QByteArray, 2> halves;
    for (qsizetype first = 0; first < rows.size(); first += rowsPerBlock) {
        const qsizetype count = std::min(rowsPerBlock, rows.size() - first);
        inTwoHalves(count, rowsPerThread, [&](int part, qsizetype begin, qsizetype end) {
            QByteArray &out = halves[std::size_t(part)];
            out.clear();
            for (qsizetype i = first + begin; i < first + end; ++i) {
                prefetchAhead(files, rows, i);
                const FileItem &file = files[rows[i]];
                if (csv) {
                    appendFileCsv(out, file);
                } else {
                    out.append(i == 0 ? "\n" : ",\n");
                    appendFileJson(out, file);
                }
            }
        });
        for (const QByteArray &half : halves) {
            if (device.write(half) != half.size())
                return false;
        }
    }
    return csv || device.write("\n]\n") == 3;
}

ListExportOutcome ListExportService::exportRowsNow(const ListExportTarget &target,
                                                   const QList<FileItem> &files,
                                                   const QList<int> &rows) {
    QSaveFile file(target.path);
    const auto failure = [&target, &file] {
        return u"Could not export the list to \u201c"_qs + QFileInfo(target.path).fileName() +
               u"\u201d: "_qs + file.errorString();
    };
    if (!file.open(QIODevice::WriteOnly))
        return failure();
    if (!writeRows(file, target.format, files, rows)) {
        file.cancelWriting();
        return failure();
    }
    if (!file.commit())
        return failure();
    return rows.size();
}

QFuture<ListExportOutcome> ListExportService::exportRows(ListExportTarget target,
                                                         QList<FileItem> files, QList<int> rows) {
    return m_queue.run([target = std::move(target), files = std::move(files),
                        rows = std::move(rows)] { return exportRowsNow(target, files, rows); });
}

} // namespace ravelinth
