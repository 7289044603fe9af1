#include "platform/ParallelWalkState.h"

#include <algorithm>
#include <fcntl.h>

namespace ravelinth::platform {

namespace {

std::ptrdiff_t lastFolderIn(const Listing &listing) {
    for (std::size_t i = listing.size(); i-- > 0;) {
        if (mayBeFolder(listing.types[i]))
            return std::ptrdiff_t(i);
    }
    return -1;
}

std::ptrdiff_t firstFolderIn(const Listing &listing, std::size_t from, std::size_t end) {
    for (std::size_t i = from; i < std::min(end, listing.size()); ++i) {
        if (mayBeFolder(listing.types[i]))
            return std::ptrdiff_t(i);
    }
    return -1;
}

// Where the parts begin when the entries from `from` to `end` are shared among up to `wanted`
// workers: the first at `from`, each other at a subfolder, the subfolders spread evenly. A large
// listing is copied into every part, so it is cut into fewer.
std::vector<std::size_t> partStarts(const Listing &listing, std::size_t from, std::size_t end,
                                    int wanted) {
    constexpr std::size_t copiedAtMost = 1 << 20;
    const std::size_t bytes = listing.names.size() + listing.size() * 5;
    const std::size_t affordable =
        std::max<std::size_t>(1, copiedAtMost / std::max<std::size_t>(1, bytes));
    std::vector<std::size_t> folders;
    for (std::size_t i = from + 1; i < end; ++i) {
        if (mayBeFolder(listing.types[i]))
            folders.push_back(i);
    }
    const std::size_t parts =
        std::min({std::size_t(std::max(1, wanted)), folders.size() + 1, affordable});
    std::vector<std::size_t> starts{from};
    for (std::size_t part = 1; part < parts; ++part)
        starts.push_back(folders[part * folders.size() / parts]);
    return starts;
}

} // namespace

// Gives the rest of the shallowest folder that still holds subfolders to the waiting workers, in
// as many parts as there are workers waiting: the shallowest, because its rest is likely the
// largest piece of work left, and all of them at once, because on a cold disk this worker may
// not be back from its next read for a while. The folder being listed right now keeps its next
// subfolder, so two workers do not pass one folder back and forth.
void ParallelDirectoryWalker::Private::handOff(int worker, std::vector<Frame> &stack,
                                               std::vector<BranchInfo> &branch,
                                               const QByteArray &path) {
    for (std::size_t level = 0; level < stack.size(); ++level) {
        Frame &frame = stack[level];
        BranchInfo &info = branch[level];
        if (info.lastFolder == -2)
            info.lastFolder = lastFolderIn(frame.listing);
        if (frame.fd < 0 || std::ptrdiff_t(frame.next) > info.lastFolder)
            continue;
        const bool isTop = level + 1 == stack.size();
        std::size_t split = frame.next;
        if (isTop) {
            if (info.nextFolder < std::ptrdiff_t(frame.next)) {
                const std::ptrdiff_t first = firstFolderIn(frame.listing, frame.next, info.end);
                info.nextFolder = first < 0 ? PTRDIFF_MAX : first;
            }
            if (info.nextFolder == PTRDIFF_MAX)
                continue;
            split = std::size_t(info.nextFolder) + 1;
        }
        if (split >= info.end || std::ptrdiff_t(split) > info.lastFolder)
            continue;
        const std::vector<std::size_t> starts = partStarts(
            frame.listing, split, std::min(info.end, frame.listing.size()),
            hungry.load(std::memory_order_relaxed) - pooled.load(std::memory_order_relaxed));

        std::lock_guard lock(mutex);
        const std::size_t parts =
            std::min(starts.size(), std::size_t(std::max(0, idle - int(pool.size()))));
        if (stopped || parts == 0)
            return;
        std::vector<int> fds;
        for (std::size_t part = 0; part < parts; ++part) {
            const int fd = ::fcntl(frame.fd, F_DUPFD_CLOEXEC, 0);
            if (fd < 0)
                break;
            fds.push_back(fd);
        }
        if (fds.empty())
            return;
        std::vector<Segment *> segments;
        for (std::size_t part = 0; part < fds.size(); ++part)
            segments.push_back(&workers[size_t(worker)].segments.emplace_back());
        for (std::size_t part = 0; part < fds.size(); ++part) {
            const bool last = part + 1 == fds.size();
            WalkTask task;
            task.frame.fd = fds[part];
            task.frame.device = frame.device;
            task.frame.inode = frame.inode;
            task.frame.mountId = frame.mountId;
            task.frame.deniedReported = frame.deniedReported;
            task.frame.pathLength = frame.pathLength;
            // A folder deeper down the branch no longer needs its names; the one being listed
            // does, and so does every part but the last.
            if (isTop || !last) {
                task.frame.listing = frame.listing;
            } else {
                task.frame.listing = std::move(frame.listing);
                frame.listing = Listing();
            }
            task.frame.next = starts[part];
            // A copy of its own: `left` may share the buffer this worker goes on writing.
            task.path = QByteArray(path.constData(), frame.pathLength);
            task.listed = true;
            task.segment = segments[part];
            // Each part leads to the next; the last to wherever this folder's part led.
            task.end = last ? info.end : starts[part + 1];
            task.rest = last ? info.rest : segments[part + 1];
            pool.push_back(std::move(task));
            ++pooled;
            ++handOffs;
        }
        info.end = split;
        info.rest = segments.front();
        info.lastFolder = -1;
        // One waiting worker per part: waking them all only has the rest go back to sleep.
        for (std::size_t part = 0; part < segments.size(); ++part)
            wake.notify_one();
        return;
    }
}

} // namespace ravelinth::platform
