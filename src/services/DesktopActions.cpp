#include "services/DesktopActions.h"

#include "platform/FileManager.h"

namespace ravelinth {

void openWithDefaultApplication(const QByteArray &path) {
    platform::openFile(path);
}

void copyTextToClipboard(const QString &text) {
    platform::copyTextToClipboard(text);
}

} // namespace ravelinth
