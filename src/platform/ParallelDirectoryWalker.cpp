#include "platform/ParallelDirectoryWalker.h"

#include "models/PathText.h"
#include "platform/FolderListing.h"
#include "platform/WalkOrder.h"
#include "platform/WalkerDemand.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <cstring>
#include <deque>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace ravelinth::platform {

namespace {

struct Task {
    Frame frame;
    QByteArray path;
    bool listed = false; // the root is listed by the worker that takes it
    Segment *segment = nullptr;
    // A part of a folder ends where the next part, handed to another worker, begins.
    std::size_t end = SIZE_MAX;
    Segment *rest = nullptr;
};

// What a worker knows of each folder on its branch besides the frame itself.
struct BranchInfo {
    Segment *segment = nullptr;
    bool ownSegment = false; // made by this worker for a subfolder, so it may be dropped again
    std::ptrdiff_t lastFolder = -2; // last listing index that may be a folder; -2: not known yet
    std::ptrdiff_t nextFolder = -1; // first such index at or after `next`, while >= `next`
    // Entries from `end` on were handed to another worker; `rest` is where they go in the order.
    std::size_t end = SIZE_MAX;
    Segment *rest = nullptr;
};

struct Worker {
    std::deque<Segment> segments; // stable addresses
    std::uint32_t emitted = 0;
    std::vector<char> buffer;
    // Listings of folders left, kept for the next folders: a walk meets tens of thousands of
    // folders, and each would otherwise allocate its listing anew.
    std::vector<Listing> spareListings;
    // While the walk adapts its number of workers: on the worker's own thread.
    WalkerStopwatch *stopwatch = nullptr;
};

void recycleListing(Worker &worker, Listing &listing) {
    // A listing that grew large for one huge folder is let go rather than held for the walk, and
    // a deep branch leaves no more spares than the next few folders need: with 32 walkers, what
    // they hold stays within a few megabytes.
    constexpr std::size_t largestKept = 16 * 1024;
    constexpr std::size_t sparesKept = 16;
    if (worker.spareListings.size() >= sparesKept || listing.names.capacity() > largestKept)
        return;
    listing.clear();
    worker.spareListings.push_back(std::move(listing));
}

bool mayBeFolder(unsigned char type) {
    return type == DT_DIR || type == DT_UNKNOWN;
}

} // namespace

struct ParallelDirectoryWalker::Private {
    QByteArray rootPath;
    WalkOptions options;
    int workerCount = 1;
    int rootFd = -1;
    std::vector<Worker> workers;
    Segment *root = nullptr;

    std::mutex mutex;
    std::condition_variable wake;  // for workers let in
    std::condition_variable admit; // for the others
    void wakeEveryone() {
        wake.notify_all();
        admit.notify_all();
    }
    std::vector<Task> pool;
    int idle = 0; // workers let in and waiting for a task
    int busy = 0; // workers running a task
    bool finished = false;
    bool adaptive = false;
    std::unique_ptr<WalkerDemand> demand;
    std::atomic<int> letIn{1};
    int mostLetIn = 1;
    std::atomic<int> hungry{0};
    // pool.size(), for a look without the lock: a worker already has a task waiting for it.
    std::atomic<int> pooled{0};
    std::atomic<bool> stopped{false};
    std::atomic<int> handOffs{0};

    void runTask(int worker, Task task, const Visit &visit);
    void letMoreIn(int wanted);
    void handOff(int worker, std::vector<Frame> &stack, std::vector<BranchInfo> &branch,
                 const QByteArray &path);
    void stop() {
        std::lock_guard lock(mutex);
        stopped = true;
        // Parts nobody will walk still lead to the parts after them, which may have been walked.
        for (Task &task : pool) {
            if (task.rest)
                task.segment->pieces.push_back({task.rest, 0, 0});
            task.rest = nullptr;
        }
        wakeEveryone();
    }
};

ParallelDirectoryWalker::ParallelDirectoryWalker(QByteArray rootPath, WalkOptions options,
                                                 int workerCount, bool adaptive)
    : d(std::make_unique<Private>()) {
    d->adaptive = adaptive;
    d->rootPath = withoutTrailingSlashes(std::move(rootPath));
    d->options = std::move(options);
    d->workerCount = std::max(1, workerCount);
    d->workers.resize(size_t(d->workerCount));
    d->letIn = d->workerCount;
    d->mostLetIn = d->workerCount;
}

ParallelDirectoryWalker::~ParallelDirectoryWalker() {
    if (d->rootFd >= 0)
        ::close(d->rootFd);
    for (Task &task : d->pool) {
        if (task.frame.fd >= 0)
            ::close(task.frame.fd);
    }
}

WalkOpenResult ParallelDirectoryWalker::open() {
    struct stat info {};
    if (::stat(d->rootPath.constData(), &info) != 0)
        return WalkOpenResult::notFound;
    if (!S_ISDIR(info.st_mode))
        return WalkOpenResult::notAFolder;
    const int fd = ::open(d->rootPath.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return WalkOpenResult::failed;
    if (d->adaptive && d->workerCount > 1) {
        const int cores = int(std::max(1u, std::thread::hardware_concurrency()));
        d->demand =
            std::make_unique<WalkerDemand>(d->workerCount, cores, isOnRotatingDisk(d->rootPath));
        d->letIn = d->demand->initial();
        d->mostLetIn = d->letIn;
    }
    d->root = &d->workers[0].segments.emplace_back();
    Task task;
    task.frame.fd = fd;
    task.frame.pathLength = d->rootPath.size();
    task.path = QByteArray(d->rootPath.constData(), d->rootPath.size());
    task.segment = d->root;
    d->pool.push_back(std::move(task));
    d->pooled = 1;
    return WalkOpenResult::ok;
}

int ParallelDirectoryWalker::handOffs() const {
    return d->handOffs;
}

int ParallelDirectoryWalker::workersLetIn() const {
    std::lock_guard lock(d->mutex);
    return d->mostLetIn;
}

void ParallelDirectoryWalker::runWorker(int worker, const Visit &visit) {
    Worker &me = d->workers[size_t(worker)];
    std::optional<WalkerStopwatch> stopwatch;
    if (d->demand)
        me.stopwatch = &stopwatch.emplace(*d->demand);
    for (;;) {
        Task task;
        {
            std::unique_lock lock(d->mutex);
            // Counted among the idle only while let in: the busy hand work only to those.
            bool waiting = false;
            for (;;) {
                const bool letIn = worker < d->letIn.load(std::memory_order_relaxed);
                if (letIn != waiting) {
                    d->idle += letIn ? 1 : -1;
                    d->hungry += letIn ? 1 : -1;
                    waiting = letIn;
                }
                if (d->finished || d->stopped || (letIn && !d->pool.empty()))
                    break;
                // Nobody is walking and nothing is left: the walk is over.
                if (d->busy == 0 && d->pool.empty()) {
                    d->finished = true;
                    d->wakeEveryone();
                    break;
                }
                (letIn ? d->wake : d->admit).wait(lock);
            }
            if (waiting) {
                --d->idle;
                --d->hungry;
            }
            if (d->finished || d->stopped || d->pool.empty())
                break;
            task = std::move(d->pool.back());
            d->pool.pop_back();
            --d->pooled;
            ++d->busy;
        }
        // Only workers that walk need room to list folders in.
        if (me.buffer.empty())
            me.buffer.resize(256 * 1024);
        if (me.stopwatch)
            me.stopwatch->start();
        d->runTask(worker, std::move(task), visit);
        if (me.stopwatch)
            d->letMoreIn(me.stopwatch->lap());
        std::lock_guard lock(d->mutex);
        if (--d->busy == 0 && d->pool.empty())
            d->wakeEveryone();
    }
    me.stopwatch = nullptr;
}

void ParallelDirectoryWalker::Private::letMoreIn(int wanted) {
    if (wanted <= letIn.load(std::memory_order_relaxed))
        return;
    std::lock_guard lock(mutex);
    letIn = wanted;
    mostLetIn = std::max(mostLetIn, wanted);
    admit.notify_all();
}

void ParallelDirectoryWalker::Private::runTask(int worker, Task task, const Visit &visit) {
    Worker &me = workers[size_t(worker)];
    task.segment->worker = std::uint32_t(worker);
    QByteArray path = std::move(task.path);
    const bool rootIsSlash = rootPath == "/";
    std::vector<Frame> stack;
    std::vector<BranchInfo> branch;

    if (task.listed) {
        stack.push_back(std::move(task.frame));
    } else {
        Frame frame;
        if (openFrame(task.frame.fd, path.size(), me.buffer, frame) != FrameOpening::opened)
            return;
        stack.push_back(std::move(frame));
    }
    branch.push_back({task.segment, false});
    branch.back().end = task.end;
    branch.back().rest = task.rest;

    auto pop = [&] {
        const BranchInfo &top = branch.back();
        if (top.rest)
            top.segment->pieces.push_back({top.rest, 0, 0});
        // A subfolder that gave nothing leaves no trace, so idle branches cost no memory.
        if (top.ownSegment && top.segment->pieces.empty() && &me.segments.back() == top.segment) {
            std::vector<Piece> &parent = branch[branch.size() - 2].segment->pieces;
            if (!parent.empty() && parent.back().child == top.segment) {
                parent.pop_back();
                me.segments.pop_back();
            }
        }
        recycleListing(me, stack.back().listing);
        popFrame(stack);
        branch.pop_back();
    };

    WalkEntry entry;
    WalkEntry deniedFolder;
    while (!stack.empty()) {
        if (stopped.load(std::memory_order_relaxed))
            break;
        if (hungry.load(std::memory_order_relaxed) > pooled.load(std::memory_order_relaxed))
            handOff(worker, stack, branch, path);
        if (stack.back().next >= std::min(stack.back().listing.size(), branch.back().end)) {
            pop();
            continue;
        }
        if (stack.back().fd < 0) {
            // As in DirectoryWalker: what lies below a folder moved away ends here.
            const std::ptrdiff_t lost = reopenByName(stack, stack.size() - 1, path, rootIsSlash);
            if (lost >= 0) {
                while (stack.size() > std::size_t(std::max<std::ptrdiff_t>(lost, 1)))
                    pop();
                if (lost == 0)
                    break;
                continue;
            }
        }
        Frame &frame = stack.back();
        const char *name = takeNextEntry(frame, path, rootIsSlash, options, entry);
        if (!name)
            continue;
        if (me.stopwatch)
            letMoreIn(me.stopwatch->count());
        if (takeDeniedFolder(frame, path, entry, deniedFolder) &&
            visit(worker, deniedFolder).emitted)
            noteEmitted(*branch.back().segment, me.emitted++);
        const WalkVisit result = visit(worker, entry);
        if (result.emitted)
            noteEmitted(*branch.back().segment, me.emitted++);
        if (result.decision == WalkDecision::stop) {
            stop();
            break;
        }
        if (entry.isDirectory && result.decision == WalkDecision::proceed) {
            if (isStopRequested(options)) {
                stop();
                break;
            }
            if (options.mayOpenFolder && !options.mayOpenFolder(entry.path))
                continue;
            bool unreadable = false;
            const int fd = openSubfolder(frame.fd, name, unreadable);
            Frame child;
            if (!me.spareListings.empty()) {
                child.listing = std::move(me.spareListings.back());
                me.spareListings.pop_back();
            }
            const FrameOpening opening =
                fd >= 0 ? openFrame(fd, path.size(), me.buffer, child, &frame, &options, path)
                        : FrameOpening::passedOver;
            if (unreadable || opening == FrameOpening::unreadable) {
                // Goes in the order where the folder's own contents would have been.
                entry.unreadableFolder = true;
                if (visit(worker, entry).emitted)
                    noteEmitted(*branch.back().segment, me.emitted++);
                entry.unreadableFolder = false;
            }
            if (opening != FrameOpening::opened) {
                recycleListing(me, child.listing);
            } else {
                Segment &segment = me.segments.emplace_back();
                segment.worker = std::uint32_t(worker);
                branch.back().segment->pieces.push_back({&segment, 0, 0});
                stack.push_back(std::move(child));
                branch.push_back({&segment, true});
                trimDescriptors(stack);
            }
        }
    }
    // After a stop: tails handed away still hold what their workers emitted.
    while (!stack.empty()) {
        if (branch.back().rest)
            branch.back().segment->pieces.push_back({branch.back().rest, 0, 0});
        popFrame(stack);
        branch.pop_back();
    }
}

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
            Task task;
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

std::vector<EmittedRun> ParallelDirectoryWalker::emittedInWalkOrder() const {
    return d->root ? runsInWalkOrder(*d->root) : std::vector<EmittedRun>();
}

} // namespace ravelinth::platform
