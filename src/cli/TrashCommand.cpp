#include "cli/Commands.h"
#include "cli/InterruptWatcher.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "services/TrashService.h"

#include <QCoreApplication>

#include <cstdio>

namespace ravelinth::cli {

namespace {

constexpr const char *trashUsage =
    "Usage: ravelinth trash PATH... [--json]\n"
    "\n"
    "Moves each PATH to the Trash, one after another, and reports each: moved, or why not.\n"
    "Nothing is ever deleted. Each PATH is resolved as the kernel resolves it (links in its\n"
    "folders followed, a link at its end moved as the link), and the report names what it\n"
    "resolved to. Refused: system folders, the root and the folders directly under it, the\n"
    "home folder and its standard folders, mount points, and anything in a trash folder.\n"
    "\n"
    "Ctrl+C finishes the item being moved, reports what was done, and exits with 130.\n"
    "Exits with 1 when any path could not be moved.\n";

constexpr int exitInterrupted = 130;

} // namespace

int runTrashCommand(const QList<QByteArray> &arguments) {
    bool json = false;
    bool optionsEnded = false;
    QList<QByteArray> paths;
    for (const QByteArray &argument : arguments) {
        if (!optionsEnded && argument == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && (argument == "--help" || argument == "-h")) {
            std::fputs(trashUsage, stdout);
            return exitSuccess;
        } else if (!optionsEnded && argument == "--json") {
            json = true;
        } else if (!optionsEnded && argument.startsWith("--")) {
            std::fprintf(stderr, "ravelinth trash: unknown option '%s'\n\n%s", argument.constData(),
                         trashUsage);
            return exitUsage;
        } else {
            paths.append(argument);
        }
    }
    if (paths.isEmpty()) {
        std::fprintf(stderr, "ravelinth trash: no path given\n\n%s", trashUsage);
        return exitUsage;
    }

    bool interrupted = false;
    InterruptWatcher watcher;
    QObject::connect(&watcher, &InterruptWatcher::interrupted, [&] { interrupted = true; });
    bool anyFailed = false;
    JsonWriter writer(stdout);
    if (json)
        writer.beginArray();
    // One command is one action to undo: `ravelinth restore --last` puts all of it back.
    TrashBatch batch;
    for (const QByteArray &path : std::as_const(paths)) {
        // A Ctrl+C that came during the last move is seen here, between two items.
        QCoreApplication::processEvents();
        if (interrupted)
            break;
        const TrashResult result = batch.move(path);
        const auto *success = std::get_if<TrashSuccess>(&result);
        const auto *failure = std::get_if<TrashFailure>(&result);
        anyFailed = anyFailed || failure;
        if (json) {
            writer.beginObject();
            writer.pathField("path", "rawPath", success ? success->movedPath : failure->path);
            if (success && success->movedPath != success->originalPath)
                writer.pathField("argument", "rawArgument", success->originalPath);
            writer.field("success", success != nullptr);
            if (success && success->trashPath)
                writer.pathField("trashPath", "rawTrashPath", *success->trashPath);
            if (failure)
                writer.field("error", failure->error);
            writer.endObject();
        } else if (success) {
            std::printf("moved: %s\n",
                        terminalText(QString::fromUtf8(success->movedPath)).constData());
        } else {
            std::printf("%s\n", terminalText(failure->error).constData());
        }
        std::fflush(stdout);
        if (success && !success->journalError.isEmpty())
            std::fprintf(stderr, "ravelinth trash: the move of %s cannot be undone: %s\n",
                         terminalText(QString::fromUtf8(success->movedPath)).constData(),
                         terminalText(success->journalError).constData());
    }
    if (json) {
        writer.endArray();
        std::fputc('\n', stdout);
    }
    if (interrupted)
        return exitInterrupted;
    return anyFailed ? exitFailure : exitSuccess;
}

} // namespace ravelinth::cli
