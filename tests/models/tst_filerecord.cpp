#include "models/FileRecord.h"
#include "models/IsoTime.h"
#include "models/JsonText.h"
#include "models/ListExportFormat.h"

#include <QtTest>

using namespace ravelinth;

namespace {

FileItem fileAt(QByteArray path, qint64 size, qint64 msecs, ScanCategory category) {
    return FileItem::make(std::move(path), size, msecs, category);
}

} // namespace

// How a kept file is written for other programs: CSV fields quoted only where RFC 4180 asks,
// times in ISO 8601 UTC, and the JSON object that both `scan --json` and the export write.
class FileRecordTest : public QObject {
    Q_OBJECT

private slots:
    void csvField_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("plain") << QByteArray("movie.mkv") << QByteArray("movie.mkv");
        QTest::newRow("empty") << QByteArray() << QByteArray();
        QTest::newRow("space") << QByteArray(" a b ") << QByteArray(" a b ");
        QTest::newRow("comma") << QByteArray("a,b") << QByteArray("\"a,b\"");
        QTest::newRow("quote") << QByteArray("say \"hi\"") << QByteArray("\"say \"\"hi\"\"\"");
        QTest::newRow("only quote") << QByteArray("\"") << QByteArray("\"\"\"\"");
        QTest::newRow("line feed") << QByteArray("a\nb") << QByteArray("\"a\nb\"");
        QTest::newRow("carriage return") << QByteArray("a\rb") << QByteArray("\"a\rb\"");
        QTest::newRow("semicolon and tab") << QByteArray("a;b\tc") << QByteArray("a;b\tc");
        QTest::newRow("non-ASCII") << QByteArray("caf\xc3\xa9") << QByteArray("caf\xc3\xa9");
    }
    void csvField() {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, expected);
        QByteArray out("x");
        appendCsvField(out, text);
        QCOMPARE(out, "x" + expected);
    }

    // The copied-path table reaches this check with each invalid form it quotes; these are the
    // forms it does not hold.
    void utf8Validity_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("valid");
        QTest::newRow("empty") << QByteArray() << true;
        QTest::newRow("four bytes") << QByteArray("\xf0\x9f\x98\x80") << true;
        QTest::newRow("overlong three") << QByteArray("\xe0\x80\xaf") << false;
        QTest::newRow("lone continuation") << QByteArray("\x80") << false;
        QTest::newRow("bad third byte") << QByteArray("\xe2\x82\x41") << false;
    }
    void utf8Validity() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, valid);
        QCOMPARE(isValidUtf8(bytes), valid);
    }

    void isoTime_data() {
        QTest::addColumn<qint64>("msecs");
        QTest::addColumn<QString>("expected");
        QTest::newRow("epoch") << qint64(0) << u"1970-01-01T00:00:00.000Z"_qs;
        QTest::newRow("milliseconds")
            << qint64(1'795'553'520'123) << u"2026-11-24T20:52:00.123Z"_qs;
        QTest::newRow("leap day") << qint64(951'782'400'000) << u"2000-02-29T00:00:00.000Z"_qs;
        QTest::newRow("last moment of a year")
            << qint64(1'704'067'199'999) << u"2023-12-31T23:59:59.999Z"_qs;
        QTest::newRow("before the epoch") << qint64(-1) << u"1969-12-31T23:59:59.999Z"_qs;
        QTest::newRow("long before")
            << qint64(-2'208'988'800'000) << u"1900-01-01T00:00:00.000Z"_qs;
    }
    void isoTime() {
        QFETCH(qint64, msecs);
        QFETCH(QString, expected);
        QCOMPARE(isoUtcText(msecs), expected);
    }

    void csvRows_data() {
        QTest::addColumn<FileItem>("file");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("plain") << fileAt("/home/u/Movies/a.mkv", 1'500'000'000, 1'795'553'520'000,
                                         ScanCategory::video)
                               << QByteArray("a.mkv,/home/u/Movies/a.mkv,1500000000,Videos,"
                                             "2026-11-24T20:52:00.000Z,false\r\n");
        QTest::newRow("safe by category")
            << fileAt("/d/x.zip", 7, 0, ScanCategory::archive)
            << QByteArray("x.zip,/d/x.zip,7,Archives,1970-01-01T00:00:00.000Z,true\r\n");
        QTest::newRow("not UTF-8")
            << fileAt("/d\xff/caf\xe9.mov", 2, 0, ScanCategory::video)
            << QByteArray("caf\xef\xbf\xbd.mov,/d\xef\xbf\xbd/caf\xef\xbf\xbd.mov,2,Videos,"
                          "1970-01-01T00:00:00.000Z,false\r\n");
    }
    void csvRows() {
        QFETCH(FileItem, file);
        QFETCH(QByteArray, expected);
        QByteArray out;
        appendFileCsv(out, file);
        QCOMPARE(out, expected);
    }

    void jsonObjects_data() {
        QTest::addColumn<FileItem>("file");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("plain")
            << fileAt("/home/u/Movies/A.MKV", 1'500'000'000, 1'795'553'520'123, ScanCategory::video)
            << QByteArray("{\"path\":\"/home/u/Movies/A.MKV\",\"name\":\"A.MKV\","
                          "\"size\":1500000000,\"fileExtension\":\"mkv\","
                          "\"modifiedDate\":\"2026-11-24T20:52:00.123Z\",\"category\":\"Videos\","
                          "\"isSafeToDelete\":false,\"linkCount\":1}");
        QTest::newRow("escapes")
            << fileAt("/d/q\"b\\\n\x01", 3, 0, ScanCategory::other)
            << QByteArray("{\"path\":\"/d/q\\\"b\\\\\\n\\u0001\",\"name\":\"q\\\"b\\\\\\n\\u0001\","
                          "\"size\":3,\"fileExtension\":\"\","
                          "\"modifiedDate\":\"1970-01-01T00:00:00.000Z\",\"category\":\"Other\","
                          "\"isSafeToDelete\":false,\"linkCount\":1}");
        QTest::newRow("extension outside ASCII")
            << fileAt("/d/x.\xc3\x89T\xc3\x89", 5, 0, ScanCategory::other)
            << QByteArray("{\"path\":\"/d/x.\xc3\x89T\xc3\x89\",\"name\":\"x.\xc3\x89T\xc3\x89\","
                          "\"size\":5,\"fileExtension\":\"\xc3\xa9t\xc3\xa9\","
                          "\"modifiedDate\":\"1970-01-01T00:00:00.000Z\",\"category\":\"Other\","
                          "\"isSafeToDelete\":false,\"linkCount\":1}");
        QTest::newRow("not UTF-8")
            << fileAt("/tmp/caf\xe9 100%.zip", 4, 0, ScanCategory::archive)
            << QByteArray("{\"path\":\"/tmp/caf\xef\xbf\xbd 100%.zip\","
                          "\"rawPath\":\"/tmp/caf%E9 100%25.zip\","
                          "\"name\":\"caf\xef\xbf\xbd 100%.zip\",\"size\":4,"
                          "\"fileExtension\":\"zip\",\"modifiedDate\":\"1970-01-01T00:00:00.000Z\","
                          "\"category\":\"Archives\",\"isSafeToDelete\":true,\"linkCount\":1}");
    }
    void jsonObjects() {
        QFETCH(FileItem, file);
        QFETCH(QByteArray, expected);
        QByteArray out;
        appendFileJson(out, file);
        QCOMPARE(out, expected);
    }

    void exportTargets_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("chosenJson");
        QTest::addColumn<QString>("expectedPath");
        QTest::addColumn<bool>("expectedJson");
        QTest::newRow("csv name") << u"/t/list.csv"_qs << true << u"/t/list.csv"_qs << false;
        QTest::newRow("json name") << u"/t/list.JSON"_qs << false << u"/t/list.JSON"_qs << true;
        QTest::newRow("bare, csv chosen") << u"/t/list"_qs << false << u"/t/list.csv"_qs << false;
        QTest::newRow("bare, json chosen") << u"/t/list"_qs << true << u"/t/list.json"_qs << true;
        QTest::newRow("other extension")
            << u"/t/list.txt"_qs << false << u"/t/list.txt.csv"_qs << false;
    }
    void exportTargets() {
        QFETCH(QString, path);
        QFETCH(bool, chosenJson);
        QFETCH(QString, expectedPath);
        QFETCH(bool, expectedJson);
        const ListExportTarget target =
            listExportTarget(path, chosenJson ? ListExportFormat::json : ListExportFormat::csv);
        QCOMPARE(target.path, expectedPath);
        QCOMPARE(target.format == ListExportFormat::json, expectedJson);
    }
};

QTEST_GUILESS_MAIN(FileRecordTest)
#include "tst_filerecord.moc"
