#include "platform/WalkerDemand.h"

#include <QtGlobal>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <sys/sysmacros.h>
#endif

namespace ravelinth::platform {

ThreadClock::~ThreadClock() {
    if (m_fd >= 0)
        ::close(m_fd);
}

bool ThreadClock::read(ThreadTimes &times) {
    if (m_unavailable)
        return false;
    // "thread-self" is resolved when opened, so the descriptor stays this thread's.
    if (m_fd < 0)
        m_fd = ::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);
    char text[96];
    const ssize_t length = m_fd >= 0 ? ::pread(m_fd, text, sizeof text - 1, 0) : -1;
    if (length <= 0) {
        m_unavailable = true;
        return false;
    }
    text[length] = '\0';
    char *end = nullptr;
    times.running = std::strtoll(text, &end, 10);
    times.runnable = std::strtoll(end, &end, 10);
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    times.elapsed = std::int64_t(now.tv_sec) * 1000000000 + now.tv_nsec;
    return true;
}

bool isOnRotatingDisk(const QByteArray &path) {
#ifndef Q_OS_LINUX
    // Elsewhere a walk takes the solid-state disk's steps: the system names its disks otherwise.
    Q_UNUSED(path);
    return false;
#else
    struct stat info {};
    if (::stat(path.constData(), &info) != 0 || major(info.st_dev) == 0)
        return false;
    char name[96];
    // A virtual disk's driver never clears the kernel's default "rotational" flag, whatever
    // stands behind it; what does, a host's disk or its cache, is served out of order anyway.
    std::snprintf(name, sizeof name, "/sys/dev/block/%u:%u", major(info.st_dev),
                  minor(info.st_dev));
    char device[PATH_MAX];
    if (::realpath(name, device) && std::strstr(device, "/virtio"))
        return false;
    // A partition has no queue of its own; its disk, one folder up, has.
    for (const char *queue : {"queue", "../queue"}) {
        std::snprintf(name, sizeof name, "/sys/dev/block/%u:%u/%s/rotational", major(info.st_dev),
                      minor(info.st_dev), queue);
        const int fd = ::open(name, O_RDONLY | O_CLOEXEC);
        if (fd < 0)
            continue;
        char flag = '0';
        const bool read = ::read(fd, &flag, 1) == 1;
        ::close(fd);
        if (read)
            return flag == '1';
    }
    return false;
#endif
}

WalkerDemand::WalkerDemand(int maximum, int cores, bool rotating)
    : m_maximum(std::max(1, maximum)), m_rotating(rotating),
      m_initial(std::min(m_maximum, std::max(4, 2 * std::max(1, cores)))), m_current(m_initial),
      m_ceiling(m_maximum) {}

int WalkerDemand::report(const ThreadTimes &stretch, std::int64_t now) {
    m_running += stretch.running;
    m_runnable += stretch.runnable;
    m_elapsed += stretch.elapsed;
    if (!m_deciding.try_lock())
        return 0;
    const std::lock_guard lock(m_deciding, std::adopt_lock);
    return decide(now);
}

int WalkerDemand::decide(std::int64_t now) {
    // Long enough to hold many folders, short enough to react within the first tenth of a
    // second of a cold walk.
    constexpr std::int64_t window = 40'000'000;
    // After a step that did not pay, the walk may have moved on to another part of the device.
    constexpr std::int64_t retryAfter = 500'000'000;
    if (m_windowStart < 0)
        m_windowStart = now;
    if (now - m_windowStart < window)
        return 0;
    const double span = double(now - m_windowStart);
    m_windowStart = now;
    const std::int64_t elapsed = m_elapsed.exchange(0);
    const std::int64_t running = m_running.exchange(0);
    const std::int64_t runnable = m_runnable.exchange(0);
    if (elapsed <= 0)
        return 0;
    const double asleep =
        std::clamp(double(elapsed - running - runnable) / double(elapsed), 0.0, 1.0);
    // Each entry costs about the same processor time, so the cores' worth of walking done is
    // the walk's speed, whatever the shape of the folders it happens to be in.
    const double walking = double(running) / span;

    if (m_walkingBeforeStep > 0) {
        if (walking < m_walkingBeforeStep * 1.1) {
            m_ceiling = m_current;
            m_retryAt = now + retryAfter;
        }
        m_walkingBeforeStep = 0;
    }
    if (m_ceiling < m_maximum && now >= m_retryAt)
        m_ceiling = m_maximum;
    // Walkers that sleep a little, on a lock or a stray read, need no company: a walk of a tree
    // in memory sleeps a sixth of the time on two busy cores.
    constexpr double sleepyFrom = 0.3;
    if (asleep < sleepyFrom || m_current >= m_ceiling)
        return 0;
    // A rotating disk serves one request at a time, and more walkers soon only make its head
    // jump: it is given them in smaller steps. Any other disk is given at once as many requests
    // in flight as a solid-state or virtual disk needs to be kept busy: were it stepped up to
    // them, a step would be judged while the walkers, waking more often, crowd two cores in the
    // kernel, and the walk would settle on too few.
    constexpr int solidStateDepth = 16;
    const int step =
        m_rotating ? std::max(1, m_current / 2) : std::max(m_current, solidStateDepth - m_current);
    m_walkingBeforeStep = walking;
    m_current = std::min(m_current + step, m_ceiling);
    return m_current;
}

void WalkerStopwatch::start() {
    m_entries = 0;
    m_timing = m_clock.read(m_since);
}

int WalkerStopwatch::lap() {
    ThreadTimes now;
    if (!m_timing || !m_clock.read(now))
        return 0;
    const ThreadTimes stretch{now.running - m_since.running, now.runnable - m_since.runnable,
                              now.elapsed - m_since.elapsed};
    m_since = now;
    m_entries = 0;
    return m_demand.report(stretch, now.elapsed);
}

} // namespace ravelinth::platform
