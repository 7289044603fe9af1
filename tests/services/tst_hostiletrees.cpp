#include "HostileNames.h"
#include "TestTree.h"
#include "services/FileScannerService.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>
#include <QtTest>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <thread>
#include <unistd.h>

using namespace ravelinth;
using ravelinth::test::pathsOf;
using ravelinth::test::TestTree;

namespace {

constexpr qint64 MiB = 1024 * 1024;
constexpr uid_t nobody = 65534;

ScanOutcome waitFor(QFuture<ScanOutcome> future) {
    QDeadlineTimer deadline(300000);
    while (!future.isFinished() && !deadline.hasExpired())
        QTest::qWait(5);
    if (!future.isFinished())
        qFatal("the scan did not finish: something blocked the walk");
    return future.result();
}

struct Scan {
    ScanOutcome outcome = FileScannerError::makeEnumeratorFailed();
    qint64 filesScanned = 0;
};

Scan scan(const QByteArray &path, qint64 minimum, bool hidden = true) {
    FileScannerService service;
    Scan run;
    run.outcome = waitFor(service.scan(path, {minimum, hidden, true, false}));
    run.filesScanned = service.filesScanned();
    return run;
}

struct Output {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

// Runs the command-line program, as root or, with `asUser`, as that unprivileged user.
Output runRavelinth(const QList<QByteArray> &arguments, std::optional<uid_t> asUser = {},
                    const QByteArray &userHome = {}) {
    QStringList list;
    QString program = QStringLiteral(RAVELINTH_EXECUTABLE);
    if (asUser) {
        const QString id = QString::number(*asUser);
        list << u"--reuid="_qs + id << u"--regid="_qs + id << u"--clear-groups"_qs << u"env"_qs
             << u"HOME="_qs + QFile::decodeName(userHome)
             << u"XDG_RUNTIME_DIR="_qs + QFile::decodeName(userHome) << program;
        program = u"setpriv"_qs;
    }
    for (const QByteArray &argument : arguments)
        list.append(QFile::decodeName(argument));
    QProcess process;
    process.start(program, list);
    if (!process.waitForFinished(300000))
        qFatal("ravelinth did not finish");
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

QList<QByteArray> splitPrint0(const QByteArray &out) {
    QList<QByteArray> paths = out.split('\0');
    if (!paths.isEmpty() && paths.last().isEmpty())
        paths.removeLast();
    return paths;
}

// The exact bytes of a path in the JSON report: "rawPath" when the name is not UTF-8.
QByteArray exactPathOf(const QJsonObject &file) {
    if (file.contains(u"rawPath"))
        return QByteArray::fromPercentEncoding(file.value(u"rawPath").toString().toLatin1());
    return file.value(u"path").toString().toUtf8();
}

// Every kept file is in walk order until the end; afterwards they must be largest first, sum
// to the total and appear once each.
void checkResultIsConsistent(const ScanResult &result, const QByteArray &root) {
    qint64 total = 0;
    QSet<QByteArray> seen;
    for (qsizetype i = 0; i < result.files.size(); ++i) {
        const FileItem &file = result.files[i];
        QVERIFY2(file.path.startsWith(root + '/'), file.path.constData());
        QVERIFY2(!seen.contains(file.path), file.path.constData());
        seen.insert(file.path);
        if (i > 0)
            QVERIFY(result.files[i - 1].size >= file.size);
        total += file.size;
    }
    QCOMPARE(result.totalSize, total);
}

bool isRoot() {
    return ::geteuid() == 0;
}

void makeDevice(const QByteArray &path, mode_t type, unsigned major, unsigned minor) {
    if (::mknod(path.constData(), type | 0600, makedev(major, minor)) != 0)
        qFatal("cannot make device node %s: %s", path.constData(), std::strerror(errno));
}

// The mount points of the pseudo file systems on this machine, from the kernel's own table.
QList<QByteArray> pseudoMountPoints() {
    static const QSet<QByteArray> pseudoTypes{
        "proc",        "sysfs",    "devpts",    "cgroup",   "cgroup2", "debugfs", "tracefs",
        "securityfs",  "pstore",   "bpf",       "configfs", "fusectl", "mqueue",  "hugetlbfs",
        "binfmt_misc", "efivarfs", "selinuxfs", "nsfs",     "autofs"};
    QFile mountInfo(u"/proc/self/mountinfo"_qs);
    if (!mountInfo.open(QIODevice::ReadOnly))
        qFatal("cannot read /proc/self/mountinfo");
    QList<QByteArray> points;
    for (const QByteArray &line : mountInfo.readAll().split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        const qsizetype separator = fields.indexOf("-");
        if (separator < 0 || separator + 1 >= fields.size())
            continue;
        if (pseudoTypes.contains(fields[separator + 1])) {
            // Mount points escape spaces and the like as octal.
            QByteArray point = fields[4];
            point.replace("\\040", " ").replace("\\011", "\t").replace("\\012", "\n");
            points.append(point);
        }
    }
    return points;
}

} // namespace

class HostileTreesTest : public QObject {
    Q_OBJECT

private slots:
    void everyOddNameIsFoundByteExact() {
        TestTree tree;
        const QList<QByteArray> names = test::hostileNames();
        QList<QByteArray> expected; // largest first
        QList<QByteArray> visible;
        for (qsizetype i = names.size() - 1; i >= 0; --i) {
            const QByteArray &name = names[i];
            const QByteArray inner = tree.file("d/" + name + "/inner.bin", MiB + 2 * i + 1);
            const QByteArray file = tree.file("f/" + name, MiB + 2 * i);
            expected << inner << file;
            if (!test::isHiddenName(name))
                visible << inner << file;
        }

        qInfo("%lld odd names, each as a file and as a folder", qint64(names.size()));
        const Scan all = scan(tree.root(), MiB);
        QVERIFY(all.outcome);
        QCOMPARE(all.filesScanned, 2 * names.size());
        QCOMPARE(pathsOf(*all.outcome), expected);
        const Scan shown = scan(tree.root(), MiB, false);
        QCOMPARE(pathsOf(*shown.outcome), visible);
        for (const FileItem &file : all.outcome->files) {
            QVERIFY(!file.displayPath().isEmpty());
            QVERIFY(!file.displayName().isEmpty());
        }

        // The command line gives the same bytes back, whatever its output format.
        const Output print0 =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--hidden", "--print0"});
        QCOMPARE(print0.exitCode, 0);
        QCOMPARE(splitPrint0(print0.out), expected);

        const Output json =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--hidden", "--json"});
        QCOMPARE(json.exitCode, 0);
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(json.out, &error);
        QVERIFY2(error.error == QJsonParseError::NoError, qPrintable(error.errorString()));
        const QJsonArray files = document.object().value(u"files").toArray();
        QCOMPARE(files.size(), expected.size());
        for (qsizetype i = 0; i < files.size(); ++i)
            QCOMPARE(exactPathOf(files[i].toObject()), expected[i]);

        // The table is for a terminal: one line per file, and no name may steer the terminal.
        const Output table = runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--hidden"});
        QCOMPARE(table.exitCode, 0);
        QCOMPARE(table.out.count('\n'), expected.size() + 3);
        QVERIFY(!table.out.contains('\x1b'));
        QVERIFY(!table.out.contains('\r'));
    }

    void aFolderOfTwoHundredThousandEntries() {
        TestTree tree;
        const QByteArray wide = tree.folder("wide");
        const int fd = ::open(wide.constData(), O_RDONLY | O_DIRECTORY);
        QVERIFY(fd >= 0);
        constexpr int entries = 200000;
        constexpr int folders = 1000;
        int kept = 0;
        for (int i = 0; i < entries; ++i) {
            const QByteArray name = "entry-" + QByteArray::number(i);
            if (i % (entries / folders) == 7) {
                QCOMPARE(::mkdirat(fd, name.constData(), 0755), 0);
                const QByteArray inner = name + "/inside.txt";
                const int file = ::openat(fd, inner.constData(), O_CREAT | O_WRONLY, 0644);
                QVERIFY(file >= 0);
                ::close(file);
                continue;
            }
            const int file = ::openat(fd, name.constData(), O_CREAT | O_WRONLY, 0644);
            QVERIFY(file >= 0);
            if (i % 1000 == 0) {
                QCOMPARE(::ftruncate(file, 2 * MiB), 0);
                ++kept;
            }
            ::close(file);
        }
        ::close(fd);

        const Scan run = scan(tree.root(), MiB);
        QVERIFY(run.outcome);
        QCOMPARE(run.filesScanned, entries);
        QCOMPARE(run.outcome->files.size(), kept);
        checkResultIsConsistent(*run.outcome, tree.root());

        const Output json = runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--json"});
        QCOMPARE(json.exitCode, 0);
        const QJsonObject report = QJsonDocument::fromJson(json.out).object();
        QCOMPARE(report.value(u"filesScanned").toInteger(), entries);
        QCOMPARE(report.value(u"files").toArray().size(), kept);
    }

    void aChainTenThousandFoldersDeepThroughTheCommandLine() {
        TestTree tree;
        tree.deepChain("chain", 10000, "d", "bottom.iso", 3 * MiB);
        // A link back to the top at the bottom of the chain must not start the walk again.
        std::string bottomLink = "chain";
        for (int i = 0; i < 10000; ++i)
            bottomLink += "/d";
        const int rootFd = ::open(tree.root().constData(), O_RDONLY | O_DIRECTORY);
        int fd = ::openat(rootFd, "chain", O_RDONLY | O_DIRECTORY);
        ::close(rootFd);
        for (int i = 0; i < 10000 && fd >= 0; ++i) {
            const int child = ::openat(fd, "d", O_RDONLY | O_DIRECTORY);
            ::close(fd);
            fd = child;
        }
        QVERIFY(fd >= 0);
        QCOMPARE(::symlinkat(tree.root().constData(), fd, "to-top"), 0);
        ::close(fd);

        const Output out =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "0", "--hidden", "--print0"});
        QCOMPARE(out.exitCode, 0);
        const QList<QByteArray> paths = splitPrint0(out.out);
        QCOMPARE(paths.size(), 2);
        QCOMPARE(paths[0], tree.path(QByteArray(bottomLink.c_str()) + "/bottom.iso"));
        QCOMPARE(paths[1], tree.path(QByteArray(bottomLink.c_str()) + "/to-top"));
        QVERIFY(paths[0].size() > PATH_MAX);
    }

    void linkLoopsAndLinksOutOfTheTreeAreNotFollowed() {
        TestTree tree;
        TestTree outside;
        outside.file("far-away.iso", 9 * MiB);
        QList<QByteArray> links{
            tree.symlink("b-link", "a-link"),
            tree.symlink("a-link", "b-link"),
            tree.symlink("self", "self"),
            tree.symlink(".", "dot"),
            tree.symlink("..", "dot-dot"),
            tree.symlink(tree.root(), "absolute-root"),
            tree.symlink("/", "system-root"),
            tree.symlink("/proc", "proc"),
            tree.symlink(outside.root(), "outside-folder"),
            tree.symlink(outside.path("far-away.iso"), "outside-file"),
            tree.symlink("../../..", "x/y/z/up-three"),
            tree.symlink("../x", "x/y/sideways"),
            tree.symlink(QByteArray(4000, 'n'), "very-long-target"),
        };
        const QByteArray real = tree.file("x/y/real.bin", 2 * MiB);

        const Scan run = scan(tree.root(), 0);
        QVERIFY(run.outcome);
        QCOMPARE(run.filesScanned, links.size() + 1);
        QCOMPARE(run.outcome->files.first().path, real);
        QSet<QByteArray> kept(links.begin(), links.end());
        kept.insert(real);
        const QList<QByteArray> found = pathsOf(*run.outcome);
        QCOMPARE(QSet<QByteArray>(found.begin(), found.end()), kept);
        for (const FileItem &file : run.outcome->files.mid(1)) {
            // A link counts with its own size: the length of what it points at.
            char target[8192];
            const ssize_t length = ::readlink(file.path.constData(), target, sizeof target);
            QCOMPARE(file.size, qint64(length));
        }
    }

    void specialFilesAreCountedButNeverOpened() {
        if (!isRoot())
            QSKIP("device nodes can only be made by root");
        TestTree tree;
        // Opening a FIFO with no writer blocks for ever: a walk that opened it would never end.
        const QList<QByteArray> specials{tree.fifo("pipe"), tree.fifo("sub/another pipe"),
                                         tree.socket("sock")};
        makeDevice(tree.path("null-device"), S_IFCHR, 1, 3);
        makeDevice(tree.path("sub/zero-device"), S_IFCHR, 1, 5);
        makeDevice(tree.path("loop-device"), S_IFBLK, 7, 0);
        tree.file("sub/real.bin", 5);

        const Scan run = scan(tree.root(), 0);
        QVERIFY(run.outcome);
        QCOMPARE(run.filesScanned, 7);
        QCOMPARE(run.outcome->files.size(), 7);
        QCOMPARE(run.outcome->files.first().path, tree.path("sub/real.bin"));
        for (const FileItem &file : run.outcome->files.mid(1))
            QCOMPARE(file.size, 0);

        const Output out = runRavelinth({"scan", tree.root(), "--min-size-mb", "0", "--print0"});
        QCOMPARE(out.exitCode, 0);
        QCOMPARE(splitPrint0(out.out).size(), 7);
    }

    void unreadableFoldersArePassedOverForAnUnprivilegedUser() {
        if (!isRoot())
            QSKIP("dropping to another user needs root");
        TestTree tree;
        ::chmod(tree.root().constData(), 0755);
        const QByteArray a = tree.file("open/a.bin", 3 * MiB);
        const QByteArray b = tree.file("open/deeper/b.bin", 2 * MiB);
        const QByteArray privateFile = tree.file("private-file.bin", 4 * MiB);
        ::chmod(privateFile.constData(), 0600); // its size can still be read
        tree.file("locked/secret.bin", 5 * MiB);
        tree.file("locked/inner/more.bin", 5 * MiB);
        ::chmod(tree.path("locked").constData(), 0700);
        tree.file("list-only/hidden-size.bin", 6 * MiB);
        tree.file("list-only/sub/deeper.bin", 6 * MiB);
        ::chmod(tree.path("list-only").constData(), 0744);
        tree.file("enter-only/not-listed.bin", 7 * MiB);
        ::chmod(tree.path("enter-only").constData(), 0711);
        tree.file("open/deeper/closed/gone.bin", 8 * MiB);
        ::chmod(tree.path("open/deeper/closed").constData(), 0);
        const QByteArray home = tree.folder("nobody-home");
        ::chown(home.constData(), nobody, nobody);
        ::chmod(home.constData(), 0700);

        const Output asNobody =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--print0"}, nobody, home);
        QVERIFY2(asNobody.exitCode == 0, asNobody.err.constData());
        QCOMPARE(splitPrint0(asNobody.out), (QList<QByteArray>{privateFile, a, b}));

        const Output json =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--json"}, nobody, home);
        QCOMPARE(QJsonDocument::fromJson(json.out).object().value(u"filesScanned").toInteger(), 3);

        // The same tree as root: nothing is hidden from it.
        const Scan asRoot = scan(tree.root(), MiB);
        QCOMPARE(asRoot.outcome->files.size(), 9);

        // A root folder that cannot be opened at all is a failure, not an empty result.
        const Output locked =
            runRavelinth({"scan", tree.path("locked"), "--min-size-mb", "1"}, nobody, home);
        QCOMPARE(locked.exitCode, 1);
        QVERIFY2(locked.err.endsWith("Failed to create directory enumerator\n"),
                 locked.err.constData());
    }

    void treesChangingUnderTheWalkGiveACleanPartialResult() {
        TestTree tree;
        TestTree outside;
        outside.file("escaped.iso", 3 * MiB);
        QSet<QByteArray> stable;
        for (int i = 0; i < 400; ++i) {
            stable.insert(tree.file("stable/s" + QByteArray::number(i % 20) + "/f" +
                                        QByteArray::number(i) + ".bin",
                                    2 * MiB + i));
        }
        tree.deepChain("chain", 300, "c", "leaf.bin", 2 * MiB);
        const QByteArray churn = tree.folder("churn");

        // The mutator cycles each slot through folder, moved-away folder, nothing, link to a
        // folder outside the tree, regular file; and cuts the deep chain in the middle and
        // puts it back, so the walk loses the way up through "..".
        std::atomic<bool> done{false};
        std::atomic<qint64> mutations{0};
        std::thread mutator([&] {
            namespace fs = std::filesystem;
            std::error_code ignored;
            const std::string base(churn.constData());
            std::string middle = tree.path("chain").toStdString();
            for (int i = 0; i < 150; ++i)
                middle += "/c";
            const std::string parked = tree.path("parked-chain").toStdString();
            for (qint64 round = 0; round < 2000000 && !done.load(); ++round) {
                const std::string slot = base + "/d" + std::to_string(round % 16);
                switch ((round / 16) % 5) {
                case 0:
                    fs::remove(slot, ignored);
                    fs::create_directories(slot + "/sub", ignored);
                    for (int k = 0; k < 8; ++k) {
                        const std::string file = slot + "/inner-" + std::to_string(k) + ".bin";
                        const int fd = ::open(file.c_str(), O_CREAT | O_WRONLY, 0644);
                        if (fd >= 0) {
                            [[maybe_unused]] const int sized = ::ftruncate(fd, 2 * MiB);
                            ::close(fd);
                        }
                    }
                    break;
                case 1:
                    fs::rename(slot, slot + "-moved", ignored);
                    break;
                case 2:
                    fs::remove_all(slot + "-moved", ignored);
                    fs::remove_all(slot, ignored);
                    break;
                case 3:
                    fs::create_directory_symlink(outside.root().toStdString(), slot, ignored);
                    break;
                case 4:
                    fs::remove(slot, ignored);
                    if (const int fd = ::open(slot.c_str(), O_CREAT | O_WRONLY, 0644); fd >= 0) {
                        [[maybe_unused]] const int sized = ::ftruncate(fd, 2 * MiB);
                        ::close(fd);
                    }
                    break;
                }
                if (round % 8 == 0)
                    fs::rename(middle, parked, ignored);
                else if (round % 8 == 4)
                    fs::rename(parked, middle, ignored);
                ++mutations;
            }
        });

        // A failed check returns early; the mutator must still be stopped and joined.
        const auto stopMutator = qScopeGuard([&] {
            done = true;
            if (mutator.joinable())
                mutator.join();
        });
        int scans = 0;
        int completeChains = 0;
        const QByteArray leafTail = "/c/c/leaf.bin";
        qint64 lastSeen = 0;
        for (; scans < 40; ++scans) {
            // On a busy machine the mutator may lag: let it make some changes between scans.
            QDeadlineTimer settle(2000);
            while (mutations.load() < lastSeen + 100 && !settle.hasExpired())
                QThread::msleep(1);
            lastSeen = mutations.load();
            const Scan run = scan(tree.root(), MiB);
            QVERIFY(run.outcome);
            checkResultIsConsistent(*run.outcome, tree.root());
            int stableFound = 0;
            for (const FileItem &file : run.outcome->files) {
                QVERIFY2(!file.path.contains("escaped"), file.path.constData());
                if (stable.contains(file.path))
                    ++stableFound;
                else if (file.path.endsWith(leafTail))
                    ++completeChains;
                else
                    QVERIFY2(file.path.startsWith(churn + "/d") ||
                                 file.path.startsWith(tree.path("parked-chain")),
                             file.path.constData());
            }
            QCOMPARE(stableFound, stable.size());
            // A scan whose root is being replaced under it either fails cleanly or walks what
            // it found.
            const Scan slot = scan(churn + "/d" + QByteArray::number(scans % 16), 0);
            if (slot.outcome)
                checkResultIsConsistent(*slot.outcome,
                                        churn + "/d" + QByteArray::number(scans % 16));
            else
                // Gone before the existence test, or between it and opening the folder.
                QVERIFY(slot.outcome.error().code() == FileScannerError::pathNotFound ||
                        slot.outcome.error().code() == FileScannerError::enumeratorFailed);
        }
        done = true;
        mutator.join();
        qInfo(
            "%d scans ran against %lld changes; the leaf of the deep chain was found in %d of them",
            scans, qint64(mutations), completeChains);
        QVERIFY(mutations > 0);
    }

    void aScanOfTheWholeSystemSkipsPseudoFileSystems() {
        TestTree tree;
        // Every entry is walked whatever the threshold; 2 KiB keeps the list short but still
        // catches /proc/kcore (terabytes) and every sysfs attribute (4 KiB) if they were walked.
        const QByteArray sentinel = tree.file("sentinel \xe9\n.bin", 4096);
        const Output out =
            runRavelinth({"scan", "/", "--min-size-mb", "0.002", "--hidden", "--print0"});
        QVERIFY2(out.exitCode == 0, out.err.constData());
        const QList<QByteArray> paths = splitPrint0(out.out);
        QVERIFY(paths.contains(sentinel));
        const QList<QByteArray> pseudo = pseudoMountPoints();
        QVERIFY(pseudo.contains("/proc"));
        for (const QByteArray &path : paths) {
            QVERIFY2(path.startsWith('/'), path.constData());
            for (const QByteArray &point : pseudo)
                QVERIFY2(!path.startsWith(point + '/'), path.constData());
        }
        qInfo("the scan of / listed %lld files", qint64(paths.size()));

        // Pointed straight at a pseudo file system, the walk finds nothing in it.
        const Scan proc = scan("/proc", 0);
        QVERIFY(proc.outcome);
        QCOMPARE(proc.filesScanned, 0);
    }
};

QTEST_GUILESS_MAIN(HostileTreesTest)
#include "tst_hostiletrees.moc"
