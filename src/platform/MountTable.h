#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <optional>
#include <sys/types.h>
#include <vector>

namespace ravelinth::platform {

// One mount as the kernel lists it for this process.
struct MountEntry {
    std::uint64_t id = 0;
    dev_t device = 0;
    QByteArray root;       // the folder of its file system that the mount shows ("/" for all)
    QByteArray mountPoint; // where it is seen
    QByteArray fsType;     // "ext4", "nfs4", "fuse.sshfs", ...
};

// Reads a table in the kernel's mountinfo format; names are unescaped ("\040" is a space).
std::vector<MountEntry> parseMountInfo(QByteArrayView text);

// This process's mounts; empty where the system keeps no such table.
std::vector<MountEntry> readMountTable();

struct OpenFolderIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    // The mount it is seen through: its id in the table above or, where the system cannot tell,
    // the device number, which tells apart every mount but a bind mount.
    std::uint64_t mountId = 0;
};

// What the open folder `fd` is, and through which mount the walk reached it.
std::optional<OpenFolderIdentity> identifyOpenFolder(int fd);

} // namespace ravelinth::platform
