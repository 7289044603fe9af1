#pragma once

#include "models/SkippedMount.h"
#include "platform/DirectoryWalker.h"
#include "platform/MountTable.h"

#include <QByteArray>
#include <QList>

#include <cstdint>
#include <mutex>
#include <optional>
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
// point, never once per file. Mounts the table shows below the root that must not be entered for
// their type or file system are refused before the walk opens them, by path: opening the root of
// a network mount whose server is gone can wait for minutes.
class MountBoundary {
public:
    struct Rules {
        bool stayOnOneFileSystem = false;
        bool enterNetworkFileSystems = false;
    };

    // `root` is the scan root's absolute path; `table` this process's mounts.
    MountBoundary(std::vector<platform::MountEntry> table, const QByteArray &root, Rules rules);

    // Makes the walk of `options` ask this boundary (which must outlive the walk).
    void applyTo(platform::WalkOptions &options);

    // Safe to call from several walkers at once.
    bool mayEnter(QByteArrayView path, std::uint64_t mountId, dev_t device);
    bool mayOpen(QByteArrayView path);
    // The mounts passed over, in the order of their paths.
    QList<SkippedMount> skipped() const;

private:
    struct WalkedArea {
        dev_t device = 0;
        QByteArray folder; // within its file system, as a mount's root is given
    };
    const platform::MountEntry *entryOf(std::uint64_t mountId) const;
    std::optional<SkippedMount::Reason> refusal(const platform::MountEntry &mount,
                                                dev_t device) const;
    void noteUnopenable(const QByteArray &root, const QByteArray &canonical);
    bool overlapsWalked(const WalkedArea &area) const;

    Rules m_rules;
    dev_t m_rootDevice = 0;
    mutable std::mutex m_mutex;
    std::vector<platform::MountEntry> m_table;
    bool m_tableReread = false;
    std::vector<WalkedArea> m_walked;
    QList<SkippedMount> m_skipped;
    // Known from the table before the walk, by the path the walk will meet them at; sorted.
    std::vector<SkippedMount> m_unopenable;
};

} // namespace ravelinth
