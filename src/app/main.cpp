#include "Application.h"
#include "cli/CommandLine.h"

int main(int argc, char **argv) {
    if (ravelinth::cli::isCommandLineInvocation(argc, argv))
        return ravelinth::cli::runCommandLine(argc, argv);
    return ravelinth::app::runApplication(argc, argv);
}
