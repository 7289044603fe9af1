#include "TrashInspection.h"

#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ravelinth::test {

namespace {

QByteArray parentOf(const QByteArray &path) {
    return path.left(path.lastIndexOf('/'));
}

// Through a descriptor: QFile would mangle a name that is not UTF-8.
QByteArray readBytes(const QByteArray &path) {
    QFile file;
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0 || !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return {};
    return file.readAll();
}

} // namespace

QList<QByteArray> namesIn(const QByteArray &folder) {
    QList<QByteArray> names;
    if (DIR *dir = ::opendir(folder.constData())) {
        while (const dirent *entry = ::readdir(dir)) {
            if (qstrcmp(entry->d_name, ".") != 0 && qstrcmp(entry->d_name, "..") != 0)
                names.append(QByteArray(entry->d_name));
        }
        ::closedir(dir);
    }
    std::sort(names.begin(), names.end());
    return names;
}

QByteArray snapshotOf(const QByteArray &path) {
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0)
        return {};
    QByteArray snapshot = QByteArray::number(info.st_mode, 8) + ':';
    if (S_ISREG(info.st_mode)) {
        snapshot += readBytes(path);
    } else if (S_ISLNK(info.st_mode)) {
        char target[4096];
        const ssize_t length = ::readlink(path.constData(), target, sizeof target);
        snapshot += QByteArray(target, std::max<ssize_t>(length, 0));
    } else if (S_ISDIR(info.st_mode)) {
        for (const QByteArray &name : namesIn(path))
            snapshot += '{' + name + '=' + snapshotOf(path + '/' + name) + '}';
    }
    return snapshot;
}

QByteArray recordedPath(const QByteArray &trashedItem) {
    const QByteArray name = trashedItem.mid(trashedItem.lastIndexOf('/') + 1);
    const QByteArray info =
        readBytes(parentOf(parentOf(trashedItem)) + "/info/" + name + ".trashinfo");
    for (const QByteArray &line : info.split('\n')) {
        if (line.startsWith("Path="))
            return QByteArray::fromPercentEncoding(line.mid(5));
    }
    return {};
}

QByteArray writeDistinct(TestTree &tree, QByteArrayView relative, int size) {
    const QByteArray path = tree.file(relative);
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(bytes.data()), size / 4);
    bytes.append(relative.toByteArray());
    QFile file;
    const int fd = ::open(path.constData(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0 || !file.open(fd, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
        qFatal("cannot write %s", path.constData());
    file.write(bytes);
    return path;
}

bool exists(const QByteArray &path) {
    struct stat info {};
    return ::lstat(path.constData(), &info) == 0;
}

} // namespace ravelinth::test
