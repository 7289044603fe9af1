#include "platform/PseudoFileSystems.h"

#include <QtGlobal>

#include <string>

#ifdef Q_OS_LINUX
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#endif

namespace ravelinth::platform {

#ifdef Q_OS_LINUX

namespace {
// Magic numbers of the pseudo file systems; some are missing from older kernel headers.
constexpr unsigned long pseudoMagics[] = {
    0x9fa0,     // proc
    0x62656572, // sysfs
    0x1373,     // devfs (devtmpfs reports as tmpfs, see below)
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

constexpr unsigned long tmpfsMagic = 0x01021994;

// The file-system type of the mount holding `device`, as the kernel lists it in the calling
// process's mount table ("devtmpfs", "tmpfs", ...); empty when no mount matches.
std::string mountTypeOfDevice(dev_t device) {
    std::string type;
    FILE *table = std::fopen("/proc/self/mountinfo", "re");
    if (!table)
        return type;
    char *line = nullptr;
    std::size_t capacity = 0;
    while (::getline(&line, &capacity, table) > 0) {
        // "36 35 0:6 / /dev rw,nosuid - devtmpfs udev rw,...": the third field is the device,
        // the type follows the lone "-".
        unsigned int major = 0;
        unsigned int minor = 0;
        if (std::sscanf(line, "%*s %*s %u:%u", &major, &minor) != 2 ||
            makedev(major, minor) != device)
            continue;
        const char *separator = std::strstr(line, " - ");
        if (!separator)
            continue;
        const char *start = separator + 3;
        type.assign(start, std::strcspn(start, " \n"));
        break;
    }
    std::free(line);
    std::fclose(table);
    return type;
}

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
    // devtmpfs answers with tmpfs's magic number; only the mount table tells the two apart.
    // Asked only where a walk crosses onto another device, so reading the table costs little.
    if (magic == tmpfsMagic) {
        struct stat folder {};
        return ::fstat(fd, &folder) == 0 && mountTypeOfDevice(folder.st_dev) == "devtmpfs";
    }
    return false;
}

#else

bool isPseudoFileSystem(int) {
    return false;
}

#endif

} // namespace ravelinth::platform
