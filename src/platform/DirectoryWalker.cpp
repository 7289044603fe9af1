#include "platform/DirectoryWalker.h"

#include "models/PathText.h"
#include "platform/FolderListing.h"

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

struct DirectoryWalker::Private {
    QByteArray rootPath;
    WalkOptions options;
    int rootFd = -1;
    std::vector<char> buffer = std::vector<char>(256 * 1024);
};

DirectoryWalker::DirectoryWalker(QByteArray rootPath, WalkOptions options)
    : d(std::make_unique<Private>()) {
    // "/a/b/" walks as "/a/b", so that entries read "/a/b/c"; "/" stays "/".
    d->rootPath = withoutTrailingSlashes(std::move(rootPath));
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

    // `parent` lies in the stack, so it is used up before the new frame goes in.
    auto pushFolder = [&](int fd, const Frame *parent, const WalkOptions *options) {
        Frame frame;
        const FrameOpening opening =
            openFrame(fd, path.size(), d->buffer, frame, parent, options, path);
        if (opening == FrameOpening::opened) {
            stack.push_back(std::move(frame));
            trimDescriptors(stack);
        }
        return opening;
    };

    // The root is walked even when it is one of the pruned folders: it was asked for by name.
    pushFolder(d->rootFd, nullptr, nullptr);
    d->rootFd = -1; // now owned by the stack

    WalkEntry entry;
    WalkEntry deniedFolder;
    while (!stack.empty()) {
        if (stack.back().next >= stack.back().listing.size()) {
            popFrame(stack);
            continue;
        }
        if (stack.back().fd < 0) {
            // Everything from the folder that was moved away downwards ends here; its ancestors
            // and their other entries are still walked.
            const std::ptrdiff_t lost = reopenByName(stack, stack.size() - 1, path, rootIsSlash);
            if (lost >= 0) {
                while (stack.size() > std::size_t(lost))
                    popFrame(stack);
                continue;
            }
        }
        Frame &frame = stack.back();
        const char *name = takeNextEntry(frame, path, rootIsSlash, d->options, entry);
        if (!name)
            continue;
        if (takeDeniedFolder(frame, path, entry, deniedFolder))
            visit(deniedFolder);
        const WalkDecision decision = visit(entry);
        if (decision == WalkDecision::stop)
            break;
        if (entry.isDirectory && decision == WalkDecision::proceed) {
            if (isStopRequested(d->options))
                break;
            if (d->options.mayOpenFolder && !d->options.mayOpenFolder(entry.path))
                continue;
            bool unreadable = false;
            const int fd = openSubfolder(frame.fd, name, unreadable);
            if (fd >= 0) {
                unreadable = pushFolder(fd, &frame, &d->options) == FrameOpening::unreadable;
            }
            if (unreadable) {
                entry.unreadableFolder = true;
                visit(entry);
                entry.unreadableFolder = false;
            }
        }
    }
    while (!stack.empty())
        popFrame(stack);
}

bool pathExists(const QByteArray &path) {
    struct stat info {};
    return ::stat(path.constData(), &info) == 0;
}

} // namespace ravelinth::platform
