#include "platform/FileManager.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QUrl>

#include <cerrno>
#include <unistd.h>

namespace ravelinth::platform {

QByteArray absolutePath(const QByteArray &path) {
    if (path.startsWith('/'))
        return path;
    QByteArray folder(4096, '\0');
    while (::getcwd(folder.data(), std::size_t(folder.size())) == nullptr) {
        if (errno != ERANGE)
            return path;
        folder.resize(folder.size() * 2);
    }
    folder.truncate(qsizetype(qstrlen(folder.constData())));
    if (!folder.endsWith('/'))
        folder += '/';
    return folder + path;
}

QStringList fileUris(const QList<QByteArray> &paths) {
    QStringList uris;
    uris.reserve(paths.size());
    for (const QByteArray &path : paths)
        uris.append(u"file://"_qs + QString::fromLatin1(absolutePath(path).toPercentEncoding("/")));
    return uris;
}

namespace {

// The desktop's default application for the item, asked without waiting for it.
void openWithDesktop(const QByteArray &path) {
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        QDesktopServices::openUrl(QUrl(fileUris({path}).constFirst()));
        return;
    }
    // Without a GUI application (the command line) the desktop's opener is asked directly.
    QProcess::startDetached(u"xdg-open"_qs, {QFile::decodeName(absolutePath(path))});
}

} // namespace

void openFolder(const QByteArray &path) {
    openWithDesktop(path);
}

void openFile(const QByteArray &path) {
    openWithDesktop(path);
}

void copyTextToClipboard(const QString &text) {
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return;
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(text);
}

} // namespace ravelinth::platform
