#pragma once

#include <QByteArray>

#include <atomic>
#include <cstdint>
#include <mutex>

namespace ravelinth::platform {

// How long one thread has run, waited to run, and lived, in nanoseconds. What is left of its
// life is time it slept: on the device, mostly, in a walk.
struct ThreadTimes {
    std::int64_t running = 0;
    std::int64_t runnable = 0; // ready, waiting for a core
    std::int64_t elapsed = 0;
};

// Reads the calling thread's times through a descriptor it opens once, on first use.
class ThreadClock {
public:
    ThreadClock() = default;
    ~ThreadClock();
    ThreadClock(const ThreadClock &) = delete;
    ThreadClock &operator=(const ThreadClock &) = delete;

    // False where the system does not tell how long a thread waited for a core.
    bool read(ThreadTimes &times);

private:
    int m_fd = -1;
    bool m_unavailable = false;
};

// True when the folder lies on a rotating disk, as far as the system knows.
bool isOnRotatingDisk(const QByteArray &path);

// How many walkers a walk wants, worked out from what the walkers meet. Two per core (at least
// four) keep the cores busy while the tree is in memory. While walkers sleep on the device, more
// are let in: on a solid-state or virtual disk at once as many as keep it busy (16), then
// doubling, as long as each step makes the walk faster; the step that no longer pays shows the
// device is saturated. A rotating disk gets steps of half the walkers. The walk's speed is measured
// as the processor time its walkers spend, which, unlike the entries met, does not depend on the
// folders it is in.
class WalkerDemand {
public:
    WalkerDemand(int maximum, int cores, bool rotating);

    int initial() const { return m_initial; }
    // A walker's times over its last stretch of work. Returns a new number of walkers when it is
    // time to change it, else 0. Any thread may call.
    int report(const ThreadTimes &stretch, std::int64_t now);

private:
    int decide(std::int64_t now);

    const int m_maximum;
    const bool m_rotating;
    const int m_initial;
    std::atomic<std::int64_t> m_running{0};
    std::atomic<std::int64_t> m_runnable{0};
    std::atomic<std::int64_t> m_elapsed{0};
    std::mutex m_deciding;
    std::int64_t m_windowStart = -1;
    int m_current;
    int m_ceiling;
    std::int64_t m_retryAt = 0;
    double m_walkingBeforeStep = 0; // cores' worth of walking before the last step; 0: none
};

// A walker's stopwatch, used on the walker's own thread: times its stretches of work and reports
// them to the demand.
class WalkerStopwatch {
public:
    explicit WalkerStopwatch(WalkerDemand &demand) : m_demand(demand) {}

    // A stretch begins: time spent waiting for work is not time spent on the device.
    void start();
    // An entry met. Returns a new number of walkers when the demand asks for one, else 0.
    int count() { return ++m_entries % entriesPerLook == 0 ? lap() : 0; }
    // Reports the stretch so far and begins the next; answers as count() does.
    int lap();

private:
    // Entries between two looks at the clock: a look costs a system call.
    static constexpr std::int64_t entriesPerLook = 256;
    WalkerDemand &m_demand;
    ThreadClock m_clock;
    ThreadTimes m_since;
    std::int64_t m_entries = 0;
    bool m_timing = false;
};

} // namespace ravelinth::platform
