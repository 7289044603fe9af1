#include "platform/SessionBusProbe.h"

#include <QByteArray>
#include <QList>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace ravelinth::platform {

namespace {

class Socket {
public:
    Socket() : m_fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {}
    ~Socket() {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;
    int fd() const { return m_fd; }

private:
    int m_fd;
};

bool waitFor(int fd, short events, QDeadlineTimer deadline) {
    pollfd entry{fd, events, 0};
    for (;;) {
        const int ready = ::poll(&entry, 1, int(deadline.remainingTime()));
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

// The socket named by one "unix:" address: `path=` in the file system, `abstract=` in Linux's
// abstract namespace. Values may be percent-escaped.
std::optional<sockaddr_un> unixAddress(const QByteArray &parameters, socklen_t *length) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    for (const QByteArray &parameter : parameters.split(',')) {
        const qsizetype equals = parameter.indexOf('=');
        const QByteArray key = parameter.left(equals);
        if (equals < 0 || (key != "path" && key != "abstract"))
            continue;
        const QByteArray name = QByteArray::fromPercentEncoding(parameter.mid(equals + 1));
        const std::size_t offset = key == "abstract" ? 1 : 0;
        if (name.isEmpty() || offset + std::size_t(name.size()) >= sizeof(address.sun_path))
            return std::nullopt;
        std::memcpy(address.sun_path + offset, name.constData(), std::size_t(name.size()));
        *length = socklen_t(offsetof(sockaddr_un, sun_path) + offset + std::size_t(name.size()) +
                            (offset == 0 ? 1 : 0));
        return address;
    }
    return std::nullopt;
}

// Sends the opening of an EXTERNAL authentication and waits for any complete reply line.
bool answers(const sockaddr_un &address, socklen_t length, QDeadlineTimer deadline) {
    const Socket socket;
    if (socket.fd() < 0)
        return false;
    if (::connect(socket.fd(), reinterpret_cast<const sockaddr *>(&address), length) != 0) {
        int error = errno;
        if (error == EINPROGRESS && waitFor(socket.fd(), POLLOUT, deadline)) {
            socklen_t size = sizeof(error);
            ::getsockopt(socket.fd(), SOL_SOCKET, SO_ERROR, &error, &size);
        }
        if (error != 0)
            return false;
    }
    const QByteArray greeting =
        QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(::getuid()).toHex() + "\r\n";
    if (::send(socket.fd(), greeting.constData(), std::size_t(greeting.size()), MSG_NOSIGNAL) !=
        ssize_t(greeting.size()))
        return false;
    QByteArray reply;
    while (!reply.contains('\n') && waitFor(socket.fd(), POLLIN, deadline)) {
        char buffer[256];
        const ssize_t received = ::recv(socket.fd(), buffer, sizeof(buffer), 0);
        if (received == 0 || (received < 0 && errno != EINTR && errno != EAGAIN))
            return false;
        if (received > 0)
            reply.append(buffer, received);
    }
    return reply.contains('\n');
}

} // namespace

bool sessionBusAnswers(QDeadlineTimer deadline) {
    QByteArray addresses = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (addresses.isEmpty()) {
        // Where the bus library looks without an address; it would otherwise start a bus of
        // its own that outlives the program.
        const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
        if (runtime.isEmpty() || ::access((runtime + "/bus").constData(), F_OK) != 0)
            return false;
        addresses = "unix:path=" + runtime + "/bus";
    }
    // The bus library tries the addresses in order and takes the first that connects.
    for (const QByteArray &entry : addresses.split(';')) {
        const qsizetype colon = entry.indexOf(':');
        if (colon < 0)
            continue;
        if (entry.left(colon) != "unix")
            return true;
        socklen_t length = 0;
        const std::optional<sockaddr_un> address = unixAddress(entry.mid(colon + 1), &length);
        if (address && answers(*address, length, deadline))
            return true;
    }
    return false;
}

} // namespace ravelinth::platform
