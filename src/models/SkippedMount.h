#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace ravelinth {

// A mounted file system that a scan met and did not enter.
struct SkippedMount {
    enum class Reason {
        otherFileSystem,   // the scan stays on its root's file system
        networkFileSystem, // network and user-space file systems wait on a server, or hang
        alreadyScanned,    // a bind mount of a folder the scan walks anyway (or of one above it)
    };
    QByteArray path; // where the walk met it
    QByteArray fsType;
    Reason reason = Reason::otherFileSystem;

    // "otherFileSystem", "networkFileSystem", "alreadyScanned": for machine-read output.
    QString reasonCode() const;
    // "on another file system", ...: for people.
    QString reasonText() const;
};

// True for file systems whose files live behind a network or a user-space program: nfs, cifs,
// smb3, 9p, afs, ceph, glusterfs, davfs and every "fuse." type. Such a mount may answer slowly or
// never, so a scan enters one only when asked to.
bool isNetworkFileSystem(QByteArrayView fsType);

} // namespace ravelinth
