#pragma once

// What the parallel walker's workers share: the tasks handed between them, what each knows of its
// branch, and the walk's own state. Only the walker's own files include this.

#include "platform/FolderListing.h"
#include "platform/ParallelDirectoryWalker.h"
#include "platform/WalkOrder.h"
#include "platform/WalkerDemand.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <dirent.h>
#include <memory>
#include <mutex>
#include <vector>

namespace ravelinth::platform {

// A folder, or a part of one, waiting in the pool for a worker.
struct WalkTask {
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

struct WalkWorker {
    std::deque<Segment> segments; // stable addresses
    std::uint32_t emitted = 0;
    std::vector<char> buffer;
    // Listings of folders left, kept for the next folders: a walk meets tens of thousands of
    // folders, and each would otherwise allocate its listing anew.
    std::vector<Listing> spareListings;
    // While the walk adapts its number of workers: on the worker's own thread.
    WalkerStopwatch *stopwatch = nullptr;
};

inline bool mayBeFolder(unsigned char type) {
    return type == DT_DIR || type == DT_UNKNOWN;
}

struct ParallelDirectoryWalker::Private {
    QByteArray rootPath;
    WalkOptions options;
    int workerCount = 1;
    int rootFd = -1;
    std::vector<WalkWorker> workers;
    Segment *root = nullptr;

    std::mutex mutex;
    std::condition_variable wake;  // for workers let in
    std::condition_variable admit; // for the others
    void wakeEveryone() {
        wake.notify_all();
        admit.notify_all();
    }
    std::vector<WalkTask> pool;
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

    void runTask(int worker, WalkTask task, const Visit &visit);
    void letMoreIn(int wanted);
    void handOff(int worker, std::vector<Frame> &stack, std::vector<BranchInfo> &branch,
                 const QByteArray &path);
    void stop() {
        std::lock_guard lock(mutex);
        stopped = true;
        // Parts nobody will walk still lead to the parts after them, which may have been walked.
        for (WalkTask &task : pool) {
            if (task.rest)
                task.segment->pieces.push_back({task.rest, 0, 0});
            task.rest = nullptr;
        }
        wakeEveryone();
    }
};

} // namespace ravelinth::platform
