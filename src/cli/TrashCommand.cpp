#include "cli/Commands.h"

#include <cstdio>

namespace ravelinth::cli {

int runTrashCommand(const QList<QByteArray> &arguments) {
    Q_UNUSED(arguments);
    std::fputs("ravelinth: 'trash' is not available yet\n", stderr);
    return exitFailure;
}

} // namespace ravelinth::cli
