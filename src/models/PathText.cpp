#include "models/PathText.h"

namespace ravelinth {

QByteArray withoutTrailingSlashes(QByteArray path) {
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

bool isSameOrBelow(QByteArrayView path, QByteArrayView folder) {
    if (folder == "/")
        return path.startsWith('/');
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace ravelinth
