#pragma once

// The walkers' shared tally, for FileScannerService alone.

#include "models/CheckedMath.h"
#include "models/DisplayText.h"
#include "models/FileItem.h"
#include "platform/DirectoryWalker.h"

#include <QList>

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace ravelinth {

using ReportProgress = std::function<void(qint64, qint64, QString)>;

// The data behind one or more names.
struct DataIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const DataIdentity &) const = default;
};

struct DataIdentityHash {
    std::size_t operator()(const DataIdentity &identity) const {
        return std::hash<ino_t>()(identity.inode) * 31 + std::hash<dev_t>()(identity.device);
    }
};

using DataIdentitySet = std::unordered_set<DataIdentity, DataIdentityHash>;

// In a walker's list of where its items went, this bit marks an unreadable folder's place in
// the counter's list of them rather than a kept file's.
constexpr std::uint32_t unreadableMark = 1u << 31;

// Files a walker has counted but not yet added to the shared tally, with their sizes, so that a
// report still gives the bytes of exactly the files it counts.
struct PendingFiles {
    static constexpr int capacity = 128;
    int count = 0;
    std::array<qint64, capacity> sizes{};
    std::string lastPath; // for a report that falls on the last of them
};

// What the walkers share: the counters behind the progress reports, the stop, and the kept
// files. Counts come in through one lock, so the counts, the reports and the point of a stop come
// in one order whatever the number of walkers. Plain files that are neither kept nor linked
// reach it in batches of a walker's PendingFiles: taking the lock for every file made the walkers
// queue on it.
//
// The kept files go into one list, in the order they were counted; the walkers remember where
// theirs went, so that the walk order can be restored in place at the end. One list, not one per
// walker copied together at the end, keeps a million kept files from needing their size twice.
class ScanCounter {
public:
    ScanCounter(std::atomic<bool> &cancelRequested, std::atomic<bool> &abandoned,
                ReportProgress report)
        : m_cancelRequested(cancelRequested), m_abandoned(abandoned), m_report(std::move(report)) {}

    bool isStopped() const {
        return m_stopped.load(std::memory_order_relaxed) ||
               m_abandoned.load(std::memory_order_relaxed);
    }

    static constexpr qsizetype notKept = -1;
    static constexpr qsizetype stopped = -2;

    // Counts one sized file and keeps `item` if there is one. Answers where the item went,
    // notKept without one, or stopped when the walk has already been stopped (nothing counted).
    // `pending` is the calling walker's own.
    qsizetype count(const platform::WalkEntry &entry, std::optional<FileItem> item,
                    PendingFiles &pending) {
        const bool linked = entry.linkCount > 1;
        if (!item && !linked) {
            pending.sizes[std::size_t(pending.count++)] = entry.size;
            pending.lastPath.assign(entry.path.data(), std::size_t(entry.path.size()));
            if (pending.count < PendingFiles::capacity)
                return notKept;
        }
        std::lock_guard lock(m_mutex);
        if (m_stopped.load(std::memory_order_relaxed)) {
            pending.count = 0;
            return stopped;
        }
        if (!addPending(pending, entry.path) || (!item && !linked))
            return notKept;
        // Any name of linked data adds the same size, so whichever comes first may count it.
        countOne(entry.size, entry.path,
                 linked && !m_linkedSeen.insert({entry.device, entry.inode}).second);
        if (!item)
            return notKept;
        m_kept.append(std::move(*item));
        if (linked)
            m_keptLinks.emplace(std::uint32_t(m_kept.size() - 1),
                                DataIdentity{entry.device, entry.inode});
        return m_kept.size() - 1;
    }

    // Adds what a walker still holds, once it has stopped walking.
    void flush(PendingFiles &pending) {
        std::lock_guard lock(m_mutex);
        if (m_stopped.load(std::memory_order_relaxed))
            pending.count = 0;
        else
            addPending(pending, pending.lastPath);
    }

    // Keeps the path of a folder that could not be read; answers where it went.
    std::uint32_t noteUnreadable(QByteArrayView path) {
        std::lock_guard lock(m_mutex);
        m_unreadable.append(path.toByteArray());
        return std::uint32_t(m_unreadable.size() - 1);
    }

    qint64 files() const { return m_files; }
    qint64 bytes() const { return m_bytes; }
    QList<FileItem> &kept() { return m_kept; }
    // The data of the kept file at `index`, which has more than one name.
    DataIdentity keptLink(std::uint32_t index) const { return m_keptLinks.at(index); }
    QList<QByteArray> &unreadable() { return m_unreadable; }

private:
    // Under the lock. Counts one file; `alreadyCounted` data adds no bytes. False when a report
    // on it stopped the walk: the file still counts, nothing after it does.
    bool countOne(qint64 size, QByteArrayView path, bool alreadyCounted = false) {
        m_files = checkedAdd(m_files, 1);
        if (!alreadyCounted)
            m_bytes = checkedAdd(m_bytes, size);
        if (m_files % 100 != 0)
            return true;
        m_report(m_files, m_bytes, displayText(path));
        // Besides the folders, the one point where a stop reaches the walk.
        if (m_cancelRequested)
            m_stopped = true;
        return !m_stopped.load(std::memory_order_relaxed);
    }

    // Under the lock: counts the walker's pending files in the order it met them.
    bool addPending(PendingFiles &pending, QByteArrayView path) {
        const int count = pending.count;
        pending.count = 0;
        for (int i = 0; i < count; ++i) {
            if (!countOne(pending.sizes[std::size_t(i)], path))
                return false;
        }
        return true;
    }

    std::atomic<bool> &m_cancelRequested;
    std::atomic<bool> &m_abandoned;
    ReportProgress m_report;
    std::mutex m_mutex;
    std::atomic<bool> m_stopped{false};
    qint64 m_files = 0;
    qint64 m_bytes = 0;
    QList<FileItem> m_kept;
    // Only data with more than one name is remembered: most files have one, and cost nothing.
    DataIdentitySet m_linkedSeen;
    std::unordered_map<std::uint32_t, DataIdentity> m_keptLinks;
    QList<QByteArray> m_unreadable;
};

} // namespace ravelinth
