#include "cli/CommandFutures.h"
#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "models/ByteCountFormatter.h"
#include "services/DiskInfoService.h"

#include <cstdio>

namespace ravelinth::cli {

namespace {

constexpr const char *diskUsage =
    "Usage: ravelinth disk [--binary] [--json]\n"
    "\n"
    "Shows the capacity and free space of the boot volume, read as the window reads it: the\n"
    "storage report first, the file-system attributes of the home folder when that fails.\n"
    "\n"
    "  --binary  show sizes in 1024-based units (KiB, MiB, GiB)\n"
    "  --json    print the figures as one JSON object\n";

} // namespace

int runDiskCommand(const QList<QByteArray> &arguments) {
    bool json = false;
    for (const QByteArray &argument : arguments) {
        if (argument == "--help" || argument == "-h") {
            std::fputs(diskUsage, stdout);
            return exitSuccess;
        }
        if (argument == "--binary") {
            setDefaultByteUnits(ByteUnits::binary);
        } else if (argument == "--json") {
            json = true;
        } else {
            std::fprintf(stderr, "ravelinth disk: unknown argument '%s'\n\n%s",
                         argument.constData(), diskUsage);
            return exitUsage;
        }
    }

    DiskInfoService service;
    DiskInfoOutcome outcome = awaitResult(service.getSystemProfilerDiskInfo());
    if (!outcome)
        outcome = awaitResult(service.getFileManagerDiskInfo());
    if (!outcome) {
        std::fprintf(stderr, "%s\n", outcome.error().description().toUtf8().constData());
        return exitFailure;
    }

    const DiskInfo &info = *outcome;
    if (json) {
        JsonWriter writer(stdout);
        writer.beginObject();
        writer.field("name", info.name);
        writer.field("mountPoint", info.mountPoint);
        writer.field("totalBytes", info.totalBytes);
        writer.field("usedBytes", info.usedBytes);
        writer.field("freeBytes", info.freeBytes);
        writer.endObject();
        std::fputc('\n', stdout);
        return exitSuccess;
    }
    // The name is the volume's label, which whoever formatted the disk chose: it must not be
    // able to move the cursor or retitle the terminal.
    const auto line = [](const char *label, const QString &value) {
        std::printf("%-12s %s\n", label, terminalText(value).constData());
    };
    const auto bytes = [](qint64 count) {
        return formatByteCount(count) + u" ("_qs + QString::number(count) + u" bytes)"_qs;
    };
    line("Name:", info.name);
    line("Mount point:", info.mountPoint);
    line("Total:", bytes(info.totalBytes));
    line("Used:", bytes(info.usedBytes));
    line("Free:", bytes(info.freeBytes));
    return exitSuccess;
}

} // namespace ravelinth::cli
