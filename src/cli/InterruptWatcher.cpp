#include "cli/InterruptWatcher.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace ravelinth::cli {

namespace {

int writeEnd = -1;

extern "C" void onInterrupt(int) {
    // Only async-signal-safe calls here: one byte into the pipe, and the default handler back.
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    std::signal(SIGINT, SIG_DFL);
}

} // namespace

InterruptWatcher::InterruptWatcher(QObject *parent) : QObject(parent) {
    if (::pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    writeEnd = m_pipe[1];
    m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &InterruptWatcher::onReadable);
    std::signal(SIGINT, onInterrupt);
}

InterruptWatcher::~InterruptWatcher() {
    std::signal(SIGINT, SIG_DFL);
    writeEnd = -1;
    for (int fd : m_pipe) {
        if (fd >= 0)
            ::close(fd);
    }
}

void InterruptWatcher::onReadable() {
    char buffer[16];
    while (::read(m_pipe[0], buffer, sizeof buffer) > 0) {
    }
    emit interrupted();
}

} // namespace ravelinth::cli
