#include "HostileNames.h"
#include "Programs.h"
#include "ScanChecks.h"
#include "TestTree.h"
#include "services/FileScannerService.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

// The exact bytes of a path the command reported: "rawPath" carries them when the name is not
// UTF-8.
QByteArray pathIn(const QJsonObject &entry) {
    return entry.contains(u"rawPath")
               ? QByteArray::fromPercentEncoding(entry[u"rawPath"].toString().toLatin1())
               : entry[u"path"].toString().toUtf8();
}

} // namespace

class HostileTreesTest : public QObject {
    Q_OBJECT

private slots:
    void everyOddNameIsFoundByteExact() {
        TestTree tree;
        const QList<QByteArray> names = hostileNames();
        QList<QByteArray> expected; // largest first
        QList<QByteArray> visible;
        for (qsizetype i = names.size() - 1; i >= 0; --i) {
            const QByteArray inner = tree.file("d/" + names[i] + "/inner.bin", MiB + 2 * i + 1);
            const QByteArray file = tree.file("f/" + names[i], MiB + 2 * i);
            expected << inner << file;
            if (!isHiddenName(names[i]))
                visible << inner << file;
        }
        const Scan all = scan(tree.root(), MiB);
        QVERIFY(all.outcome);
        QCOMPARE(all.filesScanned, 2 * names.size());
        QCOMPARE(pathsOf(*all.outcome), expected);
        QCOMPARE(pathsOf(*scan(tree.root(), MiB, false).outcome), visible);
        for (const FileItem &file : all.outcome->files)
            QVERIFY(!file.displayPath().isEmpty() && !file.displayName().isEmpty());

        // The command line gives the same bytes back, whatever its output format.
        const QList<QByteArray> command{"scan", tree.root(), "--min-size-mb", "1", "--hidden"};
        const ProcessOutput print0 = runRavelinth(command + QList<QByteArray>{"--print0"});
        QCOMPARE(print0.exitCode, 0);
        QCOMPARE(splitPrint0(print0.out), expected);
        const ProcessOutput json = runRavelinth(command + QList<QByteArray>{"--json"});
        QCOMPARE(json.exitCode, 0);
        const QJsonArray files = QJsonDocument::fromJson(json.out)[u"files"].toArray();
        QCOMPARE(files.size(), expected.size());
        for (qsizetype i = 0; i < files.size(); ++i)
            QCOMPARE(pathIn(files[i].toObject()), expected[i]);
        // The table is for a terminal: one line per file, and no name may steer the terminal.
        const ProcessOutput table = runRavelinth(command);
        QCOMPARE(table.exitCode, 0);
        QCOMPARE(table.out.count('\n'), expected.size() + 3);
        QVERIFY(!table.out.contains('\x1b') && !table.out.contains('\r'));
    }

    void aFolderOfTwoHundredThousandEntries() {
        TestTree tree;
        const int fd = ::open(tree.folder("wide").constData(), O_RDONLY | O_DIRECTORY);
        QVERIFY(fd >= 0);
        constexpr int entries = 200000;
        int kept = 0;
        for (int i = 0; i < entries; ++i) {
            QByteArray name = "entry-" + QByteArray::number(i);
            // A thousand of them are folders holding one file each.
            if (i % 200 == 7) {
                QCOMPARE(::mkdirat(fd, name.constData(), 0755), 0);
                name += "/inside.txt";
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
    }

    void aChainTenThousandFoldersDeepThroughTheCommandLine() {
        TestTree tree;
        tree.deepChain("chain", 10000, "d", "bottom.iso", 3 * MiB);
        // A link back to the top at the bottom of the chain must not start the walk again.
        QByteArray bottom = "chain";
        int fd = ::open(tree.path(bottom).constData(), O_RDONLY | O_DIRECTORY);
        for (int i = 0; i < 10000 && fd >= 0; ++i) {
            const int child = ::openat(fd, "d", O_RDONLY | O_DIRECTORY);
            ::close(fd);
            fd = child;
            bottom += "/d";
        }
        QVERIFY(fd >= 0);
        QCOMPARE(::symlinkat(tree.root().constData(), fd, "to-top"), 0);
        ::close(fd);

        const ProcessOutput out =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "0", "--hidden", "--print0"});
        QCOMPARE(out.exitCode, 0);
        const QList<QByteArray> paths = splitPrint0(out.out);
        QCOMPARE(paths, (QList<QByteArray>{tree.path(bottom + "/bottom.iso"),
                                           tree.path(bottom + "/to-top")}));
        QVERIFY(paths[0].size() > PATH_MAX);
    }

    // Links count with their own size (the length of the target) and are never followed, however
    // they loop or leave the tree; FIFOs, sockets and devices count as empty and are never opened
    // (a FIFO with no writer would block the walk for ever).
    void linksAndSpecialFilesAreCountedButNeverFollowedOrOpened() {
        TestTree tree;
        TestTree outside;
        outside.file("far-away.iso", 9 * MiB);
        const QList<QByteArray> links{
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
        QList<QByteArray> specials{tree.fifo("pipe"), tree.fifo("sub/another pipe"),
                                   tree.socket("sock")};
        if (isRoot()) {
            for (const auto &[name, type, major, minor] : {std::tuple{"null-device", S_IFCHR, 1, 3},
                                                           {"sub/zero-device", S_IFCHR, 1, 5},
                                                           {"loop-device", S_IFBLK, 7, 0}}) {
                specials.append(tree.path(name));
                QCOMPARE(::mknod(specials.last().constData(), type | 0600, makedev(major, minor)),
                         0);
            }
        }
        const QByteArray real = tree.file("x/y/real.bin", 2 * MiB);

        const Scan run = scan(tree.root(), 0);
        QVERIFY(run.outcome);
        QCOMPARE(run.filesScanned, links.size() + specials.size() + 1);
        QCOMPARE(run.outcome->files.first().path, real);
        const QList<QByteArray> found = pathsOf(*run.outcome);
        QCOMPARE(QSet<QByteArray>(found.begin(), found.end()),
                 QSet<QByteArray>(links.begin(), links.end()) +
                     QSet<QByteArray>(specials.begin(), specials.end()) + QSet<QByteArray>{real});
        for (const FileItem &file : run.outcome->files.mid(1)) {
            char target[8192];
            const ssize_t length = ::readlink(file.path.constData(), target, sizeof target);
            QCOMPARE(file.size, qint64(specials.contains(file.path) ? 0 : length));
        }
        // A link given as the root is resolved, as an existence test would.
        QCOMPARE(pathsOf(*scan(tree.path("outside-folder"), MiB).outcome),
                 QList<QByteArray>{tree.path("outside-folder/far-away.iso")});
    }

    void unreadableFoldersArePassedOverForAnUnprivilegedUser() {
        if (!isRoot())
            QSKIP("dropping to another user needs root");
        TestTree tree(TreeReach::everyone);
        const User user = unprivilegedUser(tree);
        const QByteArray a = tree.file("open/a.bin", 3 * MiB);
        const QByteArray b = tree.file("open/deeper/b.bin", 2 * MiB);
        const QByteArray privateFile = tree.file("private-file.bin", 4 * MiB);
        ::chmod(privateFile.constData(), 0600); // its size can still be read
        tree.file("locked/secret.bin", 5 * MiB);
        tree.file("locked/inner/more.bin", 5 * MiB);
        tree.file("list-only/hidden-size.bin", 6 * MiB);
        tree.file("list-only/sub/deeper.bin", 6 * MiB);
        tree.file("enter-only/not-listed.bin", 7 * MiB);
        tree.file("open/deeper/closed/gone.bin", 8 * MiB);
        tree.folder("\xFFlocked");
        for (const auto &[folder, mode] : {std::pair{"locked", 0700},
                                           {"list-only", 0744},
                                           {"enter-only", 0711},
                                           {"open/deeper/closed", 0},
                                           {"\xFFlocked", 0}})
            ::chmod(tree.path(folder).constData(), mode_t(mode));

        const ProcessOutput asNobody =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--print0"}, user);
        QVERIFY2(asNobody.exitCode == 0, asNobody.err.constData());
        QCOMPARE(splitPrint0(asNobody.out), (QList<QByteArray>{privateFile, a, b}));
        const ProcessOutput json =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--json"}, user);
        const QJsonObject report = QJsonDocument::fromJson(json.out).object();
        QCOMPARE(report[u"filesScanned"].toInteger(), 3);
        // A folder that can be listed but not entered hides its entries' sizes, so it went
        // unread, and so did its subfolder, which cannot be opened.
        QCOMPARE(report[u"unreadableFolders"].toInteger(), 6);
        QSet<QByteArray> unreadable;
        for (const QJsonValue &folder : report[u"unreadablePaths"].toArray())
            unreadable.insert(pathIn(folder.toObject()));
        QCOMPARE(unreadable,
                 (QSet<QByteArray>{tree.path("locked"), tree.path("list-only"),
                                   tree.path("list-only/sub"), tree.path("enter-only"),
                                   tree.path("open/deeper/closed"), tree.path("\xFFlocked")}));
        const ProcessOutput table = runRavelinth({"scan", tree.root(), "--min-size-mb", "1"}, user);
        QVERIFY2(table.err.endsWith("\n6 folders could not be read\n") ||
                     table.err == "6 folders could not be read\n",
                 table.err.constData());
        // The same tree as root: nothing is hidden from it.
        QCOMPARE(scan(tree.root(), MiB).outcome->files.size(), 9);
        QCOMPARE(scan(tree.root(), MiB).outcome->unreadableFolders, 0);
        const ProcessOutput asRoot = runRavelinth({"scan", tree.root(), "--min-size-mb", "1"});
        QVERIFY2(!asRoot.err.contains("could not be read"), asRoot.err.constData());

        // A root folder that cannot be opened at all is a failure, not an empty result.
        const ProcessOutput locked =
            runRavelinth({"scan", tree.path("locked"), "--min-size-mb", "1"}, user);
        QCOMPARE(locked.exitCode, 1);
        QVERIFY2(locked.err.endsWith("Failed to create directory enumerator\n"),
                 locked.err.constData());
    }

    // Past the first thousand only the count grows; which thousand is kept does not depend on
    // how many walkers share the tree.
    void unreadableFoldersPastAThousandAreCountedNotListed() {
        if (!isRoot())
            QSKIP("dropping to another user needs root");
        TestTree tree(TreeReach::everyone);
        const User user = unprivilegedUser(tree);
        for (int i = 0; i < 1003; ++i) {
            const QByteArray folder =
                tree.folder("f" + QByteArray::number(i % 7) + "/closed" + QByteArray::number(i));
            ::chmod(folder.constData(), 0);
        }
        QList<QJsonObject> reports;
        for (const QByteArray walkers : {"1", "2", "5"}) {
            qputenv("RAVELINTH_SCAN_THREADS", walkers);
            const ProcessOutput json = runRavelinth({"scan", tree.root(), "--json"}, user);
            QVERIFY2(json.exitCode == 0, json.err.constData());
            reports.append(QJsonDocument::fromJson(json.out).object());
        }
        qunsetenv("RAVELINTH_SCAN_THREADS");
        for (const QJsonObject &report : reports) {
            QCOMPARE(report[u"unreadableFolders"].toInteger(), 1003);
            QCOMPARE(report[u"unreadablePaths"].toArray().size(), 1000);
            QCOMPARE(report[u"unreadablePaths"], reports[0][u"unreadablePaths"]);
        }
    }
};

QTEST_GUILESS_MAIN(HostileTreesTest)
#include "tst_hostiletrees.moc"
