#include "models/ProgressText.h"

#include <QtTest>

using namespace ravelinth;

class ProgressTextTest : public QObject {
    Q_OBJECT

private slots:
    void lastComponentOfPathStrings_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("component");
        QTest::newRow("empty") << u""_qs << u""_qs;
        QTest::newRow("root") << u"/"_qs << u"/"_qs;
        QTest::newRow("only slashes") << u"///"_qs << u"/"_qs;
        QTest::newRow("file") << u"/home/ada/movie.mkv"_qs << u"movie.mkv"_qs;
        QTest::newRow("trailing slash") << u"/home/ada/"_qs << u"ada"_qs;
        QTest::newRow("relative") << u"notes.txt"_qs << u"notes.txt"_qs;
    }
    void lastComponentOfPathStrings() {
        QFETCH(QString, path);
        QFETCH(QString, component);
        QCOMPARE(lastPathComponentText(path), component);
    }

    void namesCutAfterFortyCharacters_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("shown");
        const QString forty = QString(36, u'a') + u".mkv"_qs;
        QTest::newRow("40 whole") << forty << forty;
        QTest::newRow("41 cut") << (u"b"_qs + forty) << (u"b"_qs + QString(36, u'a') + u"..."_qs);
        QTest::newRow("empty") << u""_qs << u""_qs;
        // An accented letter written as letter + combining mark is one character to a reader.
        const QString accented = u"e\u0301"_qs;
        QTest::newRow("40 combined letters whole")
            << accented.repeated(40) << accented.repeated(40);
        QTest::newRow("41 combined letters cut")
            << accented.repeated(41) << (accented.repeated(37) + u"..."_qs);
        // Emoji outside the basic plane are two UTF-16 units but one character.
        const QString film = u"\U0001F3AC"_qs;
        QTest::newRow("40 emoji whole") << film.repeated(40) << film.repeated(40);
        QTest::newRow("41 emoji cut") << film.repeated(41) << (film.repeated(37) + u"..."_qs);
    }
    void namesCutAfterFortyCharacters() {
        QFETCH(QString, name);
        QFETCH(QString, shown);
        QCOMPARE(shortenedFileName(name), shown);
    }
};

QTEST_GUILESS_MAIN(ProgressTextTest)
#include "tst_progresstext.moc"
