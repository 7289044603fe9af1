#include "platform/TrashFolders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ravelinth::platform {

QByteArray parentPathOf(const QByteArray &path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

QByteArray volumeTopOf(const QByteArray &path) {
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0)
        return {};
    QByteArray current = path;
    while (current != "/") {
        const QByteArray parent = parentPathOf(current);
        struct stat parentInfo {};
        if (::stat(parent.constData(), &parentInfo) != 0 || parentInfo.st_dev != info.st_dev)
            break;
        current = parent;
    }
    return current;
}

QList<QByteArray> volumeTrashDirectories(const QByteArray &top) {
    const QByteArray base = top == "/" ? QByteArray() : top;
    const QByteArray uid = QByteArray::number(::getuid());
    return {base + "/.Trash-" + uid, base + "/.Trash/" + uid};
}

namespace {

QByteArray readSmallFile(const QByteArray &path) {
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0)
        return {};
    QByteArray contents(64 * 1024, Qt::Uninitialized);
    const ssize_t length = ::read(fd, contents.data(), size_t(contents.size()));
    ::close(fd);
    contents.resize(length < 0 ? 0 : length);
    return contents;
}

QByteArray valueOf(const QByteArray &contents, QByteArrayView key) {
    for (const QByteArray &line : contents.split('\n')) {
        if (line.startsWith(key) && line.size() > key.size() && line[key.size()] == '=')
            return line.mid(key.size() + 1).trimmed();
    }
    return {};
}

} // namespace

std::optional<TrashInfo> readTrashInfo(const QByteArray &infoPath) {
    const QByteArray contents = readSmallFile(infoPath);
    if (!contents.startsWith("[Trash Info]"))
        return std::nullopt;
    const QByteArray encoded = valueOf(contents, "Path");
    if (encoded.isEmpty())
        return std::nullopt;
    TrashInfo info;
    info.path = QByteArray::fromPercentEncoding(encoded);
    info.deletionDate =
        QDateTime::fromString(QString::fromLatin1(valueOf(contents, "DeletionDate")), Qt::ISODate);
    return info;
}

QList<QByteArray> trashInfoNames(const QByteArray &trashDirectory) {
    QList<QByteArray> names;
    DIR *directory = ::opendir((trashDirectory + "/info").constData());
    if (!directory)
        return names;
    while (dirent *entry = ::readdir(directory)) {
        const QByteArray name(entry->d_name);
        if (name.endsWith(".trashinfo") && name.size() > qsizetype(qstrlen(".trashinfo")))
            names.append(name);
    }
    ::closedir(directory);
    return names;
}

} // namespace ravelinth::platform
