#include "platform/FileManager.h"

#include "platform/WorkingFolder.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QUrl>

namespace ravelinth::platform {

namespace {

// What the desktop is handed must not depend on its own working folder; when this process's
// has no name, the path goes as given and the desktop ignores what it cannot show.
QByteArray absoluteOrAsGiven(const QByteArray &path) {
    return absolutePath(path).value_or(path);
}

} // namespace

QStringList fileUris(const QList<QByteArray> &paths) {
    QStringList uris;
    uris.reserve(paths.size());
    for (const QByteArray &path : paths)
        uris.append(u"file://"_qs +
                    QString::fromLatin1(absoluteOrAsGiven(path).toPercentEncoding("/")));
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
    QProcess::startDetached(u"xdg-open"_qs, {QFile::decodeName(absoluteOrAsGiven(path))});
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
