// The walk spread over several threads must give exactly what one depth-first walk gives: the
// same entries in the same order, and so the same scan result, ties included.

#include "ScanChecks.h"
#include "TestTree.h"
#include "platform/DirectoryWalker.h"
#include "platform/ParallelDirectoryWalker.h"
#include "services/FileScannerService.h"
#include "services/ScanPruning.h"

#include <QtTest>

#include <atomic>
#include <random>
#include <thread>
#include <unistd.h>

using namespace ravelinth;
using ravelinth::test::TestTree;

namespace {

// Folders of every width and depth, hidden and pruned names, links, a chain deeper than
// PATH_MAX with files along it, and file sizes drawn from a handful of values, so that most
// kept files tie with many others on size.
void makeTree(TestTree &tree, unsigned seed) {
    std::mt19937 random(seed);
    auto below = [&](unsigned n) { return unsigned(random() % n); };
    QList<QByteArray> folders{""};
    for (int i = 0; i < 400; ++i) {
        const QByteArray &parent = folders[qsizetype(
            below(2) ? folders.size() - 1 - below(std::min<unsigned>(unsigned(folders.size()), 8))
                     : below(unsigned(folders.size())))];
        QByteArray name = below(10) == 0 ? ".hidden" : "d";
        if (below(40) == 0)
            name = ".fseventsd";
        name += QByteArray::number(i);
        if (name.startsWith(".fseventsd"))
            name = ".fseventsd";
        const QByteArray path = parent.isEmpty() ? name : parent + '/' + name;
        if (folders.contains(path))
            continue;
        tree.folder(path);
        folders.append(path);
    }
    QList<QByteArray> files;
    for (int i = 0; i < 4000; ++i) {
        const QByteArray &folder = folders[qsizetype(below(unsigned(folders.size())))];
        const char *extensions[] = {".mov", ".zip", ".txt", ".iso", ""};
        QByteArray name =
            (below(12) == 0 ? ".f" : "f") + QByteArray::number(i) + extensions[below(5)];
        if (below(15) == 0)
            name = "tmp-" + name;
        files.append(tree.file(folder.isEmpty() ? name : folder + '/' + name, qint64(below(4)),
                               qint64(1600000000 + below(3))));
    }
    // More names for some files' data, in the same folder or another and under other
    // categories, so that which name counts the data depends on the walk order.
    for (int i = 0; i < 300; ++i) {
        const QByteArray &folder = folders[qsizetype(below(unsigned(folders.size())))];
        const char *extensions[] = {".mov", ".zip", ".iso"};
        const QByteArray name = "l" + QByteArray::number(i) + extensions[below(3)];
        const QByteArray &existing = files[qsizetype(below(unsigned(files.size())))];
        ::link(existing.constData(),
               tree.path(folder.isEmpty() ? name : folder + '/' + name).constData());
    }
    for (int i = 0; i < 20; ++i) {
        const QByteArray &folder = folders[qsizetype(below(unsigned(folders.size())))];
        tree.symlink(folders[qsizetype(below(unsigned(folders.size())))].isEmpty()
                         ? tree.root()
                         : tree.path(folders[qsizetype(below(unsigned(folders.size())))]),
                     (folder.isEmpty() ? "" : folder + '/') + "link" + QByteArray::number(i));
    }
    // 200 levels of 30-character names: far past PATH_MAX and the descriptor budget.
    tree.deepChain("deep", 200, QByteArray(30, 'n'), "leaf.iso", 2);
    for (int i = 0; i < 30; ++i)
        tree.file("deep/x" + QByteArray::number(i), qint64(below(4)));
}

struct Seen {
    QByteArray path;
    bool isDirectory;
    qint64 size;
};

QList<Seen> serialWalk(const QByteArray &root, const platform::WalkOptions &options) {
    QList<Seen> seen;
    platform::DirectoryWalker walker(root, options);
    if (walker.open() != platform::WalkOpenResult::ok)
        qFatal("cannot open the tree");
    walker.walk([&](const platform::WalkEntry &entry) {
        seen.append({entry.path.toByteArray(), entry.isDirectory, entry.size});
        return platform::WalkDecision::proceed;
    });
    return seen;
}

// The entries a parallel walk met, put in walk order; with `stopAfter`, the walk is told to stop
// at the entry that makes that many met, and `met` says how many the workers met in all.
QList<Seen> parallelWalk(const QByteArray &root, const platform::WalkOptions &options, int workers,
                         int &handOffs, int stopAfter = 0, int *met = nullptr) {
    platform::ParallelDirectoryWalker walker(root, options, workers);
    if (walker.open() != platform::WalkOpenResult::ok)
        qFatal("cannot open the tree");
    std::vector<QList<Seen>> perWorker(static_cast<size_t>(workers));
    std::atomic<int> seenSoFar{0};
    const platform::ParallelDirectoryWalker::Visit visit = [&](int worker,
                                                               const platform::WalkEntry &entry) {
        perWorker[size_t(worker)].append({entry.path.toByteArray(), entry.isDirectory, entry.size});
        const bool stop = ++seenSoFar == stopAfter;
        return platform::WalkVisit{
            stop ? platform::WalkDecision::stop : platform::WalkDecision::proceed, true};
    };
    std::vector<std::thread> running;
    for (int worker = 0; worker < workers; ++worker)
        running.emplace_back([&, worker] { walker.runWorker(worker, visit); });
    for (std::thread &thread : running)
        thread.join();
    handOffs += walker.handOffs();
    if (met)
        *met = seenSoFar;
    QList<Seen> seen;
    for (const platform::EmittedRun &run : walker.emittedInWalkOrder()) {
        for (std::uint32_t i = run.start; i < run.start + run.count; ++i)
            seen.append(perWorker[run.worker][i]);
    }
    return seen;
}

QList<QByteArray> pathsOf(const QList<Seen> &seen) {
    QList<QByteArray> paths;
    for (const Seen &entry : seen)
        paths.append(entry.path);
    return paths;
}

// Everything a scan says: the counters, the progress reports, and one line per file and per
// category.
QByteArrayList describe(const test::Scan &scan) {
    const ScanResult &result = *scan.outcome;
    QByteArrayList lines{QByteArray::number(scan.filesScanned),
                         QByteArray::number(scan.bytesScanned),
                         QByteArray::number(result.totalSize)};
    for (const test::Scan::Progress &report : scan.progress)
        lines << "report at " + QByteArray::number(report.files);
    for (const FileItem &file : result.files)
        lines << file.path + ' ' + QByteArray::number(file.size) + ' ' +
                     QByteArray::number(file.modifiedMSecs) + ' ' +
                     QByteArray::number(file.category.index()) + ' ' +
                     QByteArray::number(file.linkCount) +
                     (file.countedUnderAnotherName ? " again" : "");
    lines << QByteArray::number(result.unreadableFolders);
    for (const CategoryStats &stats : result.categoryStats)
        lines << QByteArray::number(stats.category.index()) + ' ' +
                     QByteArray::number(stats.fileCount) + ' ' +
                     QByteArray::number(stats.totalSize);
    return lines;
}

} // namespace

class ParallelScanTest : public QObject {
    Q_OBJECT

private slots:
    void everyWorkerCountMeetsTheEntriesInTheSerialOrder() {
        TestTree tree;
        makeTree(tree, 7);
        for (const bool hidden : {false, true}) {
            platform::WalkOptions options;
            options.skipHiddenEntries = !hidden;
            addScanPruning(options, true);
            const QList<Seen> expected = serialWalk(tree.root(), options);
            QVERIFY2(expected.size() > 1000, QByteArray::number(expected.size()));
            int handOffs = 0;
            for (const int workers : {1, 2, 3, 4, 8}) {
                for (int round = 0; round < 4; ++round) {
                    const QList<Seen> seen = parallelWalk(tree.root(), options, workers, handOffs);
                    QCOMPARE(pathsOf(seen), pathsOf(expected));
                }
            }
            // The comparison means something only if work did change hands.
            QVERIFY(handOffs > 20);
        }
    }

    // A stop leaves parts of folders handed out but never walked; what the workers did meet must
    // still all come out, in the serial order.
    void aStoppedWalkStillPutsEverythingItMetInOrder() {
        TestTree tree;
        makeTree(tree, 5);
        platform::WalkOptions options;
        const QList<QByteArray> expected = pathsOf(serialWalk(tree.root(), options));
        int handOffs = 0;
        for (const int stopAfter : {50, 400, 900}) {
            for (int round = 0; round < 4; ++round) {
                int met = 0;
                const QList<QByteArray> seen =
                    pathsOf(parallelWalk(tree.root(), options, 8, handOffs, stopAfter, &met));
                QCOMPARE(seen.size(), met);
                qsizetype at = 0;
                for (const QByteArray &path : seen) {
                    at = expected.indexOf(path, at);
                    QVERIFY2(at >= 0, path.constData());
                }
            }
        }
    }

    void parallelScansGiveTheSerialResultWithTiesInWalkOrder() {
        TestTree tree;
        makeTree(tree, 11);
        for (const qint64 threshold : {qint64(0), qint64(2)}) {
            for (const bool hidden : {false, true}) {
                const ScanConfiguration configuration{threshold, hidden, true, false};
                const test::Scan serial = test::scan(tree.root(), configuration, 1);
                QVERIFY2(serial.outcome->files.size() > 300,
                         QByteArray::number(serial.outcome->files.size()));
                // Down to the report for every hundred counted files, in order.
                const QByteArrayList expected = describe(serial);
                for (const int threads : {2, 3, 4}) {
                    for (int round = 0; round < 3; ++round)
                        QCOMPARE(describe(test::scan(tree.root(), configuration, threads)),
                                 expected);
                }
            }
        }
    }
};

QTEST_GUILESS_MAIN(ParallelScanTest)
#include "tst_parallelscan.moc"
