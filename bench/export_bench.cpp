// Exports a list of a million files, in the order found and in a shuffled order, as CSV and as JSON
// to a real file and prints how long each took and how large it came out. The names are made up but
// shaped like a home folder's: nested folders, some non-ASCII, a few that need quoting, a few that
// are not UTF-8.
//
//   export_bench [ROWS] [FOLDER]

#include "services/ListExportService.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <random>
#include <time.h>

using namespace ravelinth;

namespace {

QList<FileItem> makeFiles(qsizetype count) {
    static const char *const folders[] = {"/home/ada/Videos/Holidays 2024",
                                          "/home/ada/Downloads",
                                          "/home/ada/.cache/thumbnails/large",
                                          "/home/ada/Documents/Résumés",
                                          "/home/ada/Music/Ludwig van Beethoven/Symphonies",
                                          "/home/ada/Projects/ravel/build/objects"};
    static const char *const names[] = {"clip",  "Report, final", "photo \"raw\"",
                                        "track", "archive",       "caf\xe9"};
    static const char *const extensions[] = {".mkv", ".zip", ".pdf", ".flac", ".png", ".o"};
    static const ScanCategory categories[] = {ScanCategory::video,    ScanCategory::archive,
                                              ScanCategory::document, ScanCategory::audio,
                                              ScanCategory::image,    ScanCategory::other};
    QList<FileItem> files;
    files.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const std::size_t kind = std::size_t(i % 6);
        // One in a thousand names is not UTF-8; the rest vary the folder and the name.
        const char *name = i % 1000 == 999 ? names[5] : names[std::size_t(i / 6 % 5)];
        QByteArray path = QByteArray(folders[std::size_t(i / 36 % 6)]) + '/' + name + ' ' +
                          QByteArray::number(i) + extensions[kind];
        files.append(FileItem::make(std::move(path), 1'000'000 + i * 7919,
                                    1'600'000'000'000 + i * 60'000, categories[kind]));
    }
    return files;
}

double cpuSeconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

void measure(const char *label, const ListExportTarget &target, const QList<FileItem> &files,
             const QList<int> &rows) {
    QElapsedTimer clock;
    clock.start();
    const double cpuStart = cpuSeconds(CLOCK_THREAD_CPUTIME_ID);
    const double allStart = cpuSeconds(CLOCK_PROCESS_CPUTIME_ID);
    const ListExportOutcome outcome = ListExportService::exportRowsNow(target, files, rows);
    const double seconds = double(clock.nsecsElapsed()) / 1e9;
    const double cpu = cpuSeconds(CLOCK_THREAD_CPUTIME_ID) - cpuStart;
    const double all = cpuSeconds(CLOCK_PROCESS_CPUTIME_ID) - allStart;
    if (!outcome) {
        std::printf("%-5s failed: %s\n", label, qPrintable(outcome.error()));
        return;
    }
    // On a shared machine the wall time includes waiting for a core; the CPU times do not: the
    // writing thread's own, and both halves' together.
    std::printf("%-5s %lld rows  %.3f s (cpu: writer %.3f s, all %.3f s)  %.1f MB\n", label,
                static_cast<long long>(*outcome), seconds, cpu, all,
                double(QFileInfo(target.path).size()) / 1e6);
}

} // namespace

int main(int argc, char **argv) {
    if (argc > 1 && (!std::strcmp(argv[1], "--help") || !std::strcmp(argv[1], "-h"))) {
        std::puts(
            "Usage: export_bench [ROWS [FOLDER]]\n\n"
            "Exports ROWS made-up files (default 1,000,000) as CSV and as JSON into a scratch\n"
            "folder under FOLDER (default the temporary folder), in the order found and\n"
            "shuffled, and prints the wall and processor times of each.");
        return 0;
    }
    const qsizetype rows = argc > 1 ? QByteArray(argv[1]).toLongLong() : 1'000'000;
    if (rows <= 0) {
        std::fprintf(stderr, "export_bench: ROWS must be a positive number\n");
        return 2;
    }
    const qsizetype count = rows;
    QTemporaryDir scratch(argc > 2 ? QFile::decodeName(argv[2]) + u"/export-bench-XXXXXX"_qs
                                   : QDir::tempPath() + u"/export-bench-XXXXXX"_qs);
    if (!scratch.isValid()) {
        std::fprintf(stderr, "no scratch folder\n");
        return 1;
    }
    const QList<FileItem> files = makeFiles(count);
    QList<int> found(count);
    std::iota(found.begin(), found.end(), 0);
    // A sort by name visits the files in an order unrelated to where they lie in memory.
    QList<int> shuffled = found;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(20261124));

    std::printf("in the order found (the table's default, largest first):\n");
    measure("csv", {scratch.filePath(u"found.csv"_qs), ListExportFormat::csv}, files, found);
    measure("json", {scratch.filePath(u"found.json"_qs), ListExportFormat::json}, files, found);
    std::printf("shuffled (as after a sort by name):\n");
    measure("csv", {scratch.filePath(u"list.csv"_qs), ListExportFormat::csv}, files, shuffled);
    measure("json", {scratch.filePath(u"list.json"_qs), ListExportFormat::json}, files, shuffled);
    return 0;
}
