#include "platform/FileManager.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QUrl>

namespace ravelinth::platform {

QStringList fileUris(const QList<QByteArray> &paths) {
    QStringList uris;
    uris.reserve(paths.size());
    for (const QByteArray &path : paths)
        uris.append(u"file://"_qs + QString::fromLatin1(path.toPercentEncoding("/")));
    return uris;
}

void openFolder(const QByteArray &path) {
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        QDesktopServices::openUrl(QUrl(fileUris({path}).constFirst()));
        return;
    }
    // Without a GUI application (the command line) the desktop's opener is asked directly.
    QProcess::startDetached(u"xdg-open"_qs, {QFile::decodeName(path)});
}

} // namespace ravelinth::platform
