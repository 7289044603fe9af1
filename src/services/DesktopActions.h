#pragma once

#include <QByteArray>
#include <QString>

namespace ravelinth {

// Handing a file to the rest of the desktop: its default application, the clipboard.
void openWithDefaultApplication(const QByteArray &path);
void copyTextToClipboard(const QString &text);

} // namespace ravelinth
