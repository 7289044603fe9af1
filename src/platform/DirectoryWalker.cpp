#include "platform/DirectoryWalker.h"

#include "platform/PseudoFileSystems.h"

#include <QList>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#ifdef Q_OS_LINUX
#include <sys/syscall.h>
#endif

namespace ravelinth::platform {

namespace {

// Open descriptors kept along the current branch. Deeper folders close their far ancestors and
// come back to them through "..", checked against the device and inode recorded on the way down.
constexpr std::size_t descriptorBudget = 96;

qint64 toMSecs(const struct timespec &time) {
    return qint64(time.tv_sec) * 1000 + qint64(time.tv_nsec) / 1000000;
}

// A folder's entries as read in one go, so the descriptor is needed only to examine them.
struct Listing {
    std::string names; // each name followed by a NUL
    std::vector<std::uint32_t> offsets;
    std::vector<unsigned char> types;
};

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

bool readListing(int fd, std::vector<char> &buffer, Listing &listing) {
    for (;;) {
        const long read = ::syscall(SYS_getdents64, fd, buffer.data(), buffer.size());
        if (read < 0 && errno == EINTR)
            continue;
        if (read < 0)
            return false;
        if (read == 0)
            return true;
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

struct Frame {
    int fd = -1;
    dev_t device = 0;
    ino_t inode = 0;
    qsizetype pathLength = 0; // length of this folder's path in the shared path buffer
    Listing listing;
    std::size_t next = 0;
};

} // namespace

struct DirectoryWalker::Private {
    QByteArray rootPath;
    WalkOptions options;
    int rootFd = -1;
    std::vector<char> buffer = std::vector<char>(256 * 1024);
};

DirectoryWalker::DirectoryWalker(QByteArray rootPath, WalkOptions options)
    : d(std::make_unique<Private>()) {
    // "/a/b/" walks as "/a/b", so that entries read "/a/b/c"; "/" stays "/".
    while (rootPath.size() > 1 && rootPath.endsWith('/'))
        rootPath.chop(1);
    d->rootPath = std::move(rootPath);
    d->options = std::move(options);
}

DirectoryWalker::~DirectoryWalker() {
    if (d->rootFd >= 0)
        ::close(d->rootFd);
}

WalkOpenResult DirectoryWalker::open() {
    struct stat info {};
    if (::stat(d->rootPath.constData(), &info) != 0)
        return WalkOpenResult::notFound;
    if (!S_ISDIR(info.st_mode))
        return WalkOpenResult::notAFolder;
    d->rootFd = ::open(d->rootPath.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return d->rootFd >= 0 ? WalkOpenResult::ok : WalkOpenResult::failed;
}

void DirectoryWalker::walk(const std::function<WalkDecision(const WalkEntry &)> &visit) {
    if (d->rootFd < 0)
        return;

    QByteArray path = d->rootPath;
    const bool rootIsSlash = path == "/";
    std::vector<Frame> stack;

    auto pushFolder = [&](int fd, qsizetype pathLength) {
        struct stat info {};
        if (::fstat(fd, &info) != 0 || isPseudoFileSystem(fd)) {
            ::close(fd);
            return;
        }
        Frame frame;
        frame.fd = fd;
        frame.device = info.st_dev;
        frame.inode = info.st_ino;
        frame.pathLength = pathLength;
        if (!readListing(fd, d->buffer, frame.listing)) {
            ::close(fd);
            return;
        }
        stack.push_back(std::move(frame));
        // Keep the descriptors of the nearest ancestors only.
        if (stack.size() > descriptorBudget) {
            Frame &far = stack[stack.size() - descriptorBudget - 1];
            if (far.fd >= 0) {
                ::close(far.fd);
                far.fd = -1;
            }
        }
    };

    // Before leaving a folder, give its parent a descriptor again if it lost it.
    auto popFolder = [&] {
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
    };

    // Gives the folder at `index` a descriptor again when ".." could not (a folder between it
    // and its child was moved meanwhile): walks down by name from the nearest ancestor that is
    // still open, or from the root's path, checking each step against the identity recorded on
    // the way down. Returns the depth at which the way was lost, or -1 when the folder is back.
    auto reopenByName = [&](std::size_t index) -> std::ptrdiff_t {
        std::size_t level = index;
        while (level > 0 && stack[level].fd < 0)
            --level;
        int fd = stack[level].fd;
        bool borrowed = fd >= 0;
        if (fd < 0) {
            fd = ::open(d->rootPath.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            struct stat info {};
            if (fd >= 0 && (::fstat(fd, &info) != 0 || info.st_dev != stack[0].device ||
                            info.st_ino != stack[0].inode)) {
                ::close(fd);
                fd = -1;
            }
            if (fd < 0)
                return 0;
        }
        while (level < index) {
            const Frame &parent = stack[level];
            const Frame &child = stack[level + 1];
            const qsizetype start = parent.pathLength + (rootIsSlash && level == 0 ? 0 : 1);
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
    };

    pushFolder(d->rootFd, path.size());
    d->rootFd = -1; // now owned by the stack

    WalkEntry entry;
    bool stopped = false;
    while (!stack.empty() && !stopped) {
        if (stack.back().next >= stack.back().listing.offsets.size()) {
            popFolder();
            continue;
        }
        if (stack.back().fd < 0) {
            // Everything from the folder that was moved away downwards ends here; its
            // ancestors and their other entries are still walked.
            const std::ptrdiff_t lost = reopenByName(stack.size() - 1);
            if (lost >= 0) {
                while (stack.size() > std::size_t(lost))
                    popFolder();
                continue;
            }
        }
        Frame &frame = stack.back();
        const std::size_t index = frame.next++;
        const char *name = frame.listing.names.data() + frame.listing.offsets[index];
        const qsizetype nameLength = qsizetype(std::strlen(name));
        if (d->options.skipHiddenEntries && name[0] == '.')
            continue;

        path.truncate(frame.pathLength);
        if (!(rootIsSlash && frame.pathLength == 1))
            path.append('/');
        path.append(name, nameLength);
        entry.path = QByteArrayView(path);
        entry.name = QByteArrayView(name, nameLength);

        if (d->options.isPruned && d->options.isPruned(entry.path, entry.name))
            continue;

        const unsigned char type = frame.listing.types[index];
        entry.isDirectory = type == DT_DIR;
        entry.hasAttributes = false;
        entry.size = 0;
        entry.modifiedMSecs = 0;
        if (type != DT_DIR) {
            struct stat info {};
            if (::fstatat(frame.fd, name, &info, AT_SYMLINK_NOFOLLOW) == 0) {
                entry.hasAttributes = true;
                entry.isDirectory = S_ISDIR(info.st_mode);
                entry.size = qint64(info.st_size);
                entry.modifiedMSecs = toMSecs(info.st_mtim);
            }
        } else {
            entry.hasAttributes = true;
        }

        const WalkDecision decision = visit(entry);
        if (decision == WalkDecision::stop) {
            stopped = true;
            break;
        }
        if (entry.isDirectory && decision == WalkDecision::proceed) {
            const int fd =
                ::openat(frame.fd, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (fd >= 0)
                pushFolder(fd, path.size());
        }
    }
    while (!stack.empty())
        popFolder();
}

bool pathExists(const QByteArray &path) {
    struct stat info {};
    return ::stat(path.constData(), &info) == 0;
}

} // namespace ravelinth::platform
