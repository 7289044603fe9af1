#include "platform/ParallelDirectoryWalker.h"

#include "models/PathText.h"
#include "platform/ParallelWalkState.h"

#include <algorithm>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace ravelinth::platform {

namespace {

void recycleListing(WalkWorker &worker, Listing &listing) {
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

} // namespace

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
    for (WalkTask &task : d->pool) {
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
    WalkTask task;
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
    WalkWorker &me = d->workers[size_t(worker)];
    std::optional<WalkerStopwatch> stopwatch;
    if (d->demand)
        me.stopwatch = &stopwatch.emplace(*d->demand);
    for (;;) {
        WalkTask task;
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

void ParallelDirectoryWalker::Private::runTask(int worker, WalkTask task, const Visit &visit) {
    WalkWorker &me = workers[size_t(worker)];
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

std::vector<EmittedRun> ParallelDirectoryWalker::emittedInWalkOrder() const {
    return d->root ? runsInWalkOrder(*d->root) : std::vector<EmittedRun>();
}

} // namespace ravelinth::platform
