#include "platform/FolderListing.h"

#include "platform/MountTable.h"
#include "platform/PseudoFileSystems.h"

#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <sys/syscall.h>
#endif

namespace ravelinth::platform {

namespace {

qint64 toMSecs(const struct timespec &time) {
    return qint64(time.tv_sec) * 1000 + qint64(time.tv_nsec) / 1000000;
}

// Adds one name to the folder's listing; "." and ".." are not entries.
void addToListing(Listing &listing, const char *name, unsigned char type) {
    if (name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0)))
        return;
    listing.offsets.push_back(std::uint32_t(listing.names.size()));
    listing.types.push_back(type);
    listing.names.append(name);
    listing.names.push_back('\0');
}

#ifdef Q_OS_LINUX
// The kernel's record; the name follows `d_type` directly.
struct LinuxDirent64 {
    ino64_t d_ino;
    off64_t d_off;
    unsigned short d_reclen;
    unsigned char d_type;
};
constexpr std::size_t direntNameOffset = offsetof(LinuxDirent64, d_type) + 1;
#endif

} // namespace

#ifdef Q_OS_LINUX
bool readListing(int fd, std::vector<char> &buffer, Listing &listing) {
    for (;;) {
        const long read = ::syscall(SYS_getdents64, fd, buffer.data(), buffer.size());
        if (read < 0 && errno == EINTR)
            continue;
        if (read < 0)
            return false;
        if (read == 0)
            return true;
        // Room for every record at once, rather than growing one entry at a time: a record takes
        // at least 24 bytes, and no name is longer than its record.
        const std::size_t most = listing.size() + std::size_t(read) / 24;
        listing.offsets.reserve(most);
        listing.types.reserve(most);
        listing.names.reserve(listing.names.size() + std::size_t(read));
        for (long offset = 0; offset < read;) {
            const auto *entry = reinterpret_cast<const LinuxDirent64 *>(buffer.data() + offset);
            offset += entry->d_reclen;
            addToListing(listing, buffer.data() + offset - entry->d_reclen + direntNameOffset,
                         entry->d_type);
        }
    }
}
#else
bool readListing(int fd, std::vector<char> &, Listing &listing) {
    const int copy = ::dup(fd);
    if (copy < 0)
        return false;
    DIR *dir = ::fdopendir(copy);
    if (!dir) {
        ::close(copy);
        return false;
    }
    while (const dirent *entry = ::readdir(dir)) {
        addToListing(listing, entry->d_name, entry->d_type);
    }
    ::closedir(dir);
    return true;
}
#endif

FrameOpening openFrame(int fd, qsizetype pathLength, std::vector<char> &buffer, Frame &frame,
                       const Frame *parent, const WalkOptions *options, QByteArrayView path) {
    const std::optional<OpenFolderIdentity> identity = identifyOpenFolder(fd);
    if (!identity) {
        ::close(fd);
        return FrameOpening::unreadable;
    }
    bool passedOver = false;
    if (options && parent) {
        const std::vector<FolderIdentity> &pruned = options->prunedFolders;
        passedOver = std::find(pruned.begin(), pruned.end(),
                               FolderIdentity{identity->device, identity->inode}) != pruned.end();
    }
    const bool crossesMount = !parent || parent->mountId != identity->mountId;
    if (!passedOver && crossesMount) {
        passedOver = (!parent || parent->device != identity->device) && isPseudoFileSystem(fd);
        if (!passedOver && parent && options && options->mayEnterMount)
            passedOver = !options->mayEnterMount(path, identity->mountId, identity->device);
    }
    if (passedOver) {
        ::close(fd);
        return FrameOpening::passedOver;
    }
    frame.fd = fd;
    frame.device = identity->device;
    frame.inode = identity->inode;
    frame.mountId = identity->mountId;
    frame.pathLength = pathLength;
    if (!readListing(fd, buffer, frame.listing)) {
        ::close(fd);
        frame.fd = -1;
        return FrameOpening::unreadable;
    }
    return FrameOpening::opened;
}

int openSubfolder(int parentFd, const char *name, bool &unreadable) {
    const int fd = ::openat(parentFd, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    // Gone, or replaced by a link or a file since the listing: nothing there went unread.
    unreadable = fd < 0 && errno != ENOENT && errno != ENOTDIR && errno != ELOOP;
    return fd;
}

void trimDescriptors(std::vector<Frame> &stack) {
    if (stack.size() > descriptorBudget + 1) {
        Frame &far = stack[stack.size() - descriptorBudget - 1];
        if (far.fd >= 0) {
            ::close(far.fd);
            far.fd = -1;
        }
    }
}

std::ptrdiff_t reopenByName(std::vector<Frame> &stack, std::size_t index, const QByteArray &path,
                            bool rootIsSlash) {
    std::size_t level = index;
    while (level > 0 && stack[level].fd < 0)
        --level;
    int fd = stack[level].fd;
    if (fd < 0)
        return std::ptrdiff_t(level);
    bool borrowed = true;
    while (level < index) {
        const Frame &parent = stack[level];
        const Frame &child = stack[level + 1];
        const qsizetype start = parent.pathLength + (rootIsSlash && parent.pathLength == 1 ? 0 : 1);
        const QByteArray name = path.mid(start, child.pathLength - start);
        const int next =
            ::openat(fd, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (!borrowed)
            ::close(fd);
        borrowed = false;
        fd = next;
        ++level;
        struct stat info {};
        if (fd >= 0 && (::fstat(fd, &info) != 0 || info.st_dev != child.device ||
                        info.st_ino != child.inode)) {
            ::close(fd);
            fd = -1;
        }
        if (fd < 0)
            return std::ptrdiff_t(level);
    }
    stack[index].fd = fd;
    return -1;
}

void popFrame(std::vector<Frame> &stack) {
    Frame &top = stack.back();
    if (stack.size() >= 2) {
        Frame &parent = stack[stack.size() - 2];
        if (parent.fd < 0 && top.fd >= 0) {
            const int fd = ::openat(top.fd, "..", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            struct stat info {};
            if (fd >= 0 && ::fstat(fd, &info) == 0 && info.st_dev == parent.device &&
                info.st_ino == parent.inode) {
                parent.fd = fd;
            } else if (fd >= 0) {
                ::close(fd);
            }
        }
    }
    if (top.fd >= 0)
        ::close(top.fd);
    stack.pop_back();
}

void examineEntry(const Frame &frame, std::size_t index, WalkEntry &entry) {
    const unsigned char type = frame.listing.types[index];
    entry.isDirectory = type == DT_DIR;
    entry.hasAttributes = false;
    entry.attributesDenied = false;
    entry.size = 0;
    entry.modifiedMSecs = 0;
    entry.linkCount = 0;
    if (type == DT_DIR) {
        entry.hasAttributes = true;
        return;
    }
    struct stat info {};
    if (::fstatat(frame.fd, frame.listing.name(index), &info, AT_SYMLINK_NOFOLLOW) == 0) {
        entry.hasAttributes = true;
        entry.isDirectory = S_ISDIR(info.st_mode);
        entry.size = qint64(info.st_size);
        entry.modifiedMSecs = toMSecs(info.st_mtim);
        entry.linkCount = std::uint32_t(info.st_nlink);
        entry.device = info.st_dev;
        entry.inode = info.st_ino;
    } else {
        entry.attributesDenied = errno == EACCES;
    }
}

bool takeDeniedFolder(Frame &frame, const QByteArray &path, const WalkEntry &entry,
                      WalkEntry &folder) {
    if (!entry.attributesDenied || frame.deniedReported)
        return false;
    frame.deniedReported = true;
    folder = WalkEntry();
    folder.path = QByteArrayView(path.constData(), frame.pathLength);
    const qsizetype slash = folder.path.lastIndexOf('/');
    folder.name = folder.path.sliced(slash + 1);
    folder.isDirectory = true;
    folder.hasAttributes = true;
    folder.unreadableFolder = true;
    return true;
}

const char *takeNextEntry(Frame &frame, QByteArray &path, bool rootIsSlash,
                          const WalkOptions &options, WalkEntry &entry) {
    const std::size_t index = frame.next++;
    const char *name = frame.listing.name(index);
    if (options.skipHiddenEntries && isHiddenName(name))
        return nullptr;
    const qsizetype nameLength = qsizetype(frame.listing.nameLength(index));

    // By hand: QByteArray::append goes the long way round, through insert, for every entry.
    const qsizetype start = frame.pathLength + (rootIsSlash && frame.pathLength == 1 ? 0 : 1);
    path.resize(start + nameLength);
    char *text = path.data();
    if (start > frame.pathLength)
        text[frame.pathLength] = '/';
    std::memcpy(text + start, name, std::size_t(nameLength));
    entry.path = QByteArrayView(path);
    entry.name = QByteArrayView(name, nameLength);

    if (options.isPruned && options.isPruned(entry.path, entry.name))
        return nullptr;
    examineEntry(frame, index, entry);
    return name;
}

} // namespace ravelinth::platform
