#include "services/TrashService.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/FileOperations.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace ravelinth;

namespace {

QByteArray contentsOf(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return "<missing>";
    return file.readAll();
}

} // namespace

// File > Export List... saves what the table shows: the rows the filter and the search keep, in
// the order of the sort, not the files as they were found.
class ListExportViewModelTest : public QObject {
    Q_OBJECT

    QTemporaryDir dir;
    FileListModel list;
    TrashService trash;
    FileOperations operations{list, trash};

private slots:
    void initTestCase() {
        list.setFiles({
            FileItem::make("/t/Movies/b.mkv", 300, 0, ScanCategory::video),
            FileItem::make("/t/Movies/a,\"x\".mkv", 100, 60'000, ScanCategory::video),
            FileItem::make("/t/Docs/c.mkv.pdf", 200, 0, ScanCategory::document),
            FileItem::make("/t/Movies/d.mkv", 50, 0, ScanCategory::video),
            FileItem::make("/t/Movies/e.mov", 400, 0, ScanCategory::video),
        });
        list.setCategoryFilter(ScanCategory::video);
        list.setSearchText(u".MKV"_qs);
        list.setSortOption(SortOption::nameAscending);
        QVERIFY(QTest::qWaitFor(
            [this] { return list.count() == 3 && list.fileAt(0)->path.endsWith("a,\"x\".mkv"); }));
    }

    void csvHoldsTheDisplayedRowsInDisplayedOrder() {
        QSignalSpy exported(&operations, &FileOperations::exported);
        QSignalSpy failed(&operations, &FileOperations::failed);
        // No extension: the chosen filter (CSV) gives it one.
        operations.exportList(QUrl::fromLocalFile(dir.filePath(u"shown"_qs)), 0);
        QVERIFY(exported.wait(5000));
        QCOMPARE(failed.size(), 0);
        QCOMPARE(exported.first().at(0).toString(), dir.filePath(u"shown.csv"_qs));
        QCOMPARE(exported.first().at(1).toInt(), 3);
        QCOMPARE(contentsOf(dir.filePath(u"shown.csv"_qs)),
                 "name,path,size,category,modified,safe\r\n"
                 "\"a,\"\"x\"\".mkv\",\"/t/Movies/a,\"\"x\"\".mkv\",100,Videos,"
                 "1970-01-01T00:01:00.000Z,false\r\n"
                 "b.mkv,/t/Movies/b.mkv,300,Videos,1970-01-01T00:00:00.000Z,false\r\n"
                 "d.mkv,/t/Movies/d.mkv,50,Videos,1970-01-01T00:00:00.000Z,false\r\n");
    }

    void theSecondFilterChoosesJson() {
        QSignalSpy exported(&operations, &FileOperations::exported);
        operations.exportList(QUrl::fromLocalFile(dir.filePath(u"chosen"_qs)), 1);
        QVERIFY(exported.wait(5000));
        QCOMPARE(exported.first().at(0).toString(), dir.filePath(u"chosen.json"_qs));
        const QByteArray json = contentsOf(dir.filePath(u"chosen.json"_qs));
        QVERIFY2(json.startsWith("[\n{\"path\":\"/t/Movies/a,\\\"x\\\".mkv\","), json.constData());
        QCOMPARE(json.count("{\"path\""), 3);
    }

    void aFailureReachesTheErrorSignal() {
        QSignalSpy failed(&operations, &FileOperations::failed);
        operations.exportList(QUrl::fromLocalFile(dir.filePath(u"missing/list.csv"_qs)), 0);
        QVERIFY(failed.wait(5000));
        QVERIFY(failed.first().at(0).toString().contains(u"list.csv"_qs));
        operations.exportList(QUrl(u"https://example.com/list.csv"_qs), 0);
        QCOMPARE(failed.size(), 2);
    }
};

QTEST_GUILESS_MAIN(ListExportViewModelTest)
#include "tst_listexport.moc"
