#include "cli/CommandLine.h"

#include <QDir>

int main(int argc, char **argv) {
    if (ravelinth::cli::isCommandLineInvocation(argc, argv))
        return ravelinth::cli::runCommandLine(argc, argv);
    // Until the window exists, starting the program scans the home folder.
    QByteArray home = QDir::homePath().toLocal8Bit();
    char scan[] = "scan";
    char *scanArgv[] = {argv[0], scan, home.data(), nullptr};
    return ravelinth::cli::runCommandLine(3, scanArgv);
}
