#include "platform/WorkingFolder.h"

#include <QList>

#include <algorithm>
#include <climits>
#include <unistd.h>
#include <vector>

namespace ravelinth::platform {

namespace {

std::optional<QByteArray> workingFolder() {
    std::vector<char> buffer(PATH_MAX);
    if (!::getcwd(buffer.data(), buffer.size()) || buffer[0] != '/')
        return std::nullopt;
    return QByteArray(buffer.data());
}

} // namespace

std::optional<QByteArray> absolutePath(const QByteArray &path) {
    if (path.isEmpty() || path.startsWith('/'))
        return path;
    std::optional<QByteArray> folder = workingFolder();
    if (!folder)
        return std::nullopt;
    QByteArray result = std::move(*folder);
    bool leading = true;
    for (const QByteArray &component : path.split('/')) {
        if (component.isEmpty() || component == ".")
            continue;
        if (leading && component == "..") {
            result.truncate(std::max<qsizetype>(result.lastIndexOf('/'), 1));
            continue;
        }
        leading = false;
        if (!result.endsWith('/'))
            result.append('/');
        result.append(component);
    }
    return result;
}

} // namespace ravelinth::platform
