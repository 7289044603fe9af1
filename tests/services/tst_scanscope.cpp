#include "Mount.h"
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

// Every file of a MiB or more, hidden ones too, the system folders skipped.
const ScanConfiguration everyFileFromAMiB{MiB, true, true};

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
        ScanConfiguration configuration = everyFileFromAMiB;
        for (const QByteArray &word :
             {QByteArray("node_modules"), QByteArray(".git"), QByteArray("*.vmdk"),
              QByteArray("build/*.o"), tree.path("private") + '/'})
            configuration.exclusions.add(word);
        const Scan run = scan(tree.root(), configuration, walkers);
        const ScanResult &result = *run.outcome;
        QCOMPARE(sortedPaths(result),
                 (QList<QByteArray>{tree.path("keep/report.pdf"), tree.path("lib/build/b.o"),
                                    tree.path("vm/disk.vmdk.txt")}));
        // Left out is not counted either; the link itself is an entry of its own.
        QCOMPARE(run.filesScanned, 4);
        QCOMPARE(result.totalSize, 6 * MiB);
        checkResultIsConsistent(result, tree.root());
    }

    void anExcludedRootIsStillScannedWhenAskedForByName() {
        TestTree tree;
        tree.file("a.bin", 2 * MiB);
        ScanConfiguration configuration = everyFileFromAMiB;
        configuration.exclusions.add(tree.root());
        QCOMPARE(scan(tree.root(), configuration, 2).outcome->files.size(), 1);
    }

    // A folder bound into itself, and a folder outside the scan bound into it twice: what a bind
    // shows again is passed over, and the first sight of a folder from outside is walked.
    void aFolderSeenAgainThroughABindMountIsListedOnce() {
        TestTree outside;
        outside.file("shared/big.iso", 4 * MiB);
        TestTree tree;
        tree.file("data/movie.mkv", 3 * MiB);
        tree.file("data/sub/notes.bin", 2 * MiB);
        const Mount loop(tree.path("data/sub/mirror"), Mount::Bind{tree.path("data")});
        const Mount bind(tree.path("seen"), Mount::Bind{outside.path("shared")});
        const Mount again(tree.path("seen-again"), Mount::Bind{outside.path("shared")});
        for (const Mount *mount : {&loop, &bind, &again})
            REQUIRE_MOUNTED(*mount);
        for (int walkers : {1, 3}) {
            const ScanResult result = *scan(tree.root(), everyFileFromAMiB, walkers).outcome;
            const QList<QByteArray> paths = sortedPaths(result);
            QCOMPARE(paths.size(), 3);
            QCOMPARE(paths.mid(0, 2), (QList<QByteArray>{tree.path("data/movie.mkv"),
                                                         tree.path("data/sub/notes.bin")}));
            QVERIFY2(paths[2].endsWith("/big.iso"), paths[2].constData());
            QCOMPARE(result.totalSize, 9 * MiB);
            QCOMPARE(result.skippedMounts.size(), 2);
            QVERIFY(result.skippedMounts[0].path == tree.path("data/sub/mirror") ||
                    result.skippedMounts[1].path == tree.path("data/sub/mirror"));
            for (const SkippedMount &skipped : result.skippedMounts)
                QCOMPARE(skipped.reason, SkippedMount::Reason::alreadyScanned);
        }
    }

    void oneFileSystemStaysOffALoopMountedDisk() {
        TestTree tree;
        tree.file("here.bin", 2 * MiB);
        const Mount disk(tree.path("disk"), true);
        REQUIRE_MOUNTED(disk);
        tree.file("disk/there.bin", 3 * MiB);

        const ScanResult everything = *scan(tree.root(), everyFileFromAMiB, 2).outcome;
        // The disk's image lies beside it, on the scan's own file system.
        QCOMPARE(sortedPaths(everything),
                 (QList<QByteArray>{tree.path("disk.img"), tree.path("disk/there.bin"),
                                    tree.path("here.bin")}));
        QVERIFY(everything.skippedMounts.isEmpty());

        ScanConfiguration oneFileSystem = everyFileFromAMiB;
        oneFileSystem.stayOnOneFileSystem = true;
        const Scan stayed = scan(tree.root(), oneFileSystem, 2);
        QCOMPARE(sortedPaths(*stayed.outcome),
                 (QList<QByteArray>{tree.path("disk.img"), tree.path("here.bin")}));
        QCOMPARE(stayed.filesScanned, 2);
        QCOMPARE(describe(stayed.outcome->skippedMounts),
                 QList<QByteArray>{tree.path("disk") + " ext4 otherFileSystem"});

        // Scanning the disk itself with the same setting walks it: its root is the boundary.
        QCOMPARE(scan(tree.path("disk"), oneFileSystem, 2).outcome->files.size(), 1);
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
