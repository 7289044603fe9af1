#include "models/ShellQuote.h"

#include <QTest>

using namespace ravelinth;

// A copied path must lead back to the same bytes when pasted into a shell.
class TestShellQuote : public QObject {
    Q_OBJECT

private slots:
    void pathForCopying_data() {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QString>("copied");
        // Valid UTF-8 is copied as it is, quotes, backslashes and control characters included.
        QTest::newRow("plain") << QByteArray("/home/a/report.pdf") << u"/home/a/report.pdf"_qs;
        QTest::newRow("utf8") << QByteArray("/home/a/caf\xc3\xa9.pdf") << u"/home/a/café.pdf"_qs;
        QTest::newRow("quote kept") << QByteArray("/tmp/it's") << u"/tmp/it's"_qs;
        QTest::newRow("newline kept") << QByteArray("/tmp/a\nb") << u"/tmp/a\nb"_qs;
        QTest::newRow("bom kept") << QByteArray("/tmp/\xef\xbb\xbfx") << u"/tmp/\uFEFFx"_qs;
        // Anything else: ANSI-C quoting, one \xNN per stray byte.
        QTest::newRow("latin-1") << QByteArray("/home/a/caf\xe9.pdf")
                                 << u"$'/home/a/caf\\xe9.pdf'"_qs;
        QTest::newRow("stray byte before hex letter") << QByteArray("/t/\xff"
                                                                    "abc")
                                                      << u"$'/t/\\xffabc'"_qs;
        QTest::newRow("apostrophe and backslash")
            << QByteArray("/t/it's\\\xff") << u"$'/t/it\\'s\\\\\\xff'"_qs;
        QTest::newRow("control characters")
            << QByteArray("/t/a\tb\nc\x7f\xfe") << u"$'/t/a\\x09b\\x0ac\\x7f\\xfe'"_qs;
        QTest::newRow("valid character beside a stray byte")
            << QByteArray("/t/\xc3\xa9\xe9") << u"$'/t/é\\xe9'"_qs;
        QTest::newRow("truncated sequence") << QByteArray("/t/\xe2\x82") << u"$'/t/\\xe2\\x82'"_qs;
        QTest::newRow("overlong slash") << QByteArray("/t/\xc0\xaf") << u"$'/t/\\xc0\\xaf'"_qs;
        QTest::newRow("surrogate") << QByteArray("/t/\xed\xa0\x80") << u"$'/t/\\xed\\xa0\\x80'"_qs;
        QTest::newRow("above U+10FFFF")
            << QByteArray("/t/\xf4\x90\x80\x80") << u"$'/t/\\xf4\\x90\\x80\\x80'"_qs;
        QTest::newRow("four-byte emoji beside a stray byte")
            << QByteArray("/t/\xf0\x9f\x98\x80\xff") << u"$'/t/😀\\xff'"_qs;
    }
    void pathForCopying() {
        QFETCH(QByteArray, path);
        QFETCH(QString, copied);
        QCOMPARE(ravelinth::pathForCopying(path), copied);
    }
};

QTEST_GUILESS_MAIN(TestShellQuote)
#include "tst_shellquote.moc"
