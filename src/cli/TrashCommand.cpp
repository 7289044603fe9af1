#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/TerminalText.h"
#include "services/TrashService.h"

#include <cstdio>

namespace ravelinth::cli {

namespace {

constexpr const char *trashUsage =
    "Usage: ravelinth trash PATH... [--json]\n"
    "\n"
    "Moves each PATH to the Trash, one after another, and reports each: moved, or why not.\n"
    "Nothing is ever deleted. System folders, the root and the home folder are refused.\n"
    "Exits with 1 when any path could not be moved.\n";

void writePathFields(JsonWriter &json, const char *name, const char *rawName,
                     const QByteArray &path) {
    json.field(name, QString::fromUtf8(path));
    if (!isValidUtf8(path))
        json.field(rawName, QString::fromLatin1(percentEncodeRawPath(path)));
}

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

    const QList<TrashResult> results = TrashService::moveToTrashNow(paths);
    bool anyFailed = false;
    JsonWriter writer(stdout);
    if (json)
        writer.beginArray();
    for (const TrashResult &result : results) {
        const auto *success = std::get_if<TrashSuccess>(&result);
        const auto *failure = std::get_if<TrashFailure>(&result);
        anyFailed = anyFailed || failure;
        if (json) {
            writer.beginObject();
            writePathFields(writer, "path", "rawPath",
                            success ? success->originalPath : failure->path);
            writer.field("success", success != nullptr);
            if (success && success->trashPath)
                writePathFields(writer, "trashPath", "rawTrashPath", *success->trashPath);
            if (failure)
                writer.field("error", failure->error);
            writer.endObject();
        } else if (success) {
            std::printf("moved: %s\n",
                        terminalText(QString::fromUtf8(success->originalPath)).constData());
        } else {
            std::printf("%s\n", terminalText(failure->error).constData());
        }
    }
    if (json) {
        writer.endArray();
        std::fputc('\n', stdout);
    }
    return anyFailed ? exitFailure : exitSuccess;
}

} // namespace ravelinth::cli
