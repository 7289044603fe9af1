#pragma once

#include <QByteArray>
#include <QList>

namespace ravelinth::cli {

// True when argv names a command-line command (or --help / --version) rather than asking
// for the window.
bool isCommandLineInvocation(int argc, char **argv);

// Runs the command named by argv[1]. Exit codes: 0 success, 1 the operation failed or its
// output could not be written, 2 a usage error.
int runCommandLine(int argc, char **argv);

} // namespace ravelinth::cli
