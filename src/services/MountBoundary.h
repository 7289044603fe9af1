#pragma once

#include "models/SkippedMount.h"
#include "platform/MountTable.h"

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <mutex>
#include <sys/types.h>
#include <vector>

namespace ravelinth {

// Decides, for one scan, which mounts its walk enters, and keeps those it did not.
//
// Every file system is walked through at most one path: the walk keeps, for each file system,
// the folders of it that it walks (the scan root's, then each mount's), and a mount showing one of
// those, or a folder holding one of them, is passed over as already scanned. So a bind mount of a
// folder into itself, or the same disk mounted twice, lists no file twice; a bind mount of a
// folder outside the scan is walked like any other folder.
//
// The walk asks only where it crosses from one mount to another, which happens once per mount
// point, never once per file.
class MountBoundary {
public:
    struct Rules {
        bool stayOnOneFileSystem = false;
        bool enterNetworkFileSystems = false;
    };

    // `root` is the scan root's absolute path; `table` this process's mounts.
    MountBoundary(std::vector<platform::MountEntry> table, const QByteArray &root, Rules rules);

    // Safe to call from several walkers at once.
    bool mayEnter(QByteArrayView path, std::uint64_t mountId, dev_t device);
    // The mounts passed over, in the order of their paths.
    QList<SkippedMount> skipped() const;

private:
    struct WalkedArea {
        dev_t device = 0;
        QByteArray folder; // within its file system, as a mount's root is given
    };
    const platform::MountEntry *entryOf(std::uint64_t mountId) const;
    bool overlapsWalked(const WalkedArea &area) const;

    Rules m_rules;
    dev_t m_rootDevice = 0;
    mutable std::mutex m_mutex;
    std::vector<platform::MountEntry> m_table;
    bool m_tableReread = false;
    std::vector<WalkedArea> m_walked;
    QList<SkippedMount> m_skipped;
};

} // namespace ravelinth
