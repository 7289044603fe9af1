#include "cli/Commands.h"
#include "services/FinderService.h"

#include <QEventLoop>

#include <cstdio>

namespace ravelinth::cli {

namespace {

constexpr const char *revealUsage =
    "Usage: ravelinth reveal PATH...\n"
    "\n"
    "Shows the paths, selected, in the desktop's file manager (one request for all of them).\n"
    "When no file manager answers, the folder of the first path is opened instead.\n";

} // namespace

int runRevealCommand(const QList<QByteArray> &arguments) {
    QList<QByteArray> paths;
    for (const QByteArray &argument : arguments) {
        if (argument == "--help" || argument == "-h") {
            std::fputs(revealUsage, stdout);
            return exitSuccess;
        }
        paths.append(argument);
    }
    if (paths.isEmpty()) {
        std::fprintf(stderr, "ravelinth reveal: no path given\n\n%s", revealUsage);
        return exitUsage;
    }

    FinderService &finder = FinderService::shared();
    QEventLoop loop;
    bool answered = false;
    QObject::connect(&finder, &FinderService::revealCompleted, &loop,
                     [&](bool fileManagerAnswered) {
                         answered = fileManagerAnswered;
                         loop.quit();
                     });
    finder.revealInFinder(paths);
    loop.exec();
    if (!answered)
        std::fputs("No file manager answered; opened the folder of the first path instead.\n",
                   stderr);
    return exitSuccess;
}

} // namespace ravelinth::cli
