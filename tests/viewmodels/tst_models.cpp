// The two item models the window draws from, each under QAbstractItemModelTester, which checks
// every signal and answer against the item-model contract while the test changes the model.

#include "viewmodels/CategoryStatsModel.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/SelectionController.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

using namespace ravelinth;

namespace {

constexpr qint64 MiB = 1024 * 1024;

QList<FileItem> sampleFiles() {
    return {
        FileItem::make("/data/movie.mkv", 900 * MiB, 3000, ScanCategory::video),
        FileItem::make("/data/setup.iso", 700 * MiB, 1000, ScanCategory::installer),
        FileItem::make("/data/Archive.zip", 300 * MiB, 2000, ScanCategory::archive),
        FileItem::make("/data/notes.pdf", 200 * MiB, 4000, ScanCategory::document),
    };
}

QStringList shownNames(const FileListModel &model) {
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row)
        names.append(model.index(row, FileListModel::NameColumn).data().toString());
    return names;
}

bool waitForRows(const FileListModel &model, int rows) {
    return QTest::qWaitFor([&] { return model.rowCount() == rows; }, 10000);
}

} // namespace

class ModelsTest : public QObject {
    Q_OBJECT

private slots:
    void categoryStatsAreLargestFirstWithEveryRole() {
        CategoryStatsModel model;
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.countFiles(sampleFiles() + QList<FileItem>{FileItem::make("/data/b.zip", 500 * MiB, 0,
                                                                        ScanCategory::archive)});
        QCOMPARE(model.rowCount(), 4);
        const auto at = [&](int row, int role) { return model.index(row).data(role); };
        // Archives add up to 800 MiB, ahead of the single 700 MiB installer.
        QCOMPARE(at(0, CategoryStatsModel::NameRole).toString(), u"Videos"_qs);
        QCOMPARE(at(1, CategoryStatsModel::CategoryRole).toInt(), int(ScanCategory::archive));
        QCOMPARE(at(1, CategoryStatsModel::FileCountRole).toInt(), 2);
        QCOMPARE(at(1, CategoryStatsModel::TotalSizeRole).toDouble(), 800.0 * MiB);
        QCOMPARE(at(2, Qt::DisplayRole).toString(), u"Installers"_qs);
        QCOMPARE(at(3, CategoryStatsModel::ColorRole).toString().size(), 9); // #AARRGGBB
        model.setStats({});
        QCOMPARE(model.count(), 0);
    }

    // A new order of the same rows is published without a reset: the table keeps its cells,
    // and every row reads its new file.
    void aNewOrderOfTheSameRowsKeepsTheTable() {
        FileListModel model;
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setFiles(sampleFiles());
        QVERIFY(waitForRows(model, 4));
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
        QSignalSpy reordered(&model, &FileListModel::rowsReordered);
        QSignalSpy published(&model, &FileListModel::rowsPublished);
        model.setSortOption(SortOption::nameAscending);
        QVERIFY(!published.isEmpty() || published.wait(10000));
        QCOMPARE(resets.count(), 0);
        QCOMPARE(reordered.count(), 1);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes[0][0].value<QModelIndex>(), model.index(0, 0));
        QCOMPARE(changes[0][1].value<QModelIndex>(), model.index(3, 5));
        QCOMPARE(shownNames(model), (QStringList{u"Archive.zip"_qs, u"movie.mkv"_qs,
                                                 u"notes.pdf"_qs, u"setup.iso"_qs}));
        QCOMPARE(model.index(0, 0).data(FileListModel::CategoryRole).toInt(),
                 int(ScanCategory::archive));
        // Fewer rows, as after a filter: a reset.
        model.setCategoryFilter(ScanCategory::video);
        QVERIFY(waitForRows(model, 1));
        QCOMPARE(resets.count(), 1);
    }

    void fileListFollowsSortFilterAndSearch() {
        FileListModel model;
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.setFiles(sampleFiles());
        QVERIFY(waitForRows(model, 4));
        QCOMPARE(shownNames(model), (QStringList{u"movie.mkv"_qs, u"setup.iso"_qs,
                                                 u"Archive.zip"_qs, u"notes.pdf"_qs}));
        QCOMPARE(model.property("totalScannedSize").toDouble(), 2100.0 * MiB);
        // Installers and archives are potential savings.
        QCOMPARE(model.property("potentialSavingsFileCount").toInt(), 2);

        model.setProperty("categoryFilter", int(ScanCategory::archive));
        QVERIFY(waitForRows(model, 1));
        QCOMPARE(model.index(0, 0).data(FileListModel::CategoryNameRole).toString(),
                 u"Archives"_qs);
        model.setProperty("categoryFilter", -1);
        QCOMPARE(model.categoryFilter(), std::nullopt);
        model.setSearchText(u"S"_qs); // case-insensitive: setup.iso, notes.pdf
        QVERIFY(waitForRows(model, 2));
        QCOMPARE(model.property("fileCount").toInt(), 4);
    }

    void selectionFollowsItsFilesIntoANewList() {
        FileListModel model;
        QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::QtTest);
        SelectionController selection(model);
        QList<FileItem> files = sampleFiles();
        model.setFiles(files);
        QVERIFY(waitForRows(model, 4));
        selection.selectOnly(1);
        selection.selectRange(2, 3);
        QCOMPARE(selection.count(), 3);

        files.removeAt(2); // the archive leaves; the other two stay selected
        model.setFiles(files);
        QCOMPARE(selection.count(), 2);
        QVERIFY(waitForRows(model, 3));
        QVERIFY(!selection.isSelected(0));
        QVERIFY(selection.isSelected(1) && selection.isSelected(2));
        selection.clear();
        QCOMPARE(selection.count(), 0);
    }
};

QTEST_MAIN(ModelsTest)
#include "tst_models.moc"
