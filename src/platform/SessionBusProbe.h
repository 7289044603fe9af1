#pragma once

#include <QDeadlineTimer>

namespace ravelinth::platform {

// Whether the session bus that the environment names takes part in the first exchange of a
// connection (authentication) before `deadline`. Qt's own connection to a bus that accepted the
// socket but never speaks blocks its caller for about 25 seconds; this question costs at most
// the deadline. Transports other than Unix sockets cannot be asked here and count as answering.
bool sessionBusAnswers(QDeadlineTimer deadline);

} // namespace ravelinth::platform
