#pragma once

#include <QByteArray>
#include <QString>

namespace ravelinth::cli {

// Text for a terminal line: control characters (newlines, escapes, C1 codes) are written as
// visible escapes such as "\n" or "\x1B", so a file name can neither break the line structure
// of a listing nor send commands to the terminal.
QByteArray terminalText(const QString &text);

} // namespace ravelinth::cli
