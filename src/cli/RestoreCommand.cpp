#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "platform/EntryResolution.h"
#include "services/MoveJournal.h"
#include "services/TrashUndo.h"

#include <cstdio>

namespace ravelinth::cli {

namespace {

constexpr const char *restoreUsage =
    "Usage: ravelinth restore --last [--json]\n"
    "       ravelinth restore PATH... [--json]\n"
    "\n"
    "Puts items back from the Trash where they were, and reports each: restored, or why not.\n"
    "Nothing is ever replaced: an item whose place is taken again stays in the Trash. Missing\n"
    "folders above it are made again.\n"
    "\n"
    "  --last  the last move to the Trash that Ravelinth made (a whole 'ravelinth trash'\n"
    "          command, or one move in the window) and has not undone yet\n"
    "  PATH    the newest item in the Trash that was moved from PATH, by any program\n"
    "  --json  print one JSON object per item, as 'ravelinth trash --json' does\n"
    "\n"
    "Exits with 1 when any item could not be restored, or when there is nothing to undo.\n";

void report(JsonWriter *json, const RestoreResult &result) {
    if (json) {
        json->beginObject();
        json->pathField("path", "rawPath", result.path);
        json->field("success", result.restored);
        if (!result.trashPath.isEmpty())
            json->pathField("trashPath", "rawTrashPath", result.trashPath);
        if (!result.restored)
            json->field("error", result.error);
        json->endObject();
    } else if (result.restored) {
        std::printf("restored: %s\n", terminalText(QString::fromUtf8(result.path)).constData());
    } else {
        std::printf("%s\n", terminalText(result.error).constData());
    }
    std::fflush(stdout);
}

} // namespace

int runRestoreCommand(const QList<QByteArray> &arguments) {
    bool json = false;
    bool last = false;
    bool optionsEnded = false;
    QList<QByteArray> paths;
    for (const QByteArray &argument : arguments) {
        if (!optionsEnded && argument == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && (argument == "--help" || argument == "-h")) {
            std::fputs(restoreUsage, stdout);
            return exitSuccess;
        } else if (!optionsEnded && argument == "--json") {
            json = true;
        } else if (!optionsEnded && argument == "--last") {
            last = true;
        } else if (!optionsEnded && argument.startsWith("--")) {
            std::fprintf(stderr, "ravelinth restore: unknown option '%s'\n\n%s",
                         argument.constData(), restoreUsage);
            return exitUsage;
        } else {
            paths.append(argument);
        }
    }
    if (last == !paths.isEmpty()) {
        std::fprintf(stderr, "ravelinth restore: give either --last or one or more paths\n\n%s",
                     restoreUsage);
        return exitUsage;
    }

    QList<RestoreResult> results;
    if (last) {
        MoveJournal journal;
        const std::optional<UndoOutcome> outcome = trashundo::undoLatestBatchNow(journal);
        if (!outcome) {
            std::fputs("ravelinth restore: there is no move to the Trash to undo\n", stderr);
            return exitFailure;
        }
        results = outcome->results;
    }
    JsonWriter writer(stdout);
    if (json)
        writer.beginArray();
    bool anyFailed = false;
    const auto show = [&](const RestoreResult &result) {
        anyFailed = anyFailed || !result.restored;
        report(json ? &writer : nullptr, result);
    };
    for (const RestoreResult &result : std::as_const(results))
        show(result);
    for (const QByteArray &path : std::as_const(paths)) {
        const std::optional<QByteArray> place = platform::placeOf(path);
        if (!place) {
            show({path,
                  {},
                  false,
                  u"Cannot restore '"_qs + QString::fromUtf8(path) +
                      u"': not a path an item can be put back at"_qs,
                  0});
            continue;
        }
        show(trashundo::restoreNewestNow(*place));
    }
    if (json) {
        writer.endArray();
        std::fputc('\n', stdout);
    }
    return anyFailed ? exitFailure : exitSuccess;
}

} // namespace ravelinth::cli
