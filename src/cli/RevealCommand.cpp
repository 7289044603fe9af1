#include "cli/Commands.h"

#include <cstdio>

namespace ravelinth::cli {

int runRevealCommand(const QList<QByteArray> &arguments) {
    Q_UNUSED(arguments);
    std::fputs("ravelinth: 'reveal' is not available yet\n", stderr);
    return exitFailure;
}

} // namespace ravelinth::cli
