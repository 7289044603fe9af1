#include "Mount.h"
#include "Programs.h"
#include "ScanChecks.h"
#include "TestTree.h"
#include "services/FileScannerService.h"

#include <QSet>
#include <QtTest>

#include <atomic>
#include <filesystem>
#include <thread>

using namespace ravelinth;
using namespace ravelinth::test;

// Trees that change while they are walked, and the system's own trees: a scan of them ends with
// a clean result and never enters what the kernel makes up.
class SystemTreesTest : public QObject {
    Q_OBJECT

private slots:
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
            std::string middle = tree.path("chain").toStdString();
            for (int i = 0; i < 150; ++i)
                middle += "/c";
            const std::string parked = tree.path("parked-chain").toStdString();
            for (qint64 round = 0; round < 2000000 && !done.load(); ++round) {
                const std::string slot = churn.toStdString() + "/d" + std::to_string(round % 16);
                switch ((round / 16) % 5) {
                case 0:
                    fs::remove(slot, ignored);
                    fs::create_directories(slot + "/sub", ignored);
                    for (int k = 0; k < 8; ++k)
                        makeSizedFile(slot + "/inner-" + std::to_string(k) + ".bin");
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
                    makeSizedFile(slot);
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
            mutator.join();
        });

        int completeChains = 0;
        qint64 lastSeen = 0;
        for (int scans = 0; scans < 40; ++scans) {
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
                else if (file.path.endsWith("/c/c/leaf.bin"))
                    ++completeChains;
                else
                    QVERIFY2(file.path.startsWith(churn + "/d") ||
                                 file.path.startsWith(tree.path("parked-chain")),
                             file.path.constData());
            }
            QCOMPARE(stableFound, stable.size());
            // A scan whose root is being replaced under it either walks what it found or fails
            // cleanly: gone before the existence test, a file by then, or replaced between the
            // test and opening the folder.
            const QByteArray slotPath = churn + "/d" + QByteArray::number(scans % 16);
            const Scan slot = scan(slotPath, 0);
            if (slot.outcome)
                checkResultIsConsistent(*slot.outcome, slotPath);
            else
                QVERIFY(slot.outcome.error().code() == FileScannerError::pathNotFound ||
                        slot.outcome.error().code() == FileScannerError::notAFolder ||
                        slot.outcome.error().code() == FileScannerError::enumeratorFailed);
        }
        qInfo("40 scans ran against %lld changes; the leaf of the deep chain was found in %d",
              qint64(mutations), completeChains);
        QVERIFY(mutations > 0);
    }

    void aScanOfTheWholeSystemSkipsPseudoFileSystems() {
        TestTree tree;
        // Every entry is walked whatever the threshold; 2 KiB keeps the list short but still
        // catches /proc/kcore (terabytes) and every sysfs attribute (4 KiB) if they were walked.
        const QByteArray sentinel = tree.file("sentinel \xe9\n.bin", 4096);
        const ProcessOutput out =
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
        // Pointed straight at a pseudo file system, the walk finds nothing in it.
        const Scan proc = scan("/proc", 0);
        QVERIFY(proc.outcome);
        QCOMPARE(proc.filesScanned, 0);
    }

    // devtmpfs gives fstatfs the magic number of tmpfs, which is walked; its mount is known by
    // its type, whether it is the root of the walk or a tree reaches it through a bind mount.
    void devtmpfsIsNeverEntered() {
        if (!pseudoMountPoints().contains("/dev"))
            QSKIP("/dev is not a devtmpfs here");
        QCOMPARE(scan("/dev", 0).filesScanned, 0);
        if (!isRoot())
            return;
        TestTree tree;
        tree.file("own.bin", 1);
        const Mount bound(tree.path("dev"), Mount::Bind{"/dev", true});
        QVERIFY2(bound.mounted(), bound.output());
        QCOMPARE(scan(tree.root(), 0).filesScanned, 1);
    }
};

QTEST_GUILESS_MAIN(SystemTreesTest)
#include "tst_systemtrees.moc"
