#include "cli/Commands.h"

#include <cstdio>

namespace ravelinth::cli {

int runDiskCommand(const QList<QByteArray> &arguments) {
    Q_UNUSED(arguments);
    std::fputs("ravelinth: 'disk' is not available yet\n", stderr);
    return exitFailure;
}

} // namespace ravelinth::cli
