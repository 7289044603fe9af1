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
    void jsonIsAnArrayOfTheRowsInTheirOrder() {
        const QString path = target("rows.json");
        QVERIFY(ListExportService::exportRowsNow({path, ListExportFormat::json}, files, {1, 0}));
        QCOMPARE(contentsOf(path),
                 "[\n{\"path\":\"/m/b.zip\",\"name\":\"b.zip\",\"size\":20,"
                 "\"fileExtension\":\"zip\",\"modifiedDate\":\"1970-01-01T00:00:01.000Z\","
                 "\"category\":\"Archives\",\"isSafeToDelete\":true,\"linkCount\":1},\n"
                 "{\"path\":\"/m/a.mkv\",\"name\":\"a.mkv\",\"size\":10,"
                 "\"fileExtension\":\"mkv\",\"modifiedDate\":\"1970-01-01T00:00:00.000Z\","
                 "\"category\":\"Videos\",\"isSafeToDelete\":false,\"linkCount\":1}\n]\n");
    }

    void noRowsIsAHeaderOrAnEmptyArray() {
        QVERIFY(ListExportService::exportRowsNow({target("none.csv"), ListExportFormat::csv}, files,
                                                 {}));
        QCOMPARE(contentsOf(target("none.csv")), "name,path,size,category,modified,safe\r\n");
        QVERIFY(ListExportService::exportRowsNow({target("none.json"), ListExportFormat::json},
                                                 files, {}));
        QCOMPARE(contentsOf(target("none.json")), "[\n]\n");
    }

    // A missing folder is not made; and the new text is only swapped in once whole, so a failure
    // at the last step leaves what was there (here a folder, which no file can replace).
    void aFailedExportLeavesEverythingAsItWas() {
        const ListExportOutcome missing = ListExportService::exportRowsNow(
            {target("missing/rows.csv"), ListExportFormat::csv}, files, {0});
        QVERIFY(!missing);
        QVERIFY2(missing.error().contains(u"rows.csv"_qs), qPrintable(missing.error()));
        QVERIFY(!QFile::exists(target("missing")));
        tree.file("taken.csv/inside");
        QVERIFY(!ListExportService::exportRowsNow({target("taken.csv"), ListExportFormat::csv},
                                                  files, {0}));
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
};

QTEST_GUILESS_MAIN(ListExportTest)
#include "tst_listexport.moc"
