#include "viewmodels/TrashRequest.h"

#include "models/CheckedMath.h"

namespace ravelinth {

qint64 TrashRequest::totalSize() const {
    qint64 total = 0;
    for (const FileItem &file : files)
        total = checkedAdd(total, file.size);
    return total;
}

int TrashRequest::linkedCount() const {
    int count = 0;
    for (const FileItem &file : files)
        count += file.linkCount > 1 ? 1 : 0;
    return count;
}

QStringList TrashRequest::names(qsizetype limit) const {
    QStringList shown;
    for (qsizetype i = 0; i < files.size() && i < limit; ++i)
        shown.append(files[i].displayName());
    return shown;
}

} // namespace ravelinth
