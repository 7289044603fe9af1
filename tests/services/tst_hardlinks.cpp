#include "Programs.h"
#include "ScanChecks.h"
#include "TestTree.h"
#include "models/FileTotals.h"
#include "services/FileScannerService.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <cstring>
#include <dirent.h>
#include <unistd.h>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

// Gives the data at `existing` one more name.
void link(const TestTree &tree, QByteArrayView existing, QByteArrayView name) {
    if (::link(tree.path(existing).constData(), tree.path(name).constData()) != 0)
        qFatal("link %s: %s", tree.path(name).constData(), std::strerror(errno));
}

// Which of two names comes first in the folder's own listing, read straight from the kernel.
bool listedBefore(const QByteArray &folder, const char *first, const char *second) {
    DIR *dir = ::opendir(folder.constData());
    if (!dir)
        qFatal("cannot list %s", folder.constData());
    bool before = false;
    while (const dirent *entry = ::readdir(dir)) {
        if (std::strcmp(entry->d_name, first) == 0) {
            before = true;
            break;
        }
        if (std::strcmp(entry->d_name, second) == 0)
            break;
    }
    ::closedir(dir);
    return before;
}

const FileItem &named(const ScanResult &result, const QByteArray &path) {
    for (const FileItem &file : result.files) {
        if (file.path == path)
            return file;
    }
    qFatal("%s was not kept", path.constData());
}

const CategoryStats &statsOf(const ScanResult &result, ScanCategory category) {
    return result.categoryStats[size_t(category.index())];
}

// The trip's data has three names in two folders and two categories; the installer's has two; a
// small file has two names and is not kept.
struct LinkedTree {
    TestTree tree;
    bool moviesFirst = false;

    LinkedTree() {
        tree.file("Movies/trip.mov", 10 * MiB);
        link(tree, "Movies/trip.mov", "Movies/again.mov");
        tree.folder("Backup");
        link(tree, "Movies/trip.mov", "Backup/trip.zip");
        tree.file("Downloads/setup.dmg", 20 * MiB);
        tree.folder("Elsewhere");
        link(tree, "Downloads/setup.dmg", "Elsewhere/setup.dmg");
        tree.file("report.pdf", 5 * MiB);
        tree.file("small.txt", 100);
        link(tree, "small.txt", "small-too.txt");
        moviesFirst = listedBefore(tree.root(), "Movies", "Backup");
    }
};

} // namespace

class HardLinksTest : public QObject {
    Q_OBJECT

private slots:
    void linkedDataCountsOnceUnderItsFirstName_data() {
        QTest::addColumn<int>("walkers");
        for (const int walkers : {1, 2, 3, 8})
            QTest::addRow("%d walkers", walkers) << walkers;
    }

    void linkedDataCountsOnceUnderItsFirstName() {
        QFETCH(int, walkers);
        LinkedTree linked;
        const Scan run = scan(linked.tree.root(), {MiB, true}, walkers);
        const ScanResult &result = *run.outcome;

        QCOMPARE(result.files.size(), 6);
        QCOMPARE(result.totalSize, 35 * MiB);
        QCOMPARE(run.filesScanned, 8);
        QCOMPARE(run.bytesScanned, 35 * MiB + 100);
        checkResultIsConsistent(result, linked.tree.root());

        const QByteArray zip = linked.tree.path("Backup/trip.zip");
        QCOMPARE(named(result, zip).linkCount, 3u);
        QCOMPARE(named(result, linked.tree.path("Movies/trip.mov")).linkCount, 3u);
        QCOMPARE(named(result, linked.tree.path("Elsewhere/setup.dmg")).linkCount, 2u);
        QCOMPARE(named(result, linked.tree.path("report.pdf")).linkCount, 1u);
        int tripCounted = 0;
        for (const char *name : {"Movies/trip.mov", "Movies/again.mov", "Backup/trip.zip"})
            tripCounted += named(result, linked.tree.path(name)).countedUnderAnotherName ? 0 : 1;
        QCOMPARE(tripCounted, 1);
        QCOMPARE(named(result, zip).countedUnderAnotherName, linked.moviesFirst);

        // Every name is listed under its category; the data counts where its first name is.
        const qint64 trip = 10 * MiB;
        QCOMPARE(statsOf(result, ScanCategory::video).fileCount, 2);
        QCOMPARE(statsOf(result, ScanCategory::video).totalSize, linked.moviesFirst ? trip : 0);
        QCOMPARE(statsOf(result, ScanCategory::archive).fileCount, 1);
        QCOMPARE(statsOf(result, ScanCategory::archive).totalSize, linked.moviesFirst ? 0 : trip);
        QCOMPARE(statsOf(result, ScanCategory::installer).fileCount, 2);
        QCOMPARE(statsOf(result, ScanCategory::installer).totalSize, 20 * MiB);
        QCOMPARE(statsOf(result, ScanCategory::document).totalSize, 5 * MiB);

        // The installer's data and, when its name came first, the archive's: each once.
        const FileTotals totals = sumFileTotals(result.files);
        QCOMPARE(totals.totalSize, 35 * MiB);
        QCOMPARE(totals.savings, 20 * MiB + (linked.moviesFirst ? 0 : trip));
        QCOMPARE(totals.savingsCount, 3);
    }

    void jsonTellsEachNamesLinkCountAndCountsDataOnce() {
        LinkedTree linked;
        const ProcessOutput output =
            runRavelinth({"scan", linked.tree.root(), "--min-size-mb", "1", "--json"});
        QVERIFY2(output.exitCode == 0, output.err.constData());
        const QJsonObject root = QJsonDocument::fromJson(output.out).object();
        QCOMPARE(root.value(u"totalSize").toInteger(), 35 * MiB);
        QCOMPARE(root.value(u"bytesScanned").toInteger(), 35 * MiB + 100);
        QCOMPARE(root.value(u"filesScanned").toInteger(), 8);
        QMap<QString, qint64> linkCounts;
        for (const QJsonValue &file : root.value(u"files").toArray())
            linkCounts.insert(file[u"name"].toString(), file[u"linkCount"].toInteger(-1));
        const QMap<QString, qint64> expected{{u"trip.mov"_qs, 3},
                                             {u"again.mov"_qs, 3},
                                             {u"trip.zip"_qs, 3},
                                             {u"setup.dmg"_qs, 2},
                                             {u"report.pdf"_qs, 1}};
        QCOMPARE(linkCounts, expected); // the two setup.dmg names share one key
        qint64 categoryTotal = 0;
        for (const QJsonValue &stats : root.value(u"categoryStats").toArray())
            categoryTotal += stats[u"totalSize"].toInteger();
        QCOMPARE(categoryTotal, 35 * MiB);
    }
};

QTEST_GUILESS_MAIN(HardLinksTest)
#include "tst_hardlinks.moc"
