#include "TestTree.h"
#include "services/ListExportService.h"

#include <QFile>
#include <QFileInfo>
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

// An export writes the given rows, in the given order, to a real file, whole or not at all.
class ListExportTest : public QObject {
    Q_OBJECT

    test::TestTree tree;
    QList<FileItem> files{
        FileItem::make("/m/a.mkv", 10, 0, ScanCategory::video),
        FileItem::make("/m/b.zip", 20, 1000, ScanCategory::archive),
        FileItem::make("/m/c.pdf", 30, 2000, ScanCategory::document),
    };

    QString target(const char *name) { return QFile::decodeName(tree.path(name)); }

private slots:
    void csvHoldsTheRowsInTheirOrder() {
        const QString path = target("rows.csv");
        const ListExportOutcome outcome =
            ListExportService::exportRowsNow({path, ListExportFormat::csv}, files, {2, 0});
        QVERIFY(outcome);
        QCOMPARE(*outcome, 2);
        QCOMPARE(contentsOf(path), "name,path,size,category,modified,safe\r\n"
                                   "c.pdf,/m/c.pdf,30,Documents,1970-01-01T00:00:02.000Z,false\r\n"
                                   "a.mkv,/m/a.mkv,10,Videos,1970-01-01T00:00:00.000Z,false\r\n");
    }

    void jsonIsAnArrayOfFileObjects() {
        const QString path = target("rows.json");
        QVERIFY(ListExportService::exportRowsNow({path, ListExportFormat::json}, files, {1}));
        QCOMPARE(contentsOf(path),
                 "[\n{\"path\":\"/m/b.zip\",\"name\":\"b.zip\",\"size\":20,"
                 "\"fileExtension\":\"zip\",\"modifiedDate\":\"1970-01-01T00:00:01.000Z\","
                 "\"category\":\"Archives\",\"isSafeToDelete\":true,\"linkCount\":1}\n]\n");
    }

    void noRowsIsAHeaderOrAnEmptyArray() {
        QVERIFY(ListExportService::exportRowsNow({target("none.csv"), ListExportFormat::csv}, files,
                                                 {}));
        QCOMPARE(contentsOf(target("none.csv")), "name,path,size,category,modified,safe\r\n");
        QVERIFY(ListExportService::exportRowsNow({target("none.json"), ListExportFormat::json},
                                                 files, {}));
        QCOMPARE(contentsOf(target("none.json")), "[\n]\n");
    }

    void aMissingFolderFails() {
        const ListExportOutcome outcome = ListExportService::exportRowsNow(
            {target("missing/rows.csv"), ListExportFormat::csv}, files, {0});
        QVERIFY(!outcome);
        QVERIFY2(outcome.error().contains(u"rows.csv"_qs), qPrintable(outcome.error()));
        QVERIFY(!QFile::exists(target("missing")));
    }

    // The new text is only swapped in once whole: a failure at the last step leaves what was
    // there (here a folder, which no file can replace).
    void aFailedReplacementLeavesWhatWasThere() {
        tree.file("taken.csv/inside");
        const ListExportOutcome outcome = ListExportService::exportRowsNow(
            {target("taken.csv"), ListExportFormat::csv}, files, {0});
        QVERIFY(!outcome);
        QVERIFY(QFileInfo(target("taken.csv")).isDir());
        QVERIFY(QFile::exists(target("taken.csv/inside")));
    }

    // Long enough to be written in several blocks, each formatted in two halves at once: the
    // lines still come out whole and in the order given.
    void aLongListKeepsItsOrder() {
        constexpr int count = 40'000;
        QList<FileItem> many;
        QList<int> rows;
        for (int i = 0; i < count; ++i) {
            many.append(
                FileItem::make("/m/f" + QByteArray::number(i) + ".bin", i, 0, ScanCategory::other));
            rows.prepend(i);
        }
        const QString path = target("long.csv");
        QVERIFY(ListExportService::exportRowsNow({path, ListExportFormat::csv}, many, rows));
        const QList<QByteArray> lines = contentsOf(path).split('\n');
        QCOMPARE(lines.size(), count + 2); // the header, the rows, and nothing after the last end
        for (int line = 1; line <= count; ++line) {
            const QByteArray n = QByteArray::number(count - line);
            QCOMPARE(lines[line], "f" + n + ".bin,/m/f" + n + ".bin," + n +
                                      ",Other,1970-01-01T00:00:00.000Z,false\r");
        }
        QCOMPARE(lines.last(), QByteArray());
    }

    void theBackgroundFormReportsOnTheFuture() {
        ListExportService service;
        QFuture<ListExportOutcome> future =
            service.exportRows({target("later.csv"), ListExportFormat::csv}, files, {1});
        future.waitForFinished();
        QVERIFY(future.result());
        QCOMPARE(contentsOf(target("later.csv")),
                 "name,path,size,category,modified,safe\r\n"
                 "b.zip,/m/b.zip,20,Archives,1970-01-01T00:00:01.000Z,true\r\n");
    }
};

QTEST_GUILESS_MAIN(ListExportTest)
#include "tst_listexport.moc"
