#include "services/ScanPruning.h"

#include "platform/StandardLocations.h"
#include "services/FileScannerService.h"

#include <QFile>

namespace ravelinth {

namespace {

// ".Trash-1000": the per-user trash at the top of a removable or second file system.
bool isNumberedTrashFolder(QByteArrayView name) {
    static constexpr QByteArrayView prefix(".Trash-");
    if (!name.startsWith(prefix) || name.size() == prefix.size())
        return false;
    for (char c : name.sliced(prefix.size())) {
        if (c < '0' || c > '9')
            return false;
    }
    return true;
}

} // namespace

std::function<bool(QByteArrayView, QByteArrayView)> makeScanPruning(bool skipSystemDirectories) {
    QList<QByteArray> names = FileScannerService::alwaysSkippedNames();
    QByteArray homeTrash;
    if (skipSystemDirectories) {
        names += FileScannerService::systemSkippedNames();
        homeTrash = QFile::encodeName(platform::homeTrashDirectory());
    }
    return [names, homeTrash, skipSystemDirectories](QByteArrayView path, QByteArrayView name) {
        for (const QByteArray &skipped : names) {
            if (name == skipped)
                return true;
        }
        if (!skipSystemDirectories)
            return false;
        return isNumberedTrashFolder(name) || (!homeTrash.isEmpty() && path == homeTrash);
    };
}

} // namespace ravelinth
