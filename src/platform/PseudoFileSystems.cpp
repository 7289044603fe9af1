#include "platform/PseudoFileSystems.h"

#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <sys/vfs.h>
#endif

namespace ravelinth::platform {

#ifdef Q_OS_LINUX

namespace {
// Magic numbers of the pseudo file systems; some are missing from older kernel headers.
constexpr unsigned long pseudoMagics[] = {
    0x9fa0,     // proc
    0x62656572, // sysfs
    0x1373,     // devfs (devtmpfs itself reports as tmpfs; its nodes are never opened)
    0x1cd1,     // devpts
    0x27e0eb,   // cgroup
    0x63677270, // cgroup2
    0x64626720, // debugfs
    0x74726163, // tracefs
    0x73636673, // securityfs
    0x6165676c, // pstore
    0xcafe4a11, // bpf
    0x62656570, // configfs
    0x65735543, // fusectl
    0x19800202, // mqueue
    0x958458f6, // hugetlbfs
    0x42494e4d, // binfmt_misc
    0xde5e81e4, // efivarfs
    0xf97cff8c, // selinuxfs
    0x6e736673, // nsfs
    0x0187,     // autofs
};
} // namespace

bool isPseudoFileSystem(int fd) {
    struct statfs info {};
    if (::fstatfs(fd, &info) != 0)
        return false;
    const unsigned long magic = static_cast<unsigned long>(info.f_type) & 0xffffffffUL;
    for (unsigned long pseudo : pseudoMagics) {
        if (magic == pseudo)
            return true;
    }
    return false;
}

#else

bool isPseudoFileSystem(int) {
    return false;
}

#endif

} // namespace ravelinth::platform
