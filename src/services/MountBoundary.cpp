#include "services/MountBoundary.h"

#include "models/PathText.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace ravelinth {

namespace {

QByteArray canonicalPath(const QByteArray &path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(
        ::realpath(path.constData(), nullptr), &std::free);
    return resolved ? QByteArray(resolved.get()) : QByteArray();
}

} // namespace

MountBoundary::MountBoundary(std::vector<platform::MountEntry> table, const QByteArray &root,
                             Rules rules)
    : m_rules(rules), m_table(std::move(table)) {
    const int fd = ::open(root.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    const std::optional<platform::OpenFolderIdentity> identity = platform::identifyOpenFolder(fd);
    ::close(fd);
    if (!identity)
        return;
    m_rootDevice = identity->device;
    const platform::MountEntry *mount = entryOf(identity->mountId);
    const QByteArray canonical = canonicalPath(root);
    if (canonical.isEmpty())
        return;
    noteUnopenable(root, canonical);
    if (!mount || !isSameOrBelow(canonical, mount->mountPoint))
        return;
    // The root's folder within its file system: the mount's own root, then the way from the
    // mount point down to the scan root.
    QByteArray folder = mount->root;
    const QByteArrayView below =
        QByteArrayView(canonical).sliced(mount->mountPoint == "/" ? 0 : mount->mountPoint.size());
    if (folder == "/" && !below.isEmpty())
        folder.clear();
    folder.append(below.toByteArray());
    m_walked.push_back({identity->device, folder});
}

void MountBoundary::noteUnopenable(const QByteArray &root, const QByteArray &canonical) {
    // The walk spells paths from the root as given, which may differ from the table's by a link.
    const QByteArray walkRoot = withoutTrailingSlashes(root);
    for (const platform::MountEntry &mount : m_table) {
        if (mount.mountPoint == canonical || !isSameOrBelow(mount.mountPoint, canonical))
            continue;
        const std::optional<SkippedMount::Reason> reason = refusal(mount, mount.device);
        if (!reason)
            continue;
        const QByteArrayView below =
            QByteArrayView(mount.mountPoint).sliced(canonical == "/" ? 0 : canonical.size());
        const QByteArray path = (walkRoot == "/" ? QByteArray() : walkRoot) + below.toByteArray();
        m_unopenable.push_back({path, mount.fsType, *reason});
    }
    std::sort(m_unopenable.begin(), m_unopenable.end(),
              [](const SkippedMount &a, const SkippedMount &b) { return a.path < b.path; });
}

void MountBoundary::applyTo(platform::WalkOptions &options) {
    options.mayEnterMount = [this](QByteArrayView path, std::uint64_t mountId, dev_t device) {
        return mayEnter(path, mountId, device);
    };
    // Only when there is something to refuse: every folder would ask otherwise.
    if (!m_unopenable.empty())
        options.mayOpenFolder = [this](QByteArrayView path) { return mayOpen(path); };
}

bool MountBoundary::mayOpen(QByteArrayView path) {
    const auto found = std::lower_bound(
        m_unopenable.begin(), m_unopenable.end(), path,
        [](const SkippedMount &mount, QByteArrayView wanted) { return mount.path < wanted; });
    if (found == m_unopenable.end() || found->path != path)
        return true;
    std::lock_guard lock(m_mutex);
    m_skipped.append(*found);
    return false;
}

std::optional<SkippedMount::Reason> MountBoundary::refusal(const platform::MountEntry &mount,
                                                           dev_t device) const {
    if (m_rules.stayOnOneFileSystem && device != m_rootDevice)
        return SkippedMount::Reason::otherFileSystem;
    if (!m_rules.enterNetworkFileSystems && isNetworkFileSystem(mount.fsType))
        return SkippedMount::Reason::networkFileSystem;
    return std::nullopt;
}

const platform::MountEntry *MountBoundary::entryOf(std::uint64_t mountId) const {
    const auto found = std::find_if(m_table.begin(), m_table.end(),
                                    [mountId](const auto &entry) { return entry.id == mountId; });
    return found == m_table.end() ? nullptr : &*found;
}

bool MountBoundary::overlapsWalked(const WalkedArea &area) const {
    return std::any_of(m_walked.begin(), m_walked.end(), [&area](const WalkedArea &walked) {
        return walked.device == area.device && (isSameOrBelow(area.folder, walked.folder) ||
                                                isSameOrBelow(walked.folder, area.folder));
    });
}

bool MountBoundary::mayEnter(QByteArrayView path, std::uint64_t mountId, dev_t device) {
    std::lock_guard lock(m_mutex);
    const platform::MountEntry *mount = entryOf(mountId);
    if (!mount && !m_tableReread) {
        // Mounted after the scan began.
        m_table = platform::readMountTable();
        m_tableReread = true;
        mount = entryOf(mountId);
    }
    const QByteArray fsType = mount ? mount->fsType : QByteArray();
    auto skip = [&](SkippedMount::Reason reason) {
        m_skipped.append({path.toByteArray(), fsType, reason});
        return false;
    };
    if (!mount) {
        if (m_rules.stayOnOneFileSystem && device != m_rootDevice)
            return skip(SkippedMount::Reason::otherFileSystem);
        return true;
    }
    if (const std::optional<SkippedMount::Reason> reason = refusal(*mount, device))
        return skip(*reason);
    const WalkedArea area{device, mount->root};
    if (overlapsWalked(area))
        return skip(SkippedMount::Reason::alreadyScanned);
    m_walked.push_back(area);
    return true;
}

QList<SkippedMount> MountBoundary::skipped() const {
    std::lock_guard lock(m_mutex);
    QList<SkippedMount> skipped = m_skipped;
    std::sort(skipped.begin(), skipped.end(),
              [](const SkippedMount &a, const SkippedMount &b) { return a.path < b.path; });
    return skipped;
}

} // namespace ravelinth
