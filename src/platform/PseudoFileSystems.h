#pragma once

namespace ravelinth::platform {

// True when the open folder `fd` lies on a kernel pseudo file system (proc, sysfs, ...), whose
// "files" are not disk usage: /proc/kcore alone would read as a 128 TB file.
bool isPseudoFileSystem(int fd);

} // namespace ravelinth::platform
