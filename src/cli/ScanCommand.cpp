#include "cli/Commands.h"
#include "cli/InterruptWatcher.h"
#include "cli/ScanReport.h"
#include "cli/TerminalText.h"
#include "models/ByteCountFormatter.h"
#include "models/ScanState.h"
#include "services/FileScannerService.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFutureWatcher>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <unistd.h>

namespace ravelinth::cli {

namespace {

constexpr const char *scanUsage =
    "Usage: ravelinth scan PATH [--min-size-mb N] [--hidden] [--exclude PATTERN]... [-x]\n"
    "                      [--network] [--binary] [--json | --csv | --print0]\n"
    "\n"
    "Walks PATH and lists every file of at least N binary megabytes (N x 1024 x 1024 bytes;\n"
    "default 100, fractions allowed), largest first. System folders are always skipped, and\n"
    "so are network and user-space file systems unless --network is given. A file whose data\n"
    "has several names counts once in the totals.\n"
    "\n"
    "  --min-size-mb N      size threshold in megabytes\n"
    "  --hidden             include hidden files and folders\n"
    "  --exclude PATTERN    leave out what PATTERN names (repeatable): a PATTERN that starts\n"
    "                       with / is a folder; one with another / a shell pattern for the\n"
    "                       path below PATH; anything else a shell pattern for names, such\n"
    "                       as node_modules or '*.vmdk'\n"
    "  -x, --one-file-system  stay on the file system PATH is on\n"
    "  --network            also enter network and user-space (FUSE) file systems\n"
    "  --binary             show sizes in 1024-based units (KiB, MiB, GiB)\n"
    "  --json               print the whole result as one JSON object\n"
    "  --csv                print the files as CSV: name,path,size,category,modified,safe\n"
    "  --print0             print the exact paths, each followed by a NUL byte\n"
    "\n"
    "Folders that could not be read, and mounts that were not entered, are reported on\n"
    "standard error after the table.\n"
    "\n"
    "Ctrl+C stops the walk and prints what was found so far.\n";

enum class OutputFormat { table, json, csv, print0 };

struct ScanOptions {
    QByteArray path;
    qint64 minFileSizeBytes = 100LL * 1024 * 1024;
    bool includeHidden = false;
    ScanExclusions exclusions;
    bool oneFileSystem = false;
    bool network = false;
    OutputFormat format = OutputFormat::table;
};

int usageError(const char *message) {
    std::fprintf(stderr, "ravelinth scan: %s\n\n%s", message, scanUsage);
    return exitUsage;
}

std::optional<qint64> thresholdFromMegabytes(const QByteArray &text) {
    bool ok = false;
    const double megabytes = text.toDouble(&ok);
    if (!ok || !std::isfinite(megabytes) || megabytes < 0)
        return std::nullopt;
    const double bytes = std::trunc(megabytes * 1024.0 * 1024.0);
    if (bytes >= 9223372036854775808.0)
        return std::nullopt;
    return qint64(bytes);
}

std::optional<OutputFormat> outputFormat(const QByteArray &argument) {
    if (argument == "--json")
        return OutputFormat::json;
    if (argument == "--csv")
        return OutputFormat::csv;
    if (argument == "--print0")
        return OutputFormat::print0;
    return std::nullopt;
}

// The value of the option at `i`, written "--name=VALUE" or "--name VALUE" (then `i` moves past
// it); none when nothing follows.
std::optional<QByteArray> optionValue(const QList<QByteArray> &arguments, qsizetype &i) {
    const QByteArray &argument = arguments[i];
    const qsizetype equals = argument.indexOf('=');
    if (equals >= 0)
        return argument.mid(equals + 1);
    if (i + 1 < arguments.size())
        return arguments[++i];
    return std::nullopt;
}

// Returns an exit code when parsing ends the command (help or a usage error).
std::optional<int> parse(const QList<QByteArray> &arguments, ScanOptions &options) {
    bool formatGiven = false;
    bool optionsEnded = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QByteArray &argument = arguments[i];
        if (!optionsEnded && argument.startsWith('-') && argument.size() > 1) {
            if (argument == "--") {
                optionsEnded = true;
            } else if (argument == "--help" || argument == "-h") {
                std::fputs(scanUsage, stdout);
                return exitSuccess;
            } else if (argument == "--hidden") {
                options.includeHidden = true;
            } else if (argument == "-x" || argument == "--one-file-system") {
                options.oneFileSystem = true;
            } else if (argument == "--network") {
                options.network = true;
            } else if (argument == "--exclude" || argument.startsWith("--exclude=")) {
                const std::optional<QByteArray> value = optionValue(arguments, i);
                if (!value)
                    return usageError("--exclude needs a pattern");
                if (value->isEmpty())
                    return usageError("--exclude needs a pattern that is not empty");
                options.exclusions.add(*value);
            } else if (argument == "--binary") {
                setDefaultByteUnits(ByteUnits::binary);
            } else if (const auto format = outputFormat(argument)) {
                if (formatGiven)
                    return usageError("only one of --json, --csv and --print0 can be given");
                formatGiven = true;
                options.format = *format;
            } else if (argument == "--min-size-mb" || argument.startsWith("--min-size-mb=")) {
                const std::optional<QByteArray> value = optionValue(arguments, i);
                if (!value)
                    return usageError("--min-size-mb needs a number");
                const auto threshold = thresholdFromMegabytes(*value);
                if (!threshold)
                    return usageError("--min-size-mb needs a non-negative number");
                options.minFileSizeBytes = *threshold;
            } else {
                std::fprintf(stderr, "ravelinth scan: unknown option '%s'\n\n%s",
                             argument.constData(), scanUsage);
                return exitUsage;
            }
            continue;
        }
        if (!options.path.isEmpty())
            return usageError("only one PATH can be scanned at a time");
        options.path = argument;
    }
    if (options.path.isEmpty())
        return usageError("missing PATH");
    return std::nullopt;
}

// A one-line live progress display on a terminal, redrawn at most ten times a second.
class ProgressLine {
public:
    ProgressLine() : m_enabled(::isatty(STDERR_FILENO) == 1) { m_clock.start(); }
    ~ProgressLine() { clear(); }

    void update(qint64 files, qint64 bytes, const QString &current) {
        if (!m_enabled || (m_drawn && m_clock.elapsed() < 100))
            return;
        m_clock.restart();
        // A name is the file's owner's choice: escaped, it can send the terminal no commands.
        QString line = u"Scanning: "_qs + formatGroupedInteger(files) + u" files \u2022 "_qs +
                       formatByteCount(bytes) + u" \u2014 "_qs +
                       QString::fromUtf8(terminalText(current));
        if (line.size() > 110)
            line = line.left(60) + u"\u2026"_qs + line.right(49);
        std::fprintf(stderr, "\r\033[K%s", line.toUtf8().constData());
        std::fflush(stderr);
        m_drawn = true;
    }

    void clear() {
        if (m_enabled && m_drawn) {
            std::fputs("\r\033[K", stderr);
            std::fflush(stderr);
            m_drawn = false;
        }
    }

private:
    bool m_enabled;
    bool m_drawn = false;
    QElapsedTimer m_clock;
};

} // namespace

int runScanCommand(const QList<QByteArray> &arguments) {
    ScanOptions options;
    if (const auto exitCode = parse(arguments, options))
        return *exitCode;

    ScanConfiguration configuration;
    configuration.minFileSizeBytes = options.minFileSizeBytes;
    configuration.includeHiddenFiles = options.includeHidden;
    configuration.skipSystemDirectories = true;
    configuration.followSymlinks = false;
    configuration.exclusions = options.exclusions;
    configuration.stayOnOneFileSystem = options.oneFileSystem;
    configuration.scanNetworkDrives = options.network;

    FileScannerService scanner;
    ProgressLine progress;
    InterruptWatcher interrupts;
    QObject::connect(&interrupts, &InterruptWatcher::interrupted, &scanner,
                     [&scanner] { scanner.cancel(); });

    QFutureWatcher<ScanOutcome> watcher;
    QEventLoop loop;
    QObject::connect(&watcher, &QFutureWatcher<ScanOutcome>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(scanner.scan(options.path, configuration,
                                   [&progress](qint64 files, qint64 bytes, const QString &path) {
                                       progress.update(files, bytes, path);
                                   }));
    if (!watcher.isFinished())
        loop.exec();
    progress.clear();

    const ScanOutcome outcome = watcher.result();
    if (!outcome) {
        std::fprintf(stderr, "%s\n", terminalText(outcome.error().description()).constData());
        return exitFailure;
    }
    const ScanResult &result = outcome.value();
    switch (options.format) {
    case OutputFormat::json:
        writeJsonReport(stdout, result, scanner.filesScanned(), scanner.bytesScanned());
        break;
    case OutputFormat::csv:
        writeCsvReport(stdout, result);
        break;
    case OutputFormat::print0:
        for (const FileItem &file : result.files) {
            std::fwrite(file.path.constData(), 1, std::size_t(file.path.size()), stdout);
            std::fputc('\0', stdout);
        }
        break;
    case OutputFormat::table:
        writeTableReport(stdout, result);
        // After the table has reached the terminal, so that the line comes last.
        std::fflush(stdout);
        writeSkippedMountLines(stderr, result);
        writeUnreadableLine(stderr, result);
        break;
    }
    std::fflush(stdout);
    return exitSuccess;
}

} // namespace ravelinth::cli
