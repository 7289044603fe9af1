#include "platform/StandardOutput.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace ravelinth::platform {

namespace {

std::atomic<int> firstError{0};

#if defined(__GLIBC__)
ssize_t writeToDescriptor(void *, const char *buffer, size_t size) {
    size_t done = 0;
    while (done < size) {
        const ssize_t written = ::write(STDOUT_FILENO, buffer + done, size - done);
        if (written >= 0) {
            done += size_t(written);
            continue;
        }
        if (errno == EINTR)
            continue;
        int none = 0;
        firstError.compare_exchange_strong(none, errno);
        break;
    }
    // Short of `size`, the stream sets its error flag.
    return ssize_t(done);
}
#endif

} // namespace

void rememberStandardOutputErrors() {
#if defined(__GLIBC__)
    const cookie_io_functions_t functions{nullptr, writeToDescriptor, nullptr, nullptr};
    FILE *stream = ::fopencookie(nullptr, "w", functions);
    if (stream == nullptr)
        return;
    // The buffering the C library would have chosen for descriptor 1 itself.
    std::setvbuf(stream, nullptr, ::isatty(STDOUT_FILENO) ? _IOLBF : _IOFBF, BUFSIZ);
    std::fflush(stdout);
    stdout = stream;
#endif
}

int standardOutputError() {
    return firstError.load();
}

} // namespace ravelinth::platform
