#pragma once

#include "platform/DirectoryWalker.h"

#include <QByteArray>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace ravelinth::platform {

// What a visitor did with one entry: how the walk goes on, and whether it emitted an item (kept
// something) for that entry.
struct WalkVisit {
    WalkDecision decision = WalkDecision::proceed;
    bool emitted = false;
};

// Items that one worker emitted one after another: numbers start .. start + count - 1 of that
// worker (each worker numbers its items 0, 1, 2, ... in the order it emitted them).
struct EmittedRun {
    std::uint32_t worker = 0;
    std::uint32_t start = 0;
    std::uint32_t count = 0;
};

// The walk of DirectoryWalker, spread over several workers that each run on a thread of the
// caller's. Each worker walks its share depth-first exactly as DirectoryWalker does (relative to
// open folder descriptors, no recursion, at most a fixed number of descriptors per worker, links
// never followed, pseudo file systems never entered). A worker that runs dry is handed the
// not-yet-walked rest of the shallowest folder a busy worker is in, so the shares are whole
// folders or the tails of folders.
//
// Every such share records, in listing order, the items emitted in it and where each subfolder's
// share begins, so the items can be put back into the order a single depth-first walk would have
// met them, whichever worker met them and whenever: emittedInWalkOrder().
class ParallelDirectoryWalker {
public:
    // Called on the worker threads, concurrently; `worker` is the index given to runWorker.
    using Visit = std::function<WalkVisit(int worker, const WalkEntry &entry)>;

    // With `adaptive`, `workerCount` is the most that may walk: the walk starts with fewer and
    // lets more in while the walkers sleep on the device (WalkerDemand); the rest wait, and
    // return when the walk ends.
    ParallelDirectoryWalker(QByteArray rootPath, WalkOptions options, int workerCount,
                            bool adaptive = false);
    ~ParallelDirectoryWalker();
    ParallelDirectoryWalker(const ParallelDirectoryWalker &) = delete;
    ParallelDirectoryWalker &operator=(const ParallelDirectoryWalker &) = delete;

    WalkOpenResult open();
    // Runs worker `worker` (0 .. workerCount - 1) until the whole walk has ended or a visit said
    // stop. Call it once for every worker, each on a thread of its own.
    void runWorker(int worker, const Visit &visit);
    // Once every runWorker has returned: the emitted items in depth-first pre-order.
    std::vector<EmittedRun> emittedInWalkOrder() const;
    // How often a worker handed part of its folder to another one.
    int handOffs() const;
    // How many workers were let in, at most.
    int workersLetIn() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ravelinth::platform
