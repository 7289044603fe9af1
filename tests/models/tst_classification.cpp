#include "models/FileItem.h"
#include "models/QuickAccessLocation.h"
#include "models/ScanCategory.h"

#include <QtTest>

using namespace ravelinth;

class ClassificationTest : public QObject {
    Q_OBJECT

private slots:
    void categoriesInFixedOrderWithTheirNames() {
        QStringList names;
        for (ScanCategory category : ScanCategory::allCases())
            names << category.rawValue();
        QCOMPARE(names, (QStringList{u"Installers"_qs, u"Archives"_qs, u"Videos"_qs, u"Images"_qs,
                                     u"Documents"_qs, u"Audio"_qs, u"Applications"_qs, u"Cache"_qs,
                                     u"Other"_qs}));
        for (ScanCategory category : ScanCategory::allCases())
            QCOMPARE(ScanCategory::fromRawValue(category.rawValue()), category);
        QCOMPARE(ScanCategory::fromRawValue(u"videos"), std::nullopt);
    }

    void extensionsClassifyWithInstallerPrecedence_data() {
        QTest::addColumn<QString>("extension");
        QTest::addColumn<int>("category");
        QTest::newRow("empty") << QString() << int(ScanCategory::other);
        QTest::newRow("JPG") << u"JPG"_qs << int(ScanCategory::image);
        QTest::newRow("tar.gz whole") << u"tar.gz"_qs << int(ScanCategory::other);
        QTest::newRow("gz") << u"gz"_qs << int(ScanCategory::archive);
        QTest::newRow("app is an installer") << u"app"_qs << int(ScanCategory::installer);
        QTest::newRow("mkv") << u"mkv"_qs << int(ScanCategory::video);
        QTest::newRow("keynote") << u"keynote"_qs << int(ScanCategory::document);
        QTest::newRow("aiff") << u"aiff"_qs << int(ScanCategory::audio);
        QTest::newRow("unknown") << u"qcow2"_qs << int(ScanCategory::other);
    }
    void extensionsClassifyWithInstallerPrecedence() {
        QFETCH(QString, extension);
        QFETCH(int, category);
        QCOMPARE(int(ScanCategory::from(extension)), category);
    }

    // Folder names decide Cache and Safe; fragments match inside a name, words only whole.
    void indicatorsAreFolderNamesAndWholeWords_data() {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<bool>("cache");
        QTest::addColumn<bool>("safe");
        const auto row = [](const char *path, bool cache, bool safe) {
            QTest::newRow(path) << QByteArray(path) << cache << safe;
        };
        // Fragments, anywhere in a folder name.
        row("/home/a/.config/app/GPUCache/data_1", true, true);
        row("/media/usb/.Trash-1000/files/x", false, true);
        row("/home/a/My Downloads/film.mov", false, true);
        row("/var/TMP/x", true, true);
        // Words, whole: start, end, non-letter or camel-case boundaries.
        row("/home/a/Temp/x.iso", true, true);
        row("/home/a/temp_files/x.iso", true, true);
        row("/home/a/MyTempDir/x.iso", true, true);
        row("/var/app-logs/x.log", true, false);
        row("/home/a/CrashLogs/dump.bin", true, false);
        // Words inside other words are not indicators.
        row("/home/a/Templates/contract.docx", false, false);
        row("/home/a/Videos/blogs/wedding.mp4", false, false);
        row("/home/a/Attempts/x.pdf", false, false);
        row("/home/a/TEMPLATES/x.pdf", false, false);
        // The file's own name never counts.
        row("/home/a/Documents/temp-report.pdf", false, false);
        row("/home/a/Projects/cache.bin", false, false);
        row("temp", false, false);
        // A letter outside ASCII is a letter: no word boundary beside it.
        row("/home/a/t\xc3\xa9temp/x.iso", false, false);
        row("/home/a/\xff/x.iso", false, false);
    }
    void indicatorsAreFolderNamesAndWholeWords() {
        QFETCH(QByteArray, path);
        QFETCH(bool, cache);
        QFETCH(bool, safe);
        QCOMPARE(ScanCategory::isInCacheDirectory(QByteArrayView(path)), cache);
        QCOMPARE(FileItem::make(path, 1, 0, ScanCategory::document).isDefinitelySafe(), safe);
        if (QString::fromUtf8(path).toUtf8() == path)
            QCOMPARE(ScanCategory::isInCacheDirectory(QString::fromUtf8(path)), cache);
    }

    void safeToDeleteFollowsCategoryThenFolders() {
        auto item = [](const char *path, ScanCategory category) {
            return FileItem::make(QByteArray(path), 1, 0, category);
        };
        QVERIFY(!item("/Users/a/Projects/Temperature.csv", ScanCategory::other).isSafeToDelete());
        QVERIFY(!item("/Users/a/Movies/film.mov", ScanCategory::video).isSafeToDelete());
        QVERIFY(item("/Users/a/Downloads/film.mov", ScanCategory::video).isSafeToDelete());
        QVERIFY(item("/home/a/x.zip", ScanCategory::archive).isSafeToDelete());
        QVERIFY(!item("/home/a/x.zip", ScanCategory::archive).isDefinitelySafe());
        QVERIFY(item("/var/app-logs/x.log", ScanCategory::cache).isSafeToDelete());
        QVERIFY(!item("/home/a/app.bin", ScanCategory::application).isSafeToDelete());
    }

    void fileItemIdentityIsThePath() {
        const FileItem a = FileItem::make("/a/b.mov", 10, 1, ScanCategory::video);
        const FileItem b = FileItem::make("/a/b.mov", 99, 2, ScanCategory::other);
        QVERIFY(a.id != b.id);
        QVERIFY(a == b);
        QCOMPARE(qHash(a), qHash(b));
        QVERIFY(!(a == FileItem::make("/a/c.mov", 10, 1, ScanCategory::video)));
    }

    void namesAndExtensions_data() {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QByteArray>("parent");
        QTest::newRow("plain") << QByteArray("/a/Movie.MKV") << QByteArray("Movie.MKV") << u"mkv"_qs
                               << QByteArray("/a");
        QTest::newRow("dotfile") << QByteArray("/a/.bashrc") << QByteArray(".bashrc") << QString()
                                 << QByteArray("/a");
        QTest::newRow("no dot") << QByteArray("/a/README") << QByteArray("README") << QString()
                                << QByteArray("/a");
        QTest::newRow("trailing dot")
            << QByteArray("/a/x.") << QByteArray("x.") << QString() << QByteArray("/a");
        QTest::newRow("two dots") << QByteArray("/a/x.tar.gz") << QByteArray("x.tar.gz") << u"gz"_qs
                                  << QByteArray("/a");
        QTest::newRow("root file")
            << QByteArray("/x.iso") << QByteArray("x.iso") << u"iso"_qs << QByteArray("/");
        QTest::newRow("not utf-8") << QByteArray("/a/\xff\xfe.ZIP") << QByteArray("\xff\xfe.ZIP")
                                   << u"zip"_qs << QByteArray("/a");
    }
    void namesAndExtensions() {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, name);
        QFETCH(QString, extension);
        QFETCH(QByteArray, parent);
        const FileItem item = FileItem::make(path, 1, 0, ScanCategory::other);
        QCOMPARE(item.name().toByteArray(), name);
        QCOMPARE(item.fileExtension(), extension);
        QCOMPARE(item.parentPath().toByteArray(), parent);
    }

    void undecodableNamesDisplayWithReplacementCharacters() {
        const FileItem item = FileItem::make("/a/b\xffz.bin", 1, 0, ScanCategory::other);
        QCOMPARE(item.displayName(), u"b\uFFFDz.bin"_qs);
        QCOMPARE(item.path, QByteArray("/a/b\xffz.bin"));
    }

    void hexColours() {
        QCOMPARE(Color(u"#10b981"), Color(u"10b981"));
        const Color abc(u"abc");
        QCOMPARE(abc, Color(0xaa / 255.0, 0xbb / 255.0, 0xcc / 255.0, 1));
        QCOMPARE(Color(u"12345"), Color(0, 0, 0, 1));
        QCOMPARE(Color(u"80ff0000").alpha, 128 / 255.0);
        QCOMPARE(Color(u"zz"), Color(0, 0, 0, 1));
        QCOMPARE(Color(u"#667eea").name(), u"#ff667eea"_qs);
    }

    void quickAccessPresetsPairEachNameWithItsFolder() {
        const QuickAccessLocation::Folders folders{u"/h"_qs,      u"/h/dl"_qs, u"/h/desk"_qs,
                                                   u"/h/docs"_qs, u"/apps"_qs, u"/h/lib"_qs};
        QStringList pairs;
        for (const QuickAccessLocation &location : QuickAccessLocation::presets(folders))
            pairs << location.name + u' ' + location.path;
        QCOMPARE(pairs, (QStringList{u"Home /h"_qs, u"Downloads /h/dl"_qs, u"Desktop /h/desk"_qs,
                                     u"Documents /h/docs"_qs, u"Applications /apps"_qs,
                                     u"Library /h/lib"_qs}));
    }
};

QTEST_GUILESS_MAIN(ClassificationTest)
#include "tst_classification.moc"
