#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <functional>
#include <memory>
#include <sys/types.h>
#include <vector>

namespace ravelinth::platform {

// One entry met by the walk. `path` and `name` point into the walker's buffers and are valid
// only during the callback.
struct WalkEntry {
    QByteArrayView path;
    QByteArrayView name;
    bool isDirectory = false;
    bool hasAttributes = false;    // false when the entry vanished or could not be examined
    bool attributesDenied = false; // not examined for want of permission on its folder
    qint64 size = 0;               // apparent size (a link's own size; links are never followed)
    qint64 modifiedMSecs = 0;
    // Known for an examined entry that is not a folder: its data is the same for every name with
    // this device and inode.
    std::uint32_t linkCount = 0;
    dev_t device = 0;
    ino_t inode = 0;
    // Set on a second visit to a folder entry that could not be opened or listed; that visit's
    // decision is not consulted.
    bool unreadableFolder = false;
};

enum class WalkDecision { proceed, skipDescendants, stop };

// What a folder is, whatever path reaches it.
struct FolderIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const FolderIdentity &) const = default;
};

struct WalkOptions {
    bool skipHiddenEntries = false;
    // Consulted before an entry is examined; true prunes the entry and everything below it.
    std::function<bool(QByteArrayView path, QByteArrayView name)> isPruned;
    // Folders never entered below the root, however the walk reaches them: a path compared as
    // text misses the same folder behind a link, a doubled slash or a "/./".
    std::vector<FolderIdentity> prunedFolders;
    // Asked before the walk enters a folder seen through another mount than the folder holding
    // it (another file system, or a bind mount of some folder); false passes it over. Called
    // concurrently by a parallel walk.
    std::function<bool(QByteArrayView path, std::uint64_t mountId, dev_t device)> mayEnterMount;
    // Asked, when set, before the walk even opens a folder: false passes it over unopened. What a
    // network mount would answer to the opening may be nothing at all, for minutes.
    std::function<bool(QByteArrayView path)> mayOpenFolder;
    // Asked before every folder the walk would open; once it answers true the walk ends as if a
    // visit had said stop. A tree of empty folders gives no other moment to notice a stop.
    std::function<bool()> isStopRequested;
};

enum class WalkOpenResult { ok, notFound, notAFolder, failed };

// A depth-first, pre-order walk of a folder tree: a folder's contents come right after the
// folder, in the order the file system lists them. Every call is relative to an open folder
// descriptor, so paths longer than PATH_MAX work; there is no recursion, and the number of open
// descriptors stays bounded however deep the tree goes. Pseudo file systems (proc, sysfs, ...)
// are never entered; entries that vanish are passed over, and a folder that cannot be opened or
// listed is visited once more with `unreadableFolder` set. So is a folder that can be listed but
// not entered, whose entries cannot be examined: once, at the first entry that could not be.
class DirectoryWalker {
public:
    explicit DirectoryWalker(QByteArray rootPath, WalkOptions options = {});
    ~DirectoryWalker();
    DirectoryWalker(const DirectoryWalker &) = delete;
    DirectoryWalker &operator=(const DirectoryWalker &) = delete;

    // Resolves the root (a link to a folder walks that folder).
    WalkOpenResult open();
    // Calls `visit` for every entry below the root until the walk ends or `visit` says stop.
    void walk(const std::function<WalkDecision(const WalkEntry &)> &visit);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

// True when something exists at `path` (links followed, as an existence test does).
bool pathExists(const QByteArray &path);

} // namespace ravelinth::platform
