#include "TestTree.h"
#include "services/TrashService.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

#include <dirent.h>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ravelinth;
using ravelinth::test::ScopedTestEnvironment;
using ravelinth::test::TestTree;

namespace {

constexpr uid_t nobody = 65534;

bool isValidUtf8(const QByteArray &bytes) {
    return QString::fromUtf8(bytes).toUtf8() == bytes;
}

QByteArray parentOf(const QByteArray &path) {
    return path.left(path.lastIndexOf('/'));
}

QByteArray nameOf(const QByteArray &path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

QString run(const QString &program, const QStringList &arguments, int *exitCode = nullptr) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(60000);
    if (exitCode)
        *exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return QString::fromLocal8Bit(process.readAll());
}

// Who runs a batch and the tools that check it: root in this process's test environment, or an
// unprivileged user with a home and data folder of its own.
struct Actor {
    std::optional<uid_t> uid;
    QByteArray home;
    QByteArray dataHome;

    QByteArray run(const QString &program, const QStringList &arguments,
                   const QByteArray &input = {}, int *exitCode = nullptr) const {
        QStringList list = arguments;
        QString executable = program;
        if (uid) {
            const QString id = QString::number(*uid);
            list = QStringList{u"--reuid="_qs + id,
                               u"--regid="_qs + id,
                               u"--clear-groups"_qs,
                               u"env"_qs,
                               u"HOME="_qs + QFile::decodeName(home),
                               u"XDG_DATA_HOME="_qs + QFile::decodeName(dataHome),
                               u"XDG_RUNTIME_DIR="_qs + QFile::decodeName(home),
                               program} +
                   arguments;
            executable = u"setpriv"_qs;
        }
        QProcess process;
        process.start(executable, list);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(60000))
            qFatal("%s did not finish", qPrintable(program));
        if (exitCode)
            *exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        return process.readAllStandardOutput();
    }
};

// What a path holds, deep enough to tell whether anything changed: the type and mode, the
// bytes of a file, the target of a link, and the same for everything inside a folder.
QByteArray snapshotOf(const QByteArray &path) {
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0)
        return {};
    QByteArray snapshot = QByteArray::number(info.st_mode, 8) + ':';
    if (S_ISREG(info.st_mode)) {
        QFile file;
        const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        if (fd < 0 || !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
            qFatal("cannot read %s", path.constData());
        snapshot += file.readAll();
    } else if (S_ISLNK(info.st_mode)) {
        char target[4096];
        const ssize_t length = ::readlink(path.constData(), target, sizeof target);
        snapshot += QByteArray(target, length < 0 ? 0 : length);
    } else if (S_ISDIR(info.st_mode)) {
        QList<QByteArray> names;
        if (DIR *dir = ::opendir(path.constData())) {
            while (const dirent *entry = ::readdir(dir)) {
                const QByteArray name(entry->d_name);
                if (name != "." && name != "..")
                    names.append(name);
            }
            ::closedir(dir);
        }
        std::sort(names.begin(), names.end());
        for (const QByteArray &name : std::as_const(names))
            snapshot += '{' + name + '=' + snapshotOf(path + '/' + name) + '}';
    }
    return snapshot;
}

QList<QByteArray> namesIn(const QByteArray &folder) {
    QList<QByteArray> names;
    if (DIR *dir = ::opendir(folder.constData())) {
        while (const dirent *entry = ::readdir(dir))
            names.append(QByteArray(entry->d_name));
        ::closedir(dir);
    }
    return names;
}

// trash-cli writes names that are not UTF-8 with one replacement character per bad byte, Qt
// sometimes with one per sequence: compare with runs of them folded into one.
QString foldReplacements(QString text) {
    static const QRegularExpression runs(u"\uFFFD+"_qs);
    return text.replace(runs, u"\uFFFD"_qs);
}

QString shownPath(const QByteArray &path) {
    return foldReplacements(QString::fromUtf8(path));
}

// The original locations that trash-list reads back from the .trashinfo files, in its order.
QStringList trashListLocations(const Actor &actor) {
    const QString listed = QString::fromUtf8(actor.run(u"trash-list"_qs, {}));
    static const QRegularExpression entry(
        u"^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d (/.*?)$(?=\\n\\d{4}-\\d\\d-\\d\\d |\\n?\\z)"_qs,
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    QStringList locations;
    for (const auto &match : entry.globalMatch(listed))
        locations.append(foldReplacements(match.captured(1)));
    return locations;
}

// Puts one trashed item back with trash-restore, choosing it by its original location from
// the tool's own numbered list. Returns the path the tool restored it to (trash-cli writes a
// name that is not UTF-8 back with replacement characters), or nothing.
std::optional<QByteArray> restoreWithTrashCli(const Actor &actor, const QByteArray &path) {
    const QByteArray folder = parentOf(path);
    const QList<QByteArray> before = namesIn(folder);
    const QString listing =
        QString::fromUtf8(actor.run(u"trash-restore"_qs, {QFile::decodeName(folder)}, "\n"));
    static const QRegularExpression entry(
        u"^ *(\\d+) \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d (/.*?)$(?=\\n *\\d+ \\d{4}-|\\nWhat file)"_qs,
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    QList<int> matches;
    for (const auto &match : entry.globalMatch(listing)) {
        if (foldReplacements(match.captured(2)) == shownPath(path))
            matches.append(match.captured(1).toInt());
    }
    if (matches.size() != 1)
        return std::nullopt;
    actor.run(u"trash-restore"_qs, {QFile::decodeName(folder)},
              QByteArray::number(matches.first()) + '\n');
    for (const QByteArray &name : namesIn(folder)) {
        if (!before.contains(name))
            return folder + '/' + name;
    }
    return std::nullopt;
}

// The path recorded in the .trashinfo beside a trashed item, percent-decoded to bytes.
QByteArray recordedPath(const QByteArray &trashedItem) {
    const QByteArray trashDirectory = parentOf(parentOf(trashedItem));
    const QByteArray infoPath = trashDirectory + "/info/" + nameOf(trashedItem) + ".trashinfo";
    QFile info;
    const int fd = ::open(infoPath.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0 || !info.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return {};
    for (const QByteArray &line : info.readAll().split('\n')) {
        if (line.startsWith("Path="))
            return QByteArray::fromPercentEncoding(line.mid(5));
    }
    return {};
}

struct Totals {
    int cases = 0;
    int moved = 0;
    int refused = 0;
    int restored = 0;
    int restoredUnderReplacedName = 0;
    int lost = 0;
};

// One batch of moves and the check that nothing was lost: every input that existed is either
// still at its path, unchanged, or listed by trash-list under its original path, and
// trash-restore brings back the same bytes.
class Batch {
public:
    Batch(Actor actor, Totals &totals) : m_actor(std::move(actor)), m_totals(totals) {}

    // `volumeTop` is the mount point whose own trash receives the item, empty for the home
    // trash. `shallow` compares only the identity of a big folder such as "/" or the home.
    void add(const QByteArray &path, bool shouldMove, QByteArray volumeTop = {},
             bool shallow = false) {
        m_inputs.append({path, shouldMove, std::move(volumeTop), shallow,
                         shallow ? identityOf(path) : snapshotOf(path)});
    }

    QList<QByteArray> paths() const {
        QList<QByteArray> paths;
        for (const Input &input : m_inputs)
            paths.append(input.path);
        return paths;
    }

    // `moved` is the per-input outcome that the program reported.
    void check(const QList<bool> &moved, const QList<std::optional<QByteArray>> &trashPaths) {
        QCOMPARE(moved.size(), m_inputs.size());
        const QStringList listed = trashListLocations(m_actor);
        QSet<QByteArray> seen;
        for (qsizetype i = 0; i < m_inputs.size(); ++i) {
            const Input &input = m_inputs[i];
            ++m_totals.cases;
            const bool repeat = seen.contains(input.path);
            seen.insert(input.path);
            QVERIFY2(moved[i] == (input.shouldMove && !repeat),
                     qPrintable(u"unexpected outcome for "_qs + shownPath(input.path)));
            if (moved[i])
                ++m_totals.moved;
            else
                ++m_totals.refused;
            if (input.before.isEmpty() || repeat)
                continue; // nothing was there to lose
            const QByteArray now = input.shallow ? identityOf(input.path) : snapshotOf(input.path);
            if (!now.isEmpty()) {
                if (now != input.before) {
                    ++m_totals.lost;
                    QFAIL(qPrintable(u"changed in place: "_qs + shownPath(input.path)));
                }
                continue;
            }
            QVERIFY2(moved[i], qPrintable(u"gone but not moved: "_qs + shownPath(input.path)));
            if (trashPaths[i]) {
                const QByteArray relative = input.volumeTop.isEmpty()
                                                ? input.path
                                                : input.path.mid(input.volumeTop.size() + 1);
                QCOMPARE(recordedPath(*trashPaths[i]), relative);
            }
            if (!listed.contains(shownPath(input.path))) {
                ++m_totals.lost;
                QFAIL(qPrintable(u"not listed by trash-list: "_qs + shownPath(input.path) +
                                 u"\n"_qs + listed.join(u'\n')));
            }
            const std::optional<QByteArray> restored = restoreWithTrashCli(m_actor, input.path);
            if (!restored || snapshotOf(*restored) != input.before) {
                ++m_totals.lost;
                QFAIL(qPrintable(u"trash-restore did not bring back "_qs + shownPath(input.path)));
            }
            ++m_totals.restored;
            if (*restored != input.path) {
                // Only a name that is not UTF-8 may come back spelt differently; put it back.
                QVERIFY(!isValidUtf8(input.path));
                ++m_totals.restoredUnderReplacedName;
                QCOMPARE(::rename(restored->constData(), input.path.constData()), 0);
            }
            QCOMPARE(snapshotOf(input.path), input.before);
        }
    }

private:
    static QByteArray identityOf(const QByteArray &path) {
        struct stat info {};
        if (::lstat(path.constData(), &info) != 0)
            return {};
        return QByteArray::number(quint64(info.st_dev)) + ':' +
               QByteArray::number(quint64(info.st_ino)) + ':' + QByteArray::number(info.st_mode, 8);
    }

    struct Input {
        QByteArray path;
        bool shouldMove;
        QByteArray volumeTop;
        bool shallow;
        QByteArray before;
    };
    Actor m_actor;
    Totals &m_totals;
    QList<Input> m_inputs;
};

// Fills a file with bytes no two files share, so a mix-up cannot go unnoticed.
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

QList<bool> movedFlags(const QList<TrashResult> &results) {
    QList<bool> moved;
    for (const TrashResult &result : results)
        moved.append(std::holds_alternative<TrashSuccess>(result));
    return moved;
}

QList<std::optional<QByteArray>> trashPathsOf(const QList<TrashResult> &results) {
    QList<std::optional<QByteArray>> paths;
    for (const TrashResult &result : results) {
        const auto *success = std::get_if<TrashSuccess>(&result);
        paths.append(success ? success->trashPath : std::nullopt);
    }
    return paths;
}

// A real second file system: an ext4 image on a loop device (read-only on request), or tmpfs.
class Mount {
public:
    Mount(const QByteArray &where, const QString &kind) : m_where(where) {
        QDir().mkpath(QFile::decodeName(where));
        int code = -1;
        if (kind.startsWith(u"ext4")) {
            const QString image = QFile::decodeName(where) + u".img"_qs;
            run(u"truncate"_qs, {u"-s"_qs, u"32M"_qs, image});
            run(u"mkfs.ext4"_qs, {u"-q"_qs, u"-F"_qs, image});
            m_output =
                run(u"mount"_qs, {u"-o"_qs, u"loop"_qs, image, QFile::decodeName(where)}, &code);
        } else {
            m_output = run(u"mount"_qs,
                           {u"-t"_qs, u"tmpfs"_qs, u"none"_qs, QFile::decodeName(where)}, &code);
        }
        m_mounted = code == 0;
    }
    ~Mount() {
        if (m_mounted)
            ::umount2(m_where.constData(), MNT_DETACH);
    }
    bool mounted() const { return m_mounted; }
    QString output() const { return m_output; }
    bool remountReadOnly() {
        int code = -1;
        m_output =
            run(u"mount"_qs, {u"-o"_qs, u"remount,ro"_qs, QFile::decodeName(m_where)}, &code);
        return code == 0;
    }

private:
    QByteArray m_where;
    QString m_output;
    bool m_mounted = false;
};

bool chattr(const QByteArray &path, const char *flag) {
    int code = -1;
    run(u"chattr"_qs, {QLatin1StringView(flag), QFile::decodeName(path)}, &code);
    return code == 0;
}

} // namespace

class TrashTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    ScopedTestEnvironment environment;
    Totals totals;

    Actor root() const { return {std::nullopt, environment.home(), environment.dataHome()}; }

private slots:
    void cleanupTestCase() {
        qInfo("trash matrix: %d cases, %d moved, %d refused, %d restored by trash-restore (%d "
              "under a replaced name), %d lost",
              totals.cases, totals.moved, totals.refused, totals.restored,
              totals.restoredUnderReplacedName, totals.lost);
        QCOMPARE(totals.lost, 0);
    }

    void homeTrashBatchLosesNothing() {
        TestTree tree;
        Batch batch(root(), totals);
        const QByteArray plain = writeDistinct(tree, "Downloads/setup.dmg", 4096);
        batch.add(plain, true);
        batch.add(tree.file("empty.txt"), true);
        // Names that are not UTF-8, each still told apart once shown with replacement marks.
        for (const QByteArray &name :
             {QByteArray("caf\xe9.iso"), QByteArray("\xff\xfe"),
              QByteArray("\xc0\xaf"
                         "overlong.txt"),
              QByteArray("\xed\xa0\x80"
                         "surrogate.txt"),
              QByteArray("trunc\xc3"), QByteArray("mixed \xe9t\xc3\xa9.mkv"),
              QByteArray("\xe9\n\"\\.dmg")})
            batch.add(writeDistinct(tree, "odd/" + name, 64), true);
        for (const QByteArray &name :
             {QByteArray("line\nbreak.mov"), QByteArray("\"double\" 'single'.pdf"),
              QByteArray("back\\slash%25.txt"), QByteArray("--help"), QByteArray(" "),
              QByteArray("\xe2\x80\xae"
                         "gpj.exe"),
              QByteArray("[Trash Info]")})
            batch.add(writeDistinct(tree, "odd/" + name, 32), true);
        // The longest name a folder takes leaves no room for ".trashinfo": refused, kept.
        batch.add(writeDistinct(tree, "odd/" + QByteArray(251, 'x') + ".iso", 32), false);
        // Two files of the same name from different folders meet in one Trash.
        batch.add(writeDistinct(tree, "a/same.bin", 100), true);
        batch.add(writeDistinct(tree, "b/same.bin", 100), true);
        batch.add(tree.symlink("nowhere", "dangling"), true);
        const QByteArray target = writeDistinct(tree, "target.bin", 50);
        batch.add(tree.symlink(target, "link-to-target"), true);
        const QByteArray targetBefore = snapshotOf(target);
        writeDistinct(tree, "folder/inner.txt", 30);
        writeDistinct(tree, "folder/caf\xe9/deeper.bin", 30);
        batch.add(tree.path("folder"), true);
        batch.add(tree.path("missing.pdf"), false);
        const QByteArray twice = writeDistinct(tree, "twice.zip", 5);
        batch.add(twice, true);
        batch.add(twice, true); // gone by the second time
        batch.add("/tmp/../etc/hosts", false);
        batch.add(environment.home(), false, {}, true);
        batch.add("/", false, {}, true);
        batch.add(tree.symlink("/usr", "system-link") + "/bin", false, {}, true);

        const QList<QByteArray> paths = batch.paths();
        const QList<TrashResult> results = TrashService().moveToTrash(paths).result();
        QCOMPARE(results.size(), paths.size());
        for (qsizetype i = 0; i < results.size(); ++i) {
            if (const auto *success = std::get_if<TrashSuccess>(&results[i])) {
                QCOMPARE(success->originalPath, paths[i]);
                QVERIFY2(success->trashPath.value_or("").startsWith(environment.dataHome() +
                                                                    "/Trash/files/"),
                         qPrintable(shownPath(paths[i])));
            } else {
                QCOMPARE(std::get<TrashFailure>(results[i]).path, paths[i]);
            }
        }
        const auto errorOf = [&](const QByteArray &path) {
            const auto *failure = std::get_if<TrashFailure>(&results[paths.lastIndexOf(path)]);
            return failure ? failure->error : QString();
        };
        QVERIFY(errorOf(tree.path("missing.pdf"))
                    .startsWith(u"Failed to move 'missing.pdf' to Trash: "_qs));
        QVERIFY(errorOf(twice).startsWith(u"Failed to move 'twice.zip' to Trash: "_qs));
        QVERIFY(errorOf("/").endsWith(u"to Trash: Protected system location"_qs));
        QVERIFY(errorOf(environment.home()).endsWith(u"Protected system location"_qs));

        batch.check(movedFlags(results), trashPathsOf(results));
        QCOMPARE(snapshotOf(target), targetBefore); // the link went, what it points at stays
    }

    void secondFileSystemUsesItsOwnTrashAndKeepsLockedFiles() {
        if (::geteuid() != 0)
            QSKIP("mounting a second file system needs root");
        TestTree tree;
        Mount ext4(tree.path("ext4"), u"ext4"_qs);
        QVERIFY2(ext4.mounted(), qPrintable(ext4.output()));
        const QByteArray top = tree.path("ext4");
        Batch batch(root(), totals);
        const QByteArray movie = writeDistinct(tree, "ext4/movie.mkv", 1000);
        batch.add(movie, true, top);
        batch.add(writeDistinct(tree, "ext4/caf\xe9 \xff.iso", 100), true, top);
        batch.add(writeDistinct(tree, "ext4/line\nbreak.txt", 100), true, top);
        writeDistinct(tree, "ext4/folder/a.bin", 100);
        batch.add(tree.path("ext4/folder"), true, top);
        batch.add(tree.symlink("nowhere", "ext4/dangling"), true, top);
        const QByteArray locked = writeDistinct(tree, "ext4/locked.bin", 100);
        QVERIFY(chattr(locked, "+i"));
        batch.add(locked, false, top);
        const QByteArray inLockedFolder = writeDistinct(tree, "ext4/sealed/inside.bin", 100);
        QVERIFY(chattr(tree.path("ext4/sealed"), "+i"));
        batch.add(inLockedFolder, false, top);
        const QByteArray appendOnly = writeDistinct(tree, "ext4/append-only.log", 100);
        QVERIFY(chattr(appendOnly, "+a"));
        batch.add(appendOnly, false, top);
        batch.add(movie, true, top);
        batch.add(tree.path("ext4/missing"), false, top);

        const QList<TrashResult> results = TrashService::moveToTrashNow(batch.paths());
        chattr(locked, "-i");
        chattr(tree.path("ext4/sealed"), "-i");
        chattr(appendOnly, "-a");
        const auto *first = std::get_if<TrashSuccess>(&results[0]);
        QVERIFY(first);
        QCOMPARE(first->trashPath.value_or(""), top + "/.Trash-0/files/movie.mkv");
        const auto *lockedFailure = std::get_if<TrashFailure>(&results[5]);
        QVERIFY(lockedFailure);
        QVERIFY(lockedFailure->error.startsWith(u"Failed to move 'locked.bin' to Trash: "_qs));
        batch.check(movedFlags(results), trashPathsOf(results));
    }

    void volumesWithoutAUsableTrashRefuse() {
        if (::geteuid() != 0)
            QSKIP("mounting a second file system needs root");
        TestTree tree;
        Mount tmpfs(tree.path("tmpfs"), u"tmpfs"_qs);
        QVERIFY2(tmpfs.mounted(), qPrintable(tmpfs.output()));
        Mount readOnly(tree.path("ro"), u"ext4"_qs);
        QVERIFY2(readOnly.mounted(), qPrintable(readOnly.output()));
        const QByteArray onReadOnly = writeDistinct(tree, "ro/kept.iso", 100);
        QVERIFY2(readOnly.remountReadOnly(), qPrintable(readOnly.output()));

        Batch batch(root(), totals);
        batch.add(writeDistinct(tree, "tmpfs/clip.mov", 1000), false, tree.path("tmpfs"));
        batch.add(onReadOnly, false, tree.path("ro"));
        const QList<TrashResult> results = TrashService::moveToTrashNow(batch.paths());
        batch.check(movedFlags(results), trashPathsOf(results));
    }

    void anUnprivilegedUserMovesOnlyWhatItMay() {
        if (::geteuid() != 0)
            QSKIP("dropping to another user needs root");
        TestTree tree;
        ::chmod(tree.root().constData(), 0755);
        const QByteArray home = tree.folder("nobody-home");
        const Actor user{nobody, home, home + "/.local/share"};
        QDir().mkpath(QFile::decodeName(user.dataHome));
        run(u"chown"_qs, {u"-R"_qs, u"65534:65534"_qs, QFile::decodeName(home)});
        ::chmod(home.constData(), 0700);

        Batch batch(user, totals);
        const QByteArray own = writeDistinct(tree, "nobody-home/mine.iso", 200);
        const QByteArray ownOdd = writeDistinct(tree, "nobody-home/caf\xe9\n.iso", 200);
        ::chown(own.constData(), nobody, nobody);
        ::chown(ownOdd.constData(), nobody, nobody);
        batch.add(own, true);
        batch.add(ownOdd, true);
        // A folder it may not write to: the file cannot leave it.
        batch.add(writeDistinct(tree, "owned-by-root/keep.iso", 100), false);
        // A sticky shared folder: another user's file stays.
        const QByteArray shared = tree.folder("shared");
        ::chmod(shared.constData(), 01777);
        batch.add(writeDistinct(tree, "shared/roots.iso", 100), false);
        batch.add("/etc/hosts", false);
        batch.add(home, false, {}, true);

        // Arguments cannot carry bytes that are not UTF-8 through QProcess: xargs reads them
        // from a NUL-separated list instead.
        const QByteArray arguments = batch.paths().join('\0') + '\0';
        int code = -1;
        const QByteArray output =
            user.run(u"xargs"_qs,
                     {u"-0"_qs, QStringLiteral(RAVELINTH_EXECUTABLE), u"trash"_qs, u"--json"_qs},
                     arguments, &code);
        QCOMPARE(code, 123); // xargs: the command exited with 1, some paths were not moved
        const QJsonArray results = QJsonDocument::fromJson(output).array();
        QList<bool> moved;
        QList<std::optional<QByteArray>> trashPaths;
        for (const QJsonValue &result : results) {
            const QJsonObject object = result.toObject();
            moved.append(object.value(u"success").toBool());
            trashPaths.append(std::nullopt);
            if (!moved.last())
                QVERIFY(object.value(u"error").toString().startsWith(u"Failed to move '"_qs));
        }
        QCOMPARE(results[4].toObject().value(u"error").toString(),
                 u"Failed to move 'hosts' to Trash: Protected system location"_qs);
        batch.check(moved, trashPaths);
    }

    void emptyBatchTouchesNothing() {
        QVERIFY(TrashService::moveToTrashNow(QList<QByteArray>{}).isEmpty());
        QCOMPARE(TrashError::makeFileNotFound("/Users/a/b/report.pdf").description(),
                 u"File not found: /Users/a/b/report.pdf"_qs);
        QCOMPARE(TrashError::makeMoveFailed("/Users/a/b/report.pdf", u"why"_qs).description(),
                 u"Failed to move 'report.pdf' to Trash: why"_qs);
    }
};

QTEST_GUILESS_MAIN(TrashTest)
#include "tst_trash.moc"
