#include "platform/ThreadPriority.h"

#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#elif defined(Q_OS_DARWIN)
#include <pthread.h>
#endif

namespace ravelinth::platform {

void yieldToInteractiveThreads() {
#ifdef Q_OS_LINUX
    // Linux gives each thread a nice value of its own. At 10 a thread weighs a tenth of a normal
    // one, yet still takes every idle cycle.
    ::setpriority(PRIO_PROCESS, id_t(::syscall(SYS_gettid)), 10);
#elif defined(Q_OS_DARWIN)
    ::pthread_set_qos_class_self_np(QOS_CLASS_UTILITY, 0);
#endif
}

} // namespace ravelinth::platform
