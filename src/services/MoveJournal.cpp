#include "services/MoveJournal.h"

#include "platform/StandardLocations.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ravelinth {

namespace {

// Exact bytes as ASCII, the way trash records keep paths.
QString encodedPath(const QByteArray &path) {
    return QString::fromLatin1(path.toPercentEncoding("/"));
}
QByteArray decodedPath(const QJsonValue &value) {
    return QByteArray::fromPercentEncoding(value.toString().toLatin1());
}

QString timeText(const QDateTime &time) {
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QString systemError(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

// The journal's lines that are whole objects; a line cut short is not one.
QList<QJsonObject> readLines(const QString &filePath) {
    QList<QJsonObject> lines;
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QJsonDocument document = QJsonDocument::fromJson(line);
        if (document.isObject())
            lines.append(document.object());
    }
    return lines;
}

// Opens the journal for appending and locks it against the other processes of the program. A
// journal rewritten by another process while this one waited is opened again.
int openLocked(const QByteArray &path) {
    for (;;) {
        const int fd = ::open(path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
        if (fd < 0 || ::flock(fd, LOCK_EX) != 0) {
            if (fd >= 0)
                ::close(fd);
            return -1;
        }
        struct stat opened {};
        struct stat current {};
        if (::fstat(fd, &opened) == 0 && ::stat(path.constData(), &current) == 0 &&
            opened.st_ino == current.st_ino && opened.st_dev == current.st_dev)
            return fd;
        ::close(fd);
    }
}

bool writeAll(int fd, const QByteArray &bytes) {
    for (qsizetype written = 0; written < bytes.size();) {
        const ssize_t step =
            ::write(fd, bytes.constData() + written, size_t(bytes.size() - written));
        if (step < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        written += step;
    }
    return true;
}

} // namespace

MoveJournal::MoveJournal(QString filePath) : m_filePath(std::move(filePath)) {}

QString MoveJournal::defaultFilePath() {
    return platform::programStateDirectory() + u"/moves.jsonl"_qs;
}

std::optional<QString> MoveJournal::record(const QString &batchId, const QDateTime &time,
                                           const JournalItem &item) {
    if (batchId != m_lastBatchId) {
        m_lastBatchId = batchId;
        dropOldBatches(time);
    }
    const QJsonObject line{{u"batch"_qs, batchId},
                           {u"time"_qs, timeText(time)},
                           {u"path"_qs, encodedPath(item.originalPath)},
                           {u"trash"_qs, encodedPath(item.trashPath)},
                           {u"device"_qs, double(item.device)},
                           {u"inode"_qs, double(item.inode)},
                           {u"size"_qs, double(item.size)}};
    return append(QJsonDocument(line).toJson(QJsonDocument::Compact));
}

std::optional<QString> MoveJournal::markUndone(const QString &batchId) {
    const QJsonObject line{{u"undone"_qs, batchId},
                           {u"time"_qs, timeText(QDateTime::currentDateTimeUtc())}};
    return append(QJsonDocument(line).toJson(QJsonDocument::Compact));
}

std::optional<QString> MoveJournal::append(const QByteArray &line) {
    const QString folder = QFileInfo(m_filePath).absolutePath();
    if (!QDir().mkpath(folder))
        return u"Cannot make the folder "_qs + folder;
    const int fd = openLocked(QFile::encodeName(m_filePath));
    if (fd < 0)
        return systemError(errno);
    // A line cut short by a crash is left alone; this one starts on a line of its own.
    QByteArray bytes = line + '\n';
    struct stat info {};
    char last = '\n';
    if (::fstat(fd, &info) == 0 && info.st_size > 0 &&
        ::pread(fd, &last, 1, info.st_size - 1) == 1 && last != '\n')
        bytes.prepend('\n');
    const bool written = writeAll(fd, bytes) && ::fsync(fd) == 0;
    const int error = errno;
    ::close(fd);
    if (!written)
        return systemError(error);
    return std::nullopt;
}

QList<JournalBatch> MoveJournal::batches() const {
    QList<JournalBatch> batches;
    QHash<QString, qsizetype> indexOf;
    for (const QJsonObject &line : readLines(m_filePath)) {
        if (line.contains(u"undone")) {
            const auto found = indexOf.constFind(line.value(u"undone").toString());
            if (found != indexOf.cend())
                batches[*found].undone = true;
            continue;
        }
        const QString id = line.value(u"batch").toString();
        if (id.isEmpty())
            continue;
        auto found = indexOf.constFind(id);
        if (found == indexOf.cend()) {
            found = indexOf.insert(id, batches.size());
            batches.append(JournalBatch{
                id,
                QDateTime::fromString(line.value(u"time").toString(), Qt::ISODateWithMs),
                {},
                false});
        }
        batches[*found].items.append(JournalItem{
            decodedPath(line.value(u"path")), decodedPath(line.value(u"trash")),
            quint64(line.value(u"device").toDouble()), quint64(line.value(u"inode").toDouble()),
            qint64(line.value(u"size").toDouble())});
    }
    return batches;
}

std::optional<JournalBatch> MoveJournal::latestBatchToUndo() const {
    const QList<JournalBatch> all = batches();
    for (auto batch = all.crbegin(); batch != all.crend(); ++batch) {
        if (!batch->undone)
            return *batch;
    }
    return std::nullopt;
}

void MoveJournal::dropOldBatches(const QDateTime &now) {
    const QList<JournalBatch> all = batches();
    const QDateTime oldest = now.addDays(-keptDays);
    QSet<QString> kept;
    for (qsizetype i = all.size() - 1; i >= 0 && kept.size() < keptBatches; --i) {
        if (all[i].time >= oldest)
            kept.insert(all[i].id);
    }
    if (kept.size() == all.size())
        return;
    const QByteArray path = QFile::encodeName(m_filePath);
    const int lock = openLocked(path);
    if (lock < 0)
        return;
    // The lines of the kept batches, as they were, into a new file that replaces the old one
    // whole: a crash leaves one or the other, never a mix.
    QFile current(m_filePath);
    QSaveFile rewritten(m_filePath);
    if (current.open(QIODevice::ReadOnly) && rewritten.open(QIODevice::WriteOnly)) {
        rewritten.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        for (const QByteArray &line : current.readAll().split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            const QString id = object.contains(u"undone") ? object.value(u"undone").toString()
                                                          : object.value(u"batch").toString();
            if (kept.contains(id))
                rewritten.write(line + '\n');
        }
        rewritten.commit();
    }
    ::close(lock);
}

} // namespace ravelinth
