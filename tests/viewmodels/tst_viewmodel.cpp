#include "TestTree.h"
#include "viewmodels/CategoryStatsModel.h"
#include "viewmodels/DiskInfoController.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/MoveUndo.h"
#include "viewmodels/Preferences.h"
#include "viewmodels/RavelinthViewModel.h"
#include "viewmodels/SelectionController.h"

#include <QSignalSpy>
#include <QtTest>

#include <filesystem>
#include <sys/stat.h>

using namespace ravelinth;
using ravelinth::test::TestTree;

namespace {

constexpr qint64 MiB = 1024 * 1024;

QStringList namesOf(const QList<FileItem> &files) {
    QStringList names;
    for (const FileItem &file : files)
        names.append(file.displayName());
    return names;
}

bool waitForCompletion(RavelinthViewModel &model) {
    return QTest::qWaitFor(
        [&] { return model.scanState().isCompleted() || model.scanState().isError(); }, 60000);
}

// Waits until the table shows what the query defines.
bool waitForTable(RavelinthViewModel &model) {
    return QTest::qWaitFor(
        [&] {
            const QList<FileItem> expected = model.displayedFiles();
            const FileListModel *table = model.fileList();
            if (table->rowCount() != expected.size())
                return false;
            for (int row = 0; row < expected.size(); ++row) {
                if (table->fileIdAt(row) != expected[row].id.toString(QUuid::WithoutBraces))
                    return false;
            }
            return true;
        },
        10000);
}

// True while this process holds a descriptor at or below `root`, as a walk of it does. A path
// too long for the kernel to name is counted, since only a walk reaches that deep.
bool holdsDescriptorsUnder(const QByteArray &root) {
    std::error_code error;
    for (const auto &fd : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        const std::string target = std::filesystem::read_symlink(fd.path(), error).native();
        if (error == std::errc::filename_too_long)
            return true;
        if (!error &&
            (target == root.toStdString() || target.starts_with(root.toStdString() + '/')))
            return true;
    }
    return false;
}

} // namespace

class ViewModelTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    test::ScopedTestEnvironment environment;

    void scan(RavelinthViewModel &model, const QByteArray &path, double megabytes = 1) {
        model.setScanPath(QFile::decodeName(path));
        model.setMinFileSizeMB(megabytes);
        model.startScan();
        QVERIFY(waitForCompletion(model));
        QVERIFY(waitForTable(model));
    }

private slots:
    void initTestCase() {
        QCoreApplication::setOrganizationName(u"Ravelinth"_qs);
        QCoreApplication::setApplicationName(u"Ravelinth"_qs);
        // Collation follows the user's locale; the tests run under C.UTF-8.
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    // A new model starts idle on the home folder with the saved scanner preferences, and reads
    // the disk by itself.
    void constructionReadsTheDiskAndThePreferences() {
        {
            Preferences preferences;
            preferences.setDefaultMinSizeMB(1024.0);
            preferences.setIncludeHiddenFiles(true);
        }
        RavelinthViewModel model;
        QVERIFY(model.scanState().isIdle());
        QCOMPARE(model.scanPath(), QDir::homePath());
        QCOMPARE(model.minFileSizeMB(), 1024.0);
        QVERIFY(model.includeHiddenFiles());
        QVERIFY(!model.diskInfo());
        QTRY_VERIFY_WITH_TIMEOUT(model.diskInfo().has_value(), 10000);
        QCOMPARE(model.diskInfo()->mountPoint, u"/"_qs);
        QVERIFY(!model.errorMessage());
        model.preferences()->setIncludeHiddenFiles(false);
        QVERIFY(!model.includeHiddenFiles());
    }

    // A change in Settings reaches the scanner, except while it scans (then when it ends); a
    // change to one preference leaves a threshold typed into the scanner alone; the system
    // folders preference decides whether a trash folder is walked; the units preference
    // rewrites the table's sizes.
    void preferencesActOnTheScannerAndTheSizes() {
        TestTree tree;
        tree.file("keep/big.bin", 2 * MiB);
        tree.file(".Trash/old.bin", 3 * MiB);
        RavelinthViewModel model;
        Preferences &preferences = *model.preferences();
        preferences.setIncludeHiddenFiles(true);
        QVERIFY(model.includeHiddenFiles());

        model.setMinFileSizeMB(42);
        preferences.setShowSizesInBinary(true);
        QCOMPARE(model.minFileSizeMB(), 42.0);

        scan(model, tree.root());
        QCOMPARE(namesOf(model.files()), QStringList{u"big.bin"_qs});
        QCOMPARE(model.fileList()->index(0, FileListModel::SizeColumn).data().toString(),
                 u"2 MiB"_qs);
        preferences.setShowSizesInBinary(false);
        QCOMPARE(model.fileList()->index(0, FileListModel::SizeColumn).data().toString(),
                 u"2.1 MB"_qs);

        preferences.setSkipSystemDirectories(false);
        model.setMinFileSizeMB(1);
        model.startScan();
        QVERIFY(model.isScanning());
        preferences.setDefaultMinSizeMB(250.0);
        QCOMPARE(model.minFileSizeMB(), 1.0);
        QVERIFY(waitForCompletion(model));
        QVERIFY(waitForTable(model));
        QCOMPARE(namesOf(model.files()), (QStringList{u"old.bin"_qs, u"big.bin"_qs}));
        QCOMPARE(model.minFileSizeMB(), 250.0);

        preferences.setSkipSystemDirectories(true);
        preferences.setIncludeHiddenFiles(false);
        preferences.setDefaultMinSizeMB(100.0);
        QCOMPARE(model.minFileSizeMB(), 100.0);
    }

    void aScanRunsFromStartToCompletion() {
        TestTree tree;
        tree.file("half.iso", 512 * 1024);
        tree.file("below.iso", 512 * 1024 - 1);
        tree.file("big.mkv", 3 * MiB);
        tree.file("b/archive.zip", 2 * MiB);
        tree.file("b/c/archive2.zip", 2 * MiB);
        tree.file(".hidden.mkv", 9 * MiB);

        RavelinthViewModel model;
        QSignalSpy disk(model.disk(), &DiskInfoController::infoChanged);
        QTRY_VERIFY(disk.size() == 1);
        model.setScanPath(u"/nonexistent-before-the-task-begins"_qs);
        model.setMinFileSizeMB(0.5);
        model.startScan();
        // The state changes at once; the path is read only when the task begins.
        QCOMPARE(model.scanState(),
                 ScanState::scanning(u"/nonexistent-before-the-task-begins"_qs, 0, 0, {}));
        model.setScanPath(QFile::decodeName(tree.root()));
        model.startScan(); // ignored while scanning
        QVERIFY(waitForCompletion(model));

        const auto *completed = model.scanState().as<scanstate::Completed>();
        QVERIFY(completed);
        QCOMPARE(completed->filesFound, 4);
        QCOMPARE(completed->totalSize, 7 * MiB + 512 * 1024);
        QCOMPARE(namesOf(model.files()), (QStringList{u"big.mkv"_qs, u"archive.zip"_qs,
                                                      u"archive2.zip"_qs, u"half.iso"_qs}));
        QCOMPARE(model.totalScannedSize(), 7 * MiB + 512 * 1024);
        QCOMPARE(model.potentialSavings(), 4 * MiB + 512 * 1024);
        QTRY_COMPARE(disk.size(), 2); // read again after the scan

        // Hidden files come with the option; a new start clears the old results first.
        model.setIncludeHiddenFiles(true);
        model.selectAll();
        QCOMPARE(model.selectedCount(), 4);
        model.startScan();
        QVERIFY(model.files().isEmpty());
        QVERIFY(model.categoryStats().isEmpty());
        QVERIFY(model.selectedFiles().isEmpty());
        QVERIFY(waitForCompletion(model));
        QCOMPARE(model.files().first().displayName(), u".hidden.mkv"_qs);
    }

    // A stopped scan of a big tree may end after a newer scan of a small one has finished; what
    // the stopped one found must not replace the newer result.
    void aStoppedScanNeverOverwritesANewerOne() {
        TestTree big;
        big.deepChain("chain", 10000, "d", "deep.iso", 2 * MiB);
        TestTree small;
        small.file("small.iso", 2 * MiB);
        RavelinthViewModel model;
        model.setMinFileSizeMB(1);
        model.setScanPath(QFile::decodeName(big.root()));
        model.startScan();
        QCoreApplication::processEvents(); // the scan's task begins and reads its path
        model.stopScan();
        model.setScanPath(QFile::decodeName(small.root()));
        model.startScan();
        QVERIFY(waitForCompletion(model));
        // The stopped walk ends; its result, if it were written, would follow at once.
        QVERIFY(QTest::qWaitFor([&] { return !holdsDescriptorsUnder(big.root()); }, 60000));
        QTest::qWait(100);
        QCOMPARE(namesOf(model.files()), QStringList{u"small.iso"_qs});
        QCOMPARE(model.scanState().as<scanstate::Completed>()->filesFound, 1);
    }

    void theListIsFilteredAndSearched() {
        TestTree tree;
        tree.file("b.zip", 2 * MiB);
        tree.file("A.zip", 2 * MiB);
        tree.file("a.zip", 4 * MiB);
        tree.file("Projects/holiday.mov", 3 * MiB);
        tree.file("Projects/report.pdf", 5 * MiB);
        tree.file("\xc3\x89t\xc3\xa9.mov", 6 * MiB); // Été.mov
        RavelinthViewModel model;
        scan(model, tree.root());

        model.setSearchText(u"MOV"_qs);
        QVERIFY(waitForTable(model));
        QCOMPARE(model.displayedFiles().size(), 2);
        model.setSearchText(u"\u00E9T\u00C9"_qs); // case folds, accents kept
        QVERIFY(waitForTable(model));
        QCOMPARE(model.displayedFiles().size(), 1);
        model.setSearchText(u"Projects"_qs);
        model.setCategoryFilter(ScanCategory::document);
        QVERIFY(waitForTable(model));
        QCOMPARE(namesOf(model.displayedFiles()), QStringList{u"report.pdf"_qs});

        // Select-all takes exactly what is shown; the selection outlives the filters.
        model.setCategoryFilter(std::nullopt);
        model.setSearchText(QString());
        QVERIFY(waitForTable(model));
        model.selection()->toggle(0);
        model.setCategoryFilter(ScanCategory::archive);
        QVERIFY(waitForTable(model));
        model.selectAll();
        QCOMPARE(model.selectedCount(), 3);
        model.setSearchText(u"b.zip"_qs);
        QVERIFY(waitForTable(model));
        QCOMPARE(model.selectedFileItems().size(), 3);
        QCOMPARE(model.displayedCount(), 1);
        QVERIFY(model.selection()->isSelected(0));
        QCOMPARE(model.selection()->clickedSet(0).size(), 3);
    }

    void trashingFollowsTheListAndTheSelection() {
        TestTree tree;
        const QByteArray gone = tree.file("gone.iso", 3 * MiB);
        tree.file("keep.mov", 2 * MiB);
        tree.file("only.pdf", 4 * MiB);
        tree.file("other.iso", 5 * MiB);
        RavelinthViewModel model;
        scan(model, tree.root());
        QCOMPARE(model.categoryStats().size(), 9);

        // The batch: a file that vanished fails silently and the whole selection clears.
        ::unlink(gone.constData());
        model.setSearchText(u"o"_qs);
        QVERIFY(waitForTable(model));
        QSet<QUuid> selection;
        for (const FileItem &file : model.files()) {
            if (file.displayName() != u"keep.mov"_qs)
                selection.insert(file.id);
        }
        model.setSelectedFiles(selection);
        QSignalSpy stats(model.categoryStatsModel(), &CategoryStatsModel::statsChanged);
        model.moveSelectedToTrash();
        QVERIFY(stats.wait(10000));
        QCOMPARE(namesOf(model.files()), (QStringList{u"gone.iso"_qs, u"keep.mov"_qs}));
        QVERIFY(model.selectedFiles().isEmpty());
        QVERIFY(!model.errorMessage());
        QCOMPARE(model.categoryStats().size(), 2); // rebuilt: emptied categories disappear
        QVERIFY(model.scanState().isCompleted());

        // One file: a failure is shown and changes nothing else.
        const FileItem missing = model.files().first();
        model.setSelectedFiles({missing.id});
        model.moveToTrash(missing);
        QTRY_VERIFY(model.errorMessage().has_value());
        QVERIFY(model.errorMessage()->startsWith(u"Failed to move 'gone.iso' to Trash: "_qs));
        QCOMPARE(model.files().size(), 2);
        QCOMPARE(model.selectedCount(), 1);

        // One file that moves is offered for undo, as a batch is.
        const FileItem keep = model.files().last();
        model.moveToTrash(keep);
        QTRY_COMPARE(model.categoryStats().size(), 1);
        QCOMPARE(model.files().size(), 1);
        QCOMPARE(model.selectedCount(), 1);
        QCOMPARE(model.undo()->noticeText(), u"Moved 1 file (2.1 MB) to the Trash"_qs);
        QVERIFY(model.undo()->canUndo());
    }
};

QTEST_GUILESS_MAIN(ViewModelTest)
#include "tst_viewmodel.moc"
