#include "platform/StandardLocations.h"

#include <QDir>
#include <QStandardPaths>

namespace ravelinth::platform {

QString homeDirectory() {
    return QDir::homePath();
}

#ifdef Q_OS_MACOS

QString downloadsDirectory() {
    return homeDirectory() + u"/Downloads"_qs;
}
QString desktopDirectory() {
    return homeDirectory() + u"/Desktop"_qs;
}
QString documentsDirectory() {
    return homeDirectory() + u"/Documents"_qs;
}
QString applicationsDirectory() {
    return u"/Applications"_qs;
}
QString libraryDirectory() {
    return homeDirectory() + u"/Library"_qs;
}
QString homeTrashDirectory() {
    return homeDirectory() + u"/.Trash"_qs;
}
QString programStateDirectory() {
    return homeDirectory() + u"/Library/Application Support/Ravelinth"_qs;
}
QStringList standardUserFolders() {
    QStringList folders;
    for (const char *name :
         {"Desktop", "Documents", "Downloads", "Music", "Pictures", "Movies", "Public"})
        folders.append(homeDirectory() + u'/' + QLatin1StringView(name));
    return folders;
}

#else

namespace {
// The XDG folder when the user has one that differs from home, else home + the usual suffix.
QString xdgFolder(QStandardPaths::StandardLocation location, const QString &suffix) {
    const QString folder = QStandardPaths::writableLocation(location);
    if (folder.isEmpty() || folder == homeDirectory())
        return homeDirectory() + suffix;
    return folder;
}
} // namespace

QString downloadsDirectory() {
    return xdgFolder(QStandardPaths::DownloadLocation, u"/Downloads"_qs);
}
QString desktopDirectory() {
    return xdgFolder(QStandardPaths::DesktopLocation, u"/Desktop"_qs);
}
QString documentsDirectory() {
    return xdgFolder(QStandardPaths::DocumentsLocation, u"/Documents"_qs);
}
QString applicationsDirectory() {
    return u"/usr"_qs;
}
QString libraryDirectory() {
    const QString dataHome = qEnvironmentVariable("XDG_DATA_HOME");
    if (!dataHome.isEmpty() && QDir::isAbsolutePath(dataHome))
        return dataHome;
    return homeDirectory() + u"/.local/share"_qs;
}
QString homeTrashDirectory() {
    return libraryDirectory() + u"/Trash"_qs;
}
QString programStateDirectory() {
    const QString stateHome = qEnvironmentVariable("XDG_STATE_HOME");
    if (!stateHome.isEmpty() && QDir::isAbsolutePath(stateHome))
        return stateHome + u"/ravelinth"_qs;
    return homeDirectory() + u"/.local/state/ravelinth"_qs;
}
QStringList standardUserFolders() {
    QStringList folders;
    for (const auto location :
         {QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation,
          QStandardPaths::DownloadLocation, QStandardPaths::MusicLocation,
          QStandardPaths::PicturesLocation, QStandardPaths::MoviesLocation,
          QStandardPaths::TemplatesLocation, QStandardPaths::PublicShareLocation}) {
        const QString folder = QStandardPaths::writableLocation(location);
        // A folder the user pointed at home itself is home, which is protected on its own.
        if (!folder.isEmpty() && folder != homeDirectory())
            folders.append(folder);
    }
    return folders;
}

#endif

} // namespace ravelinth::platform
