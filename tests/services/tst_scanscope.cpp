#include "Mount.h"
#include "Programs.h"
#include "ScanChecks.h"
#include "TestTree.h"
#include "platform/DirectoryWalker.h"
#include "platform/MountTable.h"
#include "services/FileScannerService.h"
#include "services/MountBoundary.h"

#include <QtTest>

#include <algorithm>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

ScanResult scanWith(const QByteArray &root, int walkers,
                    const std::function<void(ScanConfiguration &)> &adjust,
                    qint64 *filesScanned = nullptr) {
    ScanConfiguration configuration;
    configuration.minFileSizeBytes = MiB;
    configuration.includeHiddenFiles = true;
    configuration.skipSystemDirectories = true;
    adjust(configuration);
    FileScannerService service(walkers);
    ScanOutcome outcome = waitForScan(service.scan(root, configuration));
    if (!outcome)
        qFatal("scan failed: %s", qPrintable(outcome.error().description()));
    if (filesScanned)
        *filesScanned = service.filesScanned();
    return std::move(*outcome);
}

QList<QByteArray> sortedPaths(const ScanResult &result) {
    QList<QByteArray> paths = pathsOf(result);
    std::sort(paths.begin(), paths.end());
    return paths;
}

QList<QByteArray> describe(const QList<SkippedMount> &mounts) {
    QList<QByteArray> lines;
    for (const SkippedMount &mount : mounts)
        lines.append(mount.path + ' ' + mount.fsType + ' ' + mount.reasonCode().toUtf8());
    return lines;
}

#define REQUIRE_MOUNTED(mount) QVERIFY2((mount).mounted(), (mount).output())

} // namespace

class ScanScopeTest : public QObject {
    Q_OBJECT

private slots:
    void exclusionsLeaveOutWhatTheyName_data() {
        QTest::addColumn<int>("walkers");
        QTest::newRow("one walker") << 1;
        QTest::newRow("four walkers") << 4;
    }
    void exclusionsLeaveOutWhatTheyName() {
        QFETCH(int, walkers);
        TestTree tree;
        tree.file("keep/report.pdf", 2 * MiB);
        tree.file("app/node_modules/big/blob.bin", 3 * MiB);
        tree.file("app/.git/objects/pack.pack", 4 * MiB);
        tree.file("vm/disk.vmdk", 5 * MiB);
        tree.file("vm/disk.vmdk.txt", 2 * MiB);
        tree.file("build/a.o", 2 * MiB);
        tree.file("lib/build/b.o", 2 * MiB);
        tree.file("private/secret.iso", 6 * MiB);
        // The excluded folder seen through a link and through its own name elsewhere.
        tree.symlink(tree.path("private"), "shortcut");
        qint64 counted = 0;
        const ScanResult result = scanWith(
            tree.root(), walkers,
            [&tree](ScanConfiguration &configuration) {
                for (const QByteArray &word :
                     {QByteArray("node_modules"), QByteArray(".git"), QByteArray("*.vmdk"),
                      QByteArray("build/*.o"), tree.path("private") + '/'})
                    configuration.exclusions.add(word);
            },
            &counted);
        QCOMPARE(sortedPaths(result),
                 (QList<QByteArray>{tree.path("keep/report.pdf"), tree.path("lib/build/b.o"),
                                    tree.path("vm/disk.vmdk.txt")}));
        // Left out is not counted either; the link itself is an entry of its own.
        QCOMPARE(counted, 4);
        QCOMPARE(result.totalSize, 6 * MiB);
        checkResultIsConsistent(result, tree.root());
    }

    void anExcludedRootIsStillScannedWhenAskedForByName() {
        TestTree tree;
        tree.file("a.bin", 2 * MiB);
        const ScanResult result = scanWith(
            tree.root(), 2, [&tree](ScanConfiguration &c) { c.exclusions.add(tree.root()); });
        QCOMPARE(result.files.size(), 1);
    }

    void aBindMountOfAFolderIntoItselfListsNothingTwice() {
        TestTree tree;
        tree.file("data/movie.mkv", 3 * MiB);
        tree.file("data/sub/notes.bin", 2 * MiB);
        const Mount loop(tree.path("data/sub/mirror"), Mount::Bind{tree.path("data")});
        REQUIRE_MOUNTED(loop);
        for (int walkers : {1, 3}) {
            const ScanResult result = scanWith(tree.root(), walkers, [](ScanConfiguration &) {});
            QCOMPARE(sortedPaths(result), (QList<QByteArray>{tree.path("data/movie.mkv"),
                                                             tree.path("data/sub/notes.bin")}));
            QCOMPARE(result.totalSize, 5 * MiB);
            QCOMPARE(result.skippedMounts.size(), 1);
            QCOMPARE(result.skippedMounts[0].path, tree.path("data/sub/mirror"));
            QCOMPARE(result.skippedMounts[0].reason, SkippedMount::Reason::alreadyScanned);
        }
    }

    void aBindMountOfAFolderOutsideTheScanIsWalked() {
        TestTree outside;
        outside.file("shared/big.iso", 4 * MiB);
        TestTree tree;
        tree.file("own.bin", 2 * MiB);
        const Mount bind(tree.path("seen"), Mount::Bind{outside.path("shared")});
        REQUIRE_MOUNTED(bind);
        // Twice: the second bind of the same folder is the one passed over.
        const Mount again(tree.path("seen-again"), Mount::Bind{outside.path("shared")});
        REQUIRE_MOUNTED(again);
        const ScanResult result = scanWith(tree.root(), 1, [](ScanConfiguration &) {});
        QCOMPARE(result.files.size(), 2);
        QCOMPARE(result.totalSize, 6 * MiB);
        QCOMPARE(result.skippedMounts.size(), 1);
        QCOMPARE(result.skippedMounts[0].reason, SkippedMount::Reason::alreadyScanned);
    }

    void oneFileSystemStaysOffALoopMountedDisk() {
        TestTree tree;
        tree.file("here.bin", 2 * MiB);
        const Mount disk(tree.path("disk"), true);
        REQUIRE_MOUNTED(disk);
        tree.file("disk/there.bin", 3 * MiB);

        const ScanResult everything = scanWith(tree.root(), 2, [](ScanConfiguration &) {});
        // The disk's image lies beside it, on the scan's own file system.
        QCOMPARE(sortedPaths(everything),
                 (QList<QByteArray>{tree.path("disk.img"), tree.path("disk/there.bin"),
                                    tree.path("here.bin")}));
        QVERIFY(everything.skippedMounts.isEmpty());

        qint64 counted = 0;
        const ScanResult stayed = scanWith(
            tree.root(), 2, [](ScanConfiguration &c) { c.stayOnOneFileSystem = true; }, &counted);
        QCOMPARE(sortedPaths(stayed),
                 (QList<QByteArray>{tree.path("disk.img"), tree.path("here.bin")}));
        QCOMPARE(counted, 2);
        QCOMPARE(describe(stayed.skippedMounts),
                 QList<QByteArray>{tree.path("disk") + " ext4 otherFileSystem"});

        // Scanning the disk itself with the same setting walks it: its root is the boundary.
        const ScanResult inside = scanWith(
            tree.path("disk"), 2, [](ScanConfiguration &c) { c.stayOnOneFileSystem = true; });
        QCOMPARE(inside.files.size(), 1);
    }

    // A network or FUSE mount cannot be made here, so a real tmpfs stands in for one: the walk
    // is real and only the mount table's entry for it says "nfs4" or "fuse.sshfs".
    void networkFileSystemsAreEnteredOnlyWhenAsked_data() {
        QTest::addColumn<QByteArray>("fsType");
        QTest::addColumn<bool>("enterNetwork");
        QTest::addColumn<bool>("entered");
        QTest::newRow("nfs4") << QByteArray("nfs4") << false << false;
        QTest::newRow("fuse.sshfs") << QByteArray("fuse.sshfs") << false << false;
        QTest::newRow("cifs, asked for") << QByteArray("cifs") << true << true;
        QTest::newRow("tmpfs") << QByteArray("tmpfs") << false << true;
        QTest::newRow("fuseblk") << QByteArray("fuseblk") << false << true;
    }
    void networkFileSystemsAreEnteredOnlyWhenAsked() {
        QFETCH(QByteArray, fsType);
        QFETCH(bool, enterNetwork);
        QFETCH(bool, entered);
        TestTree tree;
        const Mount share(tree.path("share"), false);
        REQUIRE_MOUNTED(share);
        tree.file("share/remote.bin", 2 * MiB);
        tree.file("local.bin", 2 * MiB);

        std::vector<platform::MountEntry> table = platform::readMountTable();
        auto entry = std::find_if(table.begin(), table.end(), [&](const auto &mount) {
            return mount.mountPoint == tree.path("share");
        });
        QVERIFY(entry != table.end());
        entry->fsType = fsType;
        MountBoundary boundary(table, tree.root(), {false, enterNetwork});
        platform::WalkOptions options;
        boundary.applyTo(options);
        // Refused by its path before it is opened, so a share that never answers is never asked.
        QCOMPARE(bool(options.mayOpenFolder), !entered);
        platform::DirectoryWalker walker(tree.root(), options);
        QCOMPARE(walker.open(), platform::WalkOpenResult::ok);
        QList<QByteArray> met;
        walker.walk([&met](const platform::WalkEntry &walked) {
            if (!walked.isDirectory)
                met.append(walked.path.toByteArray());
            return platform::WalkDecision::proceed;
        });
        std::sort(met.begin(), met.end());
        if (entered) {
            QCOMPARE(met,
                     (QList<QByteArray>{tree.path("local.bin"), tree.path("share/remote.bin")}));
            QVERIFY(boundary.skipped().isEmpty());
        } else {
            QCOMPARE(met, QList<QByteArray>{tree.path("local.bin")});
            QCOMPARE(describe(boundary.skipped()),
                     QList<QByteArray>{tree.path("share") + ' ' + fsType + " networkFileSystem"});
        }
    }
};

QTEST_GUILESS_MAIN(ScanScopeTest)
#include "tst_scanscope.moc"
