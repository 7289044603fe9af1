#include "models/SkippedMount.h"

namespace ravelinth {

QString SkippedMount::reasonCode() const {
    switch (reason) {
    case Reason::otherFileSystem:
        return u"otherFileSystem"_qs;
    case Reason::networkFileSystem:
        return u"networkFileSystem"_qs;
    case Reason::alreadyScanned:
        break;
    }
    return u"alreadyScanned"_qs;
}

QString SkippedMount::reasonText() const {
    switch (reason) {
    case Reason::otherFileSystem:
        return u"on another file system"_qs;
    case Reason::networkFileSystem:
        return u"a network or user-space file system"_qs;
    case Reason::alreadyScanned:
        break;
    }
    return u"already scanned through another path"_qs;
}

bool isNetworkFileSystem(QByteArrayView fsType) {
    static constexpr QByteArrayView networkTypes[] = {
        "nfs",  "nfs4",      "cifs",  "smb3",   "smbfs", "9p",   "afs",
        "ceph", "glusterfs", "davfs", "lustre", "ncpfs", "fuse",
    };
    if (fsType.startsWith("fuse."))
        return true;
    for (QByteArrayView type : networkTypes) {
        if (fsType == type)
            return true;
    }
    return false;
}

} // namespace ravelinth
