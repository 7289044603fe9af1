#include "services/ListExportService.h"

#include "models/FileRecord.h"

#include <QFileInfo>
#include <QSaveFile>

namespace ravelinth {

namespace {

constexpr qsizetype blockSize = 1 << 20;

} // namespace

bool ListExportService::writeRows(QIODevice &device, ListExportFormat format,
                                  const QList<FileItem> &files, const QList<int> &rows) {
    QByteArray block;
    block.reserve(blockSize + 4096);
    auto flush = [&device, &block] {
        const bool written = device.write(block) == block.size();
        block.clear(); // keeps its capacity
        return written;
    };
    const bool csv = format == ListExportFormat::csv;
    block.append(csv ? fileCsvHeader : QByteArrayView("["));
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const FileItem &file = files[rows[i]];
        if (csv) {
            appendFileCsv(block, file);
        } else {
            block.append(i == 0 ? "\n" : ",\n");
            appendFileJson(block, file);
        }
        if (block.size() >= blockSize && !flush())
            return false;
    }
    if (!csv)
        block.append("\n]\n");
    return flush();
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
