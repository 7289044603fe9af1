#include "cli/Commands.h"

#include <cstdio>

namespace ravelinth::cli {

int runScanCommand(const QList<QByteArray> &arguments) {
    Q_UNUSED(arguments);
    std::fputs("ravelinth: 'scan' is not available yet\n", stderr);
    return exitFailure;
}

} // namespace ravelinth::cli
