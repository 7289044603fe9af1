#include "cli/CommandLine.h"

#include "cli/Commands.h"
#include "platform/StandardOutput.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace ravelinth::cli {

namespace {

struct Command {
    const char *name;
    int (*run)(const QList<QByteArray> &);
    const char *synopsis;
};

constexpr Command commands[] = {
    {"scan", runScanCommand,
     "scan PATH [--min-size-mb N] [--hidden] [--binary] [--json | --csv | --print0]"},
    {"disk", runDiskCommand, "disk [--binary] [--json]"},
    {"trash", runTrashCommand, "trash PATH... [--json]"},
    {"restore", runRestoreCommand, "restore --last | PATH... [--json]"},
    {"reveal", runRevealCommand, "reveal PATH..."},
};

void printUsage(FILE *stream) {
    std::fputs("Ravelinth finds the large files filling a disk and moves the ones you pick to the "
               "Trash.\n\nUsage:\n  ravelinth                 open the window\n",
               stream);
    for (const Command &command : commands)
        std::fprintf(stream, "  ravelinth %s\n", command.synopsis);
    std::fputs("  ravelinth --help | --version\n\nRun 'ravelinth COMMAND --help' for details.\n",
               stream);
}

int runCommand(int argc, char **argv) {
    const char *first = argv[1];
    if (std::strcmp(first, "--help") == 0 || std::strcmp(first, "-h") == 0) {
        printUsage(stdout);
        return exitSuccess;
    }
    if (std::strcmp(first, "--version") == 0) {
        std::printf("ravelinth %s\n", RAVELINTH_VERSION);
        return exitSuccess;
    }
    for (const Command &command : commands) {
        if (std::strcmp(first, command.name) != 0)
            continue;
        int appArgc = 1;
        QCoreApplication app(appArgc, argv);
        QList<QByteArray> arguments;
        for (int i = 2; i < argc; ++i)
            arguments.append(QByteArray(argv[i]));
        return command.run(arguments);
    }
    std::fprintf(stderr, "ravelinth: unknown command '%s'\n\n", first);
    printUsage(stderr);
    return exitUsage;
}

// A listing cut short by a full disk or a failing device must not pass for the whole of it: a
// script reading our status would otherwise go on with half the paths.
int checkedOutput(int status) {
    errno = 0;
    const bool flushed = std::fflush(stdout) == 0;
    int error = platform::standardOutputError();
    if (error == 0 && !flushed)
        error = errno;
    if (error == 0 && !std::ferror(stdout))
        return status;
    if (error != 0)
        std::fprintf(stderr, "ravelinth: error writing output: %s\n", std::strerror(error));
    else
        std::fputs("ravelinth: error writing output\n", stderr);
    return status == exitSuccess ? exitFailure : status;
}

} // namespace

bool isCommandLineInvocation(int argc, char **argv) {
    if (argc < 2)
        return false;
    const char *first = argv[1];
    if (std::strcmp(first, "--help") == 0 || std::strcmp(first, "-h") == 0 ||
        std::strcmp(first, "--version") == 0)
        return true;
    for (const Command &command : commands) {
        if (std::strcmp(first, command.name) == 0)
            return true;
    }
    // Anything else that is not a Qt option is a mistyped command, answered with usage.
    return first[0] != '-';
}

int runCommandLine(int argc, char **argv) {
    platform::rememberStandardOutputErrors();
    return checkedOutput(runCommand(argc, argv));
}

} // namespace ravelinth::cli
