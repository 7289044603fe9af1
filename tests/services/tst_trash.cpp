#include "Programs.h"
#include "TestTree.h"
#include "platform/Trash.h"
#include "services/TrashService.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace ravelinth;
using namespace ravelinth::test;

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

// What a path holds, deep enough to tell whether anything changed: the type and mode, the bytes
// of a file, the target of a link, and the same for everything inside a folder.
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

// trash-cli writes names that are not UTF-8 with one replacement character per bad byte, Qt
// sometimes with one per sequence: compare with runs of them folded into one.
QString shown(QString text) {
    static const QRegularExpression runs(u"\uFFFD+"_qs);
    return text.replace(runs, u"\uFFFD"_qs);
}

QString shown(const QByteArray &path) {
    return shown(QString::fromUtf8(path));
}

// Puts one trashed item back with trash-restore, chosen by its original location, which proves
// that the item is in the Trash and recorded under that location. Returns where the tool put it
// (a name that is not UTF-8 comes back with replacement characters), or nothing.
std::optional<QByteArray> restoreWithTrashCli(const User &user, const QByteArray &path) {
    const QByteArray folder = parentOf(path);
    const QList<QByteArray> before = namesIn(folder);
    const QStringList arguments{QFile::decodeName(folder)};
    // trash-restore numbers the items trashed from below `folder`, with their original locations
    // read back from the .trashinfo files; without an answer it only lists them.
    static const QRegularExpression entry(
        u"^ *(\\d+) \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d (/.*?)$"
        u"(?=\\n *\\d+ \\d{4}-|\\nWhat file)"_qs,
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    QList<int> choices;
    const QString listing = QString::fromUtf8(run(u"trash-restore"_qs, arguments, user, "\n").out);
    for (const auto &match : entry.globalMatch(listing)) {
        if (shown(match.captured(2)) == shown(path))
            choices.append(match.captured(1).toInt());
    }
    if (choices.size() != 1)
        return std::nullopt;
    run(u"trash-restore"_qs, arguments, user, QByteArray::number(choices.first()) + '\n');
    for (const QByteArray &name : namesIn(folder)) {
        if (!before.contains(name))
            return folder + '/' + name;
    }
    return std::nullopt;
}

// The path recorded in the .trashinfo beside a trashed item, percent-decoded to bytes.
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

// One batch of moves and the check that nothing was lost: every input that existed is either
// still at its path, unchanged, or in the Trash under its original path, from where
// trash-restore brings back the same bytes.
class Batch {
public:
    explicit Batch(User user) : m_user(std::move(user)) {}

    // `volumeTop` is the mount point whose own .Trash-0 receives the item, empty for the home
    // trash.
    void add(const QByteArray &path, bool shouldMove, const QByteArray &volumeTop = {}) {
        m_inputs.append({path, shouldMove, volumeTop, snapshotOf(path)});
    }

    QList<QByteArray> paths() const {
        QList<QByteArray> paths;
        for (const Input &input : m_inputs)
            paths.append(input.path);
        return paths;
    }

    void check(const QList<TrashResult> &results) {
        QCOMPARE(results.size(), m_inputs.size());
        QList<bool> moved;
        QList<std::optional<QByteArray>> trashPaths;
        for (qsizetype i = 0; i < results.size(); ++i) {
            const Input &input = m_inputs[i];
            const auto *success = std::get_if<TrashSuccess>(&results[i]);
            moved.append(success != nullptr);
            trashPaths.append(success ? success->trashPath : std::nullopt);
            if (!success) {
                QCOMPARE(std::get<TrashFailure>(results[i]).path, input.path);
                continue;
            }
            QCOMPARE(success->originalPath, input.path);
            const QByteArray trash = input.volumeTop.isEmpty() ? m_user.dataHome + "/Trash"
                                                               : input.volumeTop + "/.Trash-0";
            QVERIFY2(success->trashPath.value_or("").startsWith(trash + "/files/"),
                     qPrintable(shown(input.path)));
        }
        check(moved, trashPaths);
    }

    // `moved` is the per-input outcome that the program reported.
    void check(const QList<bool> &moved, const QList<std::optional<QByteArray>> &trashPaths = {}) {
        QCOMPARE(moved.size(), m_inputs.size());
        for (qsizetype i = 0; i < m_inputs.size(); ++i) {
            const Input &input = m_inputs[i];
            const QString shownPath = shown(input.path);
            const bool repeat = paths().indexOf(input.path) < i;
            QVERIFY2(moved[i] == (input.shouldMove && !repeat),
                     qPrintable(u"unexpected outcome for "_qs + shownPath));
            if (input.before.isEmpty() || repeat)
                continue; // nothing was there to lose
            const QByteArray now = snapshotOf(input.path);
            if (!now.isEmpty()) {
                QVERIFY2(now == input.before, qPrintable(u"changed in place: "_qs + shownPath));
                continue;
            }
            QVERIFY2(moved[i], qPrintable(u"gone but not moved: "_qs + shownPath));
            if (i < trashPaths.size() && trashPaths[i]) {
                QCOMPARE(recordedPath(*trashPaths[i]),
                         input.volumeTop.isEmpty() ? input.path
                                                   : input.path.mid(input.volumeTop.size() + 1));
            }
            const std::optional<QByteArray> restored = restoreWithTrashCli(m_user, input.path);
            QVERIFY2(restored && snapshotOf(*restored) == input.before,
                     qPrintable(u"trash-restore did not bring back "_qs + shownPath));
            if (*restored != input.path) {
                // Only a name that is not UTF-8 may come back spelt differently; put it back.
                QVERIFY(QString::fromUtf8(input.path).toUtf8() != input.path);
                QCOMPARE(::rename(restored->constData(), input.path.constData()), 0);
            }
            QCOMPARE(snapshotOf(input.path), input.before);
        }
    }

private:
    struct Input {
        QByteArray path;
        bool shouldMove;
        QByteArray volumeTop;
        QByteArray before;
    };
    User m_user;
    QList<Input> m_inputs;
};

// Fills a file with bytes no two files share, so a mix-up cannot go unnoticed.
QByteArray writeDistinct(TestTree &tree, QByteArrayView relative, int size = 64) {
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

// A real second file system: an ext4 image on a loop device, or tmpfs.
class Mount {
public:
    Mount(const QByteArray &where, bool ext4) : m_where(QFile::decodeName(where)) {
        QDir().mkpath(m_where);
        const QString image = m_where + u".img"_qs;
        if (ext4) {
            run(u"truncate"_qs, {u"-s"_qs, u"32M"_qs, image});
            run(u"mkfs.ext4"_qs, {u"-q"_qs, u"-F"_qs, image});
        }
        m_mounted = mount(ext4 ? QStringList{u"-o"_qs, u"loop"_qs, image, m_where}
                               : QStringList{u"-t"_qs, u"tmpfs"_qs, u"none"_qs, m_where});
    }
    ~Mount() {
        if (m_mounted)
            ::umount2(QFile::encodeName(m_where).constData(), MNT_DETACH);
    }
    bool mounted() const { return m_mounted; }
    const char *output() const { return m_output.constData(); }
    bool remountReadOnly() { return mount({u"-o"_qs, u"remount,ro"_qs, m_where}); }

private:
    bool mount(const QStringList &arguments) {
        const ProcessOutput output = run(u"mount"_qs, arguments);
        m_output = output.out + output.err;
        return output.exitCode == 0;
    }
    QString m_where;
    QByteArray m_output;
    bool m_mounted = false;
};

bool chattr(const QByteArray &path, const char *flag) {
    return run(u"chattr"_qs, {QLatin1StringView(flag), QFile::decodeName(path)}).exitCode == 0;
}

// The command line run from `workingFolder` through the shell, so that the folder may be one the
// shell leaves or deletes first (`prelude`); arguments are passed as the shell's own.
ProcessOutput trashFrom(const QByteArray &workingFolder, const QByteArray &prelude,
                        const QList<QByteArray> &arguments) {
    QStringList list{u"-c"_qs,
                     QFile::decodeName("cd \"$1\" && shift && " + prelude + " exec \"$@\""),
                     u"sh"_qs,
                     QFile::decodeName(workingFolder),
                     QStringLiteral(RAVELINTH_EXECUTABLE),
                     u"trash"_qs};
    for (const QByteArray &argument : arguments)
        list.append(QFile::decodeName(argument));
    return run(u"sh"_qs, list);
}

// `ravelinth trash` started by a child of this process, which first changes folder one step at
// a time (deeper than a shell's `cd` can go). Its standard output is the pipe that `output`
// reads, so the test decides when the command may write on; `finish` waits for its exit code.
class TrashChild {
public:
    TrashChild(const QList<QByteArray> &steps, QList<QByteArray> arguments) {
        const QByteArray program = RAVELINTH_EXECUTABLE;
        arguments.prepend("trash");
        arguments.prepend(program);
        std::vector<char *> argv;
        for (QByteArray &argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        int pipe[2];
        if (::pipe(pipe) != 0)
            qFatal("no pipe");
        m_pid = ::fork();
        if (m_pid == 0) {
            ::dup2(pipe[1], STDOUT_FILENO);
            ::close(pipe[0]);
            for (const QByteArray &step : steps) {
                if (::chdir(step.constData()) != 0)
                    ::_exit(126);
            }
            ::execv(program.constData(), argv.data());
            ::_exit(127);
        }
        ::close(pipe[1]);
        output.open(pipe[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    }
    void interrupt() { ::kill(m_pid, SIGINT); }
    int finish() {
        int status = 0;
        ::waitpid(m_pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    QFile output;

private:
    pid_t m_pid = -1;
};

bool exists(const QByteArray &path) {
    struct stat info {};
    return ::lstat(path.constData(), &info) == 0;
}

} // namespace

class TrashTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    ScopedTestEnvironment environment;
    const User root{std::nullopt, environment.home(), environment.dataHome()};

private slots:
    void homeTrashBatchLosesNothing() {
        QVERIFY(TrashService::moveToTrashNow(QList<QByteArray>{}).isEmpty());
        TestTree tree;
        Batch batch(root);
        batch.add(writeDistinct(tree, "Downloads/setup.dmg", 4096), true);
        batch.add(tree.file("empty.txt"), true);
        // Names that are not UTF-8, each still told apart once shown with replacement marks, and
        // names that trip up quoting, escaping or the .trashinfo format.
        for (const QByteArray name :
             {"caf\xe9.iso", "\xff\xfe", "\xc0\xafoverlong.txt", "\xed\xa0\x80surrogate.txt",
              "trunc\xc3", "mixed \xe9t\xc3\xa9.mkv", "\xe9\n\"\\.dmg", "line\nbreak.mov",
              "\"double\" 'single'.pdf", "back\\slash%25.txt", "--help", " ", "\xe2\x80\xaegpj.exe",
              "[Trash Info]"})
            batch.add(writeDistinct(tree, "odd/" + name), true);
        // The longest name a folder takes leaves no room for ".trashinfo": refused, kept.
        batch.add(writeDistinct(tree, "odd/" + QByteArray(251, 'x') + ".iso"), false);
        // Two files of the same name from different folders meet in one Trash.
        batch.add(writeDistinct(tree, "a/same.bin"), true);
        batch.add(writeDistinct(tree, "b/same.bin"), true);
        batch.add(tree.symlink("nowhere", "dangling"), true);
        const QByteArray target = writeDistinct(tree, "target.bin");
        batch.add(tree.symlink(target, "link-to-target"), true);
        const QByteArray targetBefore = snapshotOf(target);
        writeDistinct(tree, "folder/inner.txt");
        writeDistinct(tree, "folder/caf\xe9/deeper.bin");
        batch.add(tree.path("folder"), true);
        batch.add(tree.path("missing.pdf"), false);
        const QByteArray twice = writeDistinct(tree, "twice.zip");
        batch.add(twice, true);
        batch.add(twice, true); // gone by the second time
        // Every spelling of a protected place is in tst_protectedlocations; one rides along here.
        batch.add("/tmp/../etc/hosts", false);

        const QList<QByteArray> paths = batch.paths();
        const QList<TrashResult> results = TrashService().moveToTrash(paths).result();
        const auto errorOf = [&](const QByteArray &path) {
            const auto *failure = std::get_if<TrashFailure>(&results[paths.lastIndexOf(path)]);
            return failure ? failure->error : QString();
        };
        QVERIFY(errorOf(tree.path("missing.pdf"))
                    .startsWith(u"Failed to move 'missing.pdf' to Trash: "_qs));
        QVERIFY(errorOf(twice).startsWith(u"Failed to move 'twice.zip' to Trash: "_qs));
        QVERIFY(errorOf("/tmp/../etc/hosts").endsWith(u"to Trash: Protected system location"_qs));

        batch.check(results);
        QCOMPARE(snapshotOf(target), targetBefore); // the link went, what it points at stays
    }

    // A second ext4 takes items into its own .Trash-0 and keeps immutable or append-only ones;
    // tmpfs and a read-only mount have no usable trash and refuse.
    void otherFileSystemsUseTheirOwnTrashOrRefuse() {
        if (::geteuid() != 0)
            QSKIP("mounting a second file system needs root");
        TestTree tree;
        const QByteArray top = tree.path("ext4");
        Mount ext4(top, true), tmpfs(tree.path("tmpfs"), false), readOnly(tree.path("ro"), true);
        for (const Mount *mount : {&ext4, &tmpfs, &readOnly})
            QVERIFY2(mount->mounted(), mount->output());
        const QByteArray onReadOnly = writeDistinct(tree, "ro/kept.iso");
        QVERIFY2(readOnly.remountReadOnly(), readOnly.output());

        Batch batch(root);
        const QByteArray movie = writeDistinct(tree, "ext4/movie.mkv", 1000);
        batch.add(movie, true, top);
        batch.add(writeDistinct(tree, "ext4/caf\xe9 \xff.iso"), true, top);
        batch.add(writeDistinct(tree, "ext4/line\nbreak.txt"), true, top);
        writeDistinct(tree, "ext4/folder/a.bin");
        batch.add(tree.path("ext4/folder"), true, top);
        batch.add(tree.symlink("nowhere", "ext4/dangling"), true, top);
        const QByteArray locked = writeDistinct(tree, "ext4/locked.bin");
        const QByteArray sealed = tree.path("ext4/sealed");
        const QByteArray inSealed = writeDistinct(tree, "ext4/sealed/inside.bin");
        const QByteArray appendOnly = writeDistinct(tree, "ext4/append-only.log");
        QVERIFY(chattr(locked, "+i") && chattr(sealed, "+i") && chattr(appendOnly, "+a"));
        batch.add(locked, false, top);
        batch.add(inSealed, false, top);
        batch.add(appendOnly, false, top);
        batch.add(movie, true, top);
        batch.add(tree.path("ext4/missing"), false, top);
        batch.add(writeDistinct(tree, "tmpfs/clip.mov"), false, tree.path("tmpfs"));
        batch.add(onReadOnly, false, tree.path("ro"));

        const QList<TrashResult> results = TrashService::moveToTrashNow(batch.paths());
        chattr(locked, "-i");
        chattr(sealed, "-i");
        chattr(appendOnly, "-a");
        batch.check(results);
    }

    // Each path names one entry, found by the kernel's rules; that entry is what is checked,
    // reported and moved, and a path that names none moves nothing.
    void hostileSpellingsMoveExactlyWhatTheKernelNames() {
        TestTree tree;
        const QByteArray project = tree.folder("proj");
        const QByteArray besideProject = writeDistinct(tree, "proj/report.pdf");
        const QByteArray besideTarget = writeDistinct(tree, "archive/report.pdf");
        tree.folder("archive/2019");
        tree.symlink(tree.path("archive/2019"), "proj/link2019");
        const QByteArray plainFile = writeDistinct(tree, "proj/plain.txt");

        // Refused, the working folder and everything in it untouched.
        const QByteArray projectBefore = snapshotOf(project);
        const QList<QPair<QByteArray, QByteArray>> refusals{{"", "The path is empty"},
                                                            {"typo/..", "names no single item"},
                                                            {"typo/x", "No such file or directory"},
                                                            {".", "names no single item"},
                                                            {"..", "names no single item"},
                                                            {"link2019/..", "names no single item"},
                                                            {"plain.txt/", "Not a directory"},
                                                            {"link2019/", "Not a directory"},
                                                            {"plain.txt/x", "Not a directory"}};
        for (const auto &[argument, reason] : refusals) {
            const ProcessOutput output = trashFrom(project, {}, {argument});
            QCOMPARE(output.exitCode, 1);
            QVERIFY2(output.out.contains(reason), output.out.constData());
            QCOMPARE(snapshotOf(project), projectBefore);
        }

        // The file that `cat link2019/../report.pdf` reads is the one beside the link's target.
        const QByteArray projectReport = snapshotOf(besideProject);
        ProcessOutput output = trashFrom(project, {}, {"link2019/../report.pdf"});
        QCOMPARE(output.exitCode, 0);
        QCOMPARE(output.out, "moved: " + besideTarget + '\n');
        QVERIFY(!exists(besideTarget));
        QCOMPARE(snapshotOf(besideProject), projectReport);
        QCOMPARE(recordedPath(environment.dataHome() + "/Trash/files/report.pdf"), besideTarget);

        // A working folder that is gone, or deeper than a path can spell: a relative path has
        // nothing to be resolved against, and is not taken from the root instead.
        const QByteArray victim = writeDistinct(tree, "victim.bin");
        const QByteArray fromRoot = victim.mid(1);
        tree.folder("doomed");
        output = trashFrom(tree.path("doomed"), "rmdir ../doomed &&", {fromRoot});
        QCOMPARE(output.exitCode, 1);
        QVERIFY2(output.out.contains("The current folder cannot be resolved"), output.out.data());
        const QByteArray link(200, 'd');
        tree.deepChain("deep", 25, link, "leaf", 0);
        TrashChild deep(QList<QByteArray>{tree.path("deep")} + QList<QByteArray>(25, link),
                        {fromRoot});
        output.out = deep.output.readAll();
        output.exitCode = deep.finish();
        QCOMPARE(output.exitCode, 1);
        QVERIFY2(output.out.contains("The current folder cannot be resolved"), output.out.data());
        QVERIFY(exists(victim));
    }

    // The Trash's own folders are not items: moving an info file would orphan its item.
    void trashFoldersAndTheirContentsStay() {
        TestTree tree;
        const QByteArray first = writeDistinct(tree, "first.iso");
        QVERIFY(std::holds_alternative<TrashSuccess>(TrashService::moveOneToTrashNow(first)));
        const QByteArray trash = environment.dataHome() + "/Trash";
        const QByteArray volumeTrash = tree.folder(".Trash-0/files");
        writeDistinct(tree, ".Trash-0/files/kept.iso");
        writeDistinct(tree, ".Trash/0/files/other.iso");
        const QList<QByteArray> paths{trash,
                                      trash + "/files/first.iso",
                                      trash + "/info/first.iso.trashinfo",
                                      trash + "/files",
                                      tree.symlink(trash, "trash-link") + "/info/",
                                      tree.path("trash-link/files/first.iso"),
                                      tree.path(".Trash-0"),
                                      volumeTrash + "/kept.iso",
                                      tree.path(".Trash/0/files/other.iso")};
        QList<QByteArray> before;
        for (const QByteArray &path : paths)
            before.append(snapshotOf(path));
        const QList<TrashResult> results = TrashService::moveToTrashNow(paths);
        for (qsizetype i = 0; i < paths.size(); ++i) {
            const auto *failure = std::get_if<TrashFailure>(&results[i]);
            QVERIFY2(failure && failure->error.endsWith(u"' to Trash: Part of the Trash"_qs),
                     paths[i].constData());
            QCOMPARE(snapshotOf(paths[i]), before[i]);
        }
        // The link to the Trash is no part of it: it goes as a link.
        QVERIFY(std::holds_alternative<TrashSuccess>(
            TrashService::moveOneToTrashNow(tree.path("trash-link"))));
        QVERIFY(exists(trash + "/files/first.iso"));
    }

    // An entry replaced between the check and the move is not the one that was checked.
    void anEntryReplacedAfterItsCheckStays() {
        TestTree tree;
        const QByteArray path = writeDistinct(tree, "swapped.iso");
        const auto checked = platform::resolveEntry(path).entry->identity;
        QVERIFY(checked);
        // Made while the first still exists, so that the two cannot share an inode number.
        const QByteArray replacing = writeDistinct(tree, "replacement.iso");
        QCOMPARE(::rename(replacing.constData(), path.constData()), 0);
        const QByteArray replacement = snapshotOf(path);
        const platform::TrashAttempt attempt = platform::moveToTrash(path, *checked);
        QVERIFY(!attempt.moved);
        QCOMPARE(attempt.error, u"The item was replaced after it was checked"_qs);
        QCOMPARE(snapshotOf(path), replacement);
    }

    // Ctrl+C lets the move in progress finish, then reports everything done and exits 130.
    // The report goes into a pipe that is read one line at a time, so the command cannot be
    // done with the whole batch before the interrupt arrives.
    void anInterruptedBatchReportsWhatItMoved() {
        TestTree tree;
        QList<QByteArray> paths;
        for (int i = 0; i < 1500; ++i)
            paths.append(tree.file("many/file-" + QByteArray::number(i) + ".bin"));
        TrashChild child({}, paths);
        QByteArray report = child.output.readLine();
        QVERIFY(report.startsWith("moved: "));
        child.interrupt();
        report += child.output.readAll();
        QCOMPARE(child.finish(), 130);
        const QList<QByteArray> lines = report.trimmed().split('\n');
        QVERIFY(lines.size() < paths.size());
        for (qsizetype i = 0; i < paths.size(); ++i) {
            const bool reported = i < lines.size();
            if (reported)
                QCOMPARE(lines[i], "moved: " + paths[i]);
            QCOMPARE(exists(paths[i]), !reported);
        }
    }

    void anUnprivilegedUserMovesOnlyWhatItMay() {
        if (::geteuid() != 0)
            QSKIP("dropping to another user needs root");
        TestTree tree(TreeReach::everyone);
        ::chmod(tree.root().constData(), 0755);
        const QByteArray home = tree.folder("nobody-home");
        const User user{nobody, home, home + "/.local/share"};
        Batch batch(user);
        const QByteArray own = writeDistinct(tree, "nobody-home/mine.iso");
        const QByteArray ownOdd = writeDistinct(tree, "nobody-home/caf\xe9\n.iso");
        QDir().mkpath(QFile::decodeName(user.dataHome));
        run(u"chown"_qs, {u"-R"_qs, u"65534:65534"_qs, QFile::decodeName(home)});
        ::chmod(home.constData(), 0700);
        batch.add(own, true);
        batch.add(ownOdd, true);
        // A folder it may not write to: the file cannot leave it.
        batch.add(writeDistinct(tree, "owned-by-root/keep.iso"), false);
        // A sticky shared folder: another user's file stays.
        ::chmod(tree.folder("shared").constData(), 01777);
        batch.add(writeDistinct(tree, "shared/roots.iso"), false);
        batch.add("/etc/hosts", false);

        // Arguments cannot carry bytes that are not UTF-8 through QProcess: xargs reads them
        // from a NUL-separated list instead.
        const ProcessOutput output =
            run(u"xargs"_qs,
                {u"-0"_qs, reachableCopy(QStringLiteral(RAVELINTH_EXECUTABLE)), u"trash"_qs,
                 u"--json"_qs},
                user, batch.paths().join('\0') + '\0');
        QCOMPARE(output.exitCode, 123); // xargs: the command exited with 1, some were not moved
        const QJsonArray results = QJsonDocument::fromJson(output.out).array();
        QList<bool> moved;
        for (const QJsonValue &result : results) {
            moved.append(result[u"success"].toBool());
            if (!moved.last())
                QVERIFY(result[u"error"].toString().startsWith(u"Failed to move '"_qs));
        }
        QCOMPARE(results[4][u"error"].toString(),
                 u"Failed to move 'hosts' to Trash: Protected system location"_qs);
        batch.check(moved);
    }
};

QTEST_GUILESS_MAIN(TrashTest)
#include "tst_trash.moc"
