#include "services/ScanPruning.h"

#include "platform/StandardLocations.h"
#include "services/FileScannerService.h"

#include <QFile>

#include <bitset>
#include <memory>
#include <sys/stat.h>

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

void addScanPruning(platform::WalkOptions &options, bool skipSystemDirectories) {
    QList<QByteArray> names = FileScannerService::alwaysSkippedNames();
    if (skipSystemDirectories) {
        names += FileScannerService::systemSkippedNames();
        // By device and inode: the trash's path as XDG_DATA_HOME spells it may hold "//", "/./",
        // a link or a trailing slash, and none of those changes the folder.
        struct stat info {};
        const QByteArray homeTrash = QFile::encodeName(platform::homeTrashDirectory());
        if (::stat(homeTrash.constData(), &info) == 0 && S_ISDIR(info.st_mode))
            options.prunedFolders.push_back({info.st_dev, info.st_ino});
    }
    // Every entry passes here: most are turned away on their first byte.
    std::bitset<256> firstBytes;
    for (const QByteArray &skipped : std::as_const(names))
        firstBytes.set(static_cast<unsigned char>(skipped.front()));
    if (skipSystemDirectories)
        firstBytes.set('.');
    options.isPruned = [names, skipSystemDirectories, firstBytes](QByteArrayView,
                                                                  QByteArrayView name) {
        if (name.isEmpty() || !firstBytes.test(static_cast<unsigned char>(name.front())))
            return false;
        for (const QByteArray &skipped : names) {
            if (name == skipped)
                return true;
        }
        return skipSystemDirectories && isNumberedTrashFolder(name);
    };
}

void addScanExclusions(platform::WalkOptions &options, const ScanExclusions &exclusions,
                       const QByteArray &root) {
    for (const QByteArray &folder : exclusions.folders) {
        struct stat info {};
        if (::stat(folder.constData(), &info) == 0 && S_ISDIR(info.st_mode))
            options.prunedFolders.push_back({info.st_dev, info.st_ino});
    }
    if (exclusions.patterns.isEmpty())
        return;
    auto patterns = std::make_shared<const ExclusionPatterns>(exclusions.patterns, root);
    options.isPruned = [patterns, pruned = std::move(options.isPruned)](QByteArrayView path,
                                                                        QByteArrayView name) {
        return (pruned && pruned(path, name)) || patterns->excludes(path, name);
    };
}

} // namespace ravelinth
