#include "platform/MountTable.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

#ifdef Q_OS_LINUX
#include <sys/sysmacros.h>
#endif

namespace ravelinth::platform {

namespace {

// mountinfo writes space, tab, newline and backslash in names as three octal digits.
QByteArray unescaped(QByteArrayView field) {
    QByteArray out;
    out.reserve(field.size());
    const auto digit = [&](qsizetype at) { return field[at] >= '0' && field[at] <= '7'; };
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && digit(i + 1) && digit(i + 2) &&
            digit(i + 3)) {
            out.append(char(((field[i + 1] - '0') << 6) | ((field[i + 2] - '0') << 3) |
                            (field[i + 3] - '0')));
            i += 3;
            continue;
        }
        out.append(field[i]);
    }
    return out;
}

} // namespace

std::vector<MountEntry> parseMountInfo(QByteArrayView text) {
    std::vector<MountEntry> mounts;
    for (const QByteArray &line : text.toByteArray().split('\n')) {
        // "36 35 98:0 /mnt1 /mnt/parent rw,noatime master:1 - ext3 /dev/root rw": id, parent,
        // major:minor, root, mount point, options, optional fields ending at "-", then the type.
        const QList<QByteArray> fields = line.split(' ');
        const qsizetype separator = fields.indexOf("-");
        if (fields.size() < 7 || separator < 6 || separator + 1 >= fields.size())
            continue;
        bool idOk = false;
        const qulonglong id = fields[0].toULongLong(&idOk);
        const QList<QByteArray> numbers = fields[2].split(':');
        bool majorOk = false;
        bool minorOk = false;
        const uint major = numbers.value(0).toUInt(&majorOk);
        const uint minor = numbers.value(1).toUInt(&minorOk);
        if (!idOk || numbers.size() != 2 || !majorOk || !minorOk)
            continue;
        MountEntry entry;
        entry.id = id;
#ifdef Q_OS_LINUX
        entry.device = makedev(major, minor);
#else
        entry.device = dev_t((major << 8) | minor);
#endif
        entry.root = unescaped(fields[3]);
        entry.mountPoint = unescaped(fields[4]);
        entry.fsType = unescaped(fields[separator + 1]);
        mounts.push_back(std::move(entry));
    }
    return mounts;
}

std::vector<MountEntry> readMountTable() {
    // /proc files report a size of 0, so read until the end rather than by size.
    QFile table(QStringLiteral("/proc/self/mountinfo"));
    if (!table.open(QIODevice::ReadOnly))
        return {};
    return parseMountInfo(table.readAll());
}

std::optional<OpenFolderIdentity> identifyOpenFolder(int fd) {
#if defined(Q_OS_LINUX) && defined(STATX_MNT_ID)
    // One call for what a plain fstat gives and the mount, which tells a bind mount from the
    // folder it shows.
    struct statx extended {};
    if (::statx(fd, "", AT_EMPTY_PATH | AT_STATX_SYNC_AS_STAT, STATX_INO | STATX_MNT_ID,
                &extended) == 0) {
        const dev_t device = makedev(extended.stx_dev_major, extended.stx_dev_minor);
        return OpenFolderIdentity{device, ino_t(extended.stx_ino),
                                  (extended.stx_mask & STATX_MNT_ID) ? extended.stx_mnt_id
                                                                     : std::uint64_t(device)};
    }
#endif
    struct stat info {};
    if (::fstat(fd, &info) != 0)
        return std::nullopt;
    return OpenFolderIdentity{info.st_dev, info.st_ino, std::uint64_t(info.st_dev)};
}

} // namespace ravelinth::platform
