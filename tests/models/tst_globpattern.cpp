#include "models/GlobPattern.h"
#include "models/ScanExclusions.h"

#include <QtTest>

using namespace ravelinth;

class GlobPatternTest : public QObject {
    Q_OBJECT

private slots:
    void matchesAsTheShellWould_data() {
        QTest::addColumn<QByteArray>("pattern");
        QTest::addColumn<QByteArray>("subject");
        QTest::addColumn<bool>("matches");
        const auto row = [](const char *pattern, const char *subject, bool matches) {
            QTest::addRow("%s ~ %s", pattern, subject)
                << QByteArray(pattern) << QByteArray(subject) << matches;
        };
        row("node_modules", "node_modules", true);
        row("node_modules", "node_modules2", false);
        row("*.vmdk", "disk.vmdk", true);
        row("*.vmdk", "disk.VMDK", false);
        row("*.vmdk", ".vmdk", true);
        row("*.vmdk", "disk.vmdk.bak", false);
        row("*", "", true);
        row("?", "", false);
        row("a?c", "abc", true);
        row("a?c", "a/c", false);
        row("[abc]x", "bx", true);
        row("[!abc]x", "bx", false);
        row("[!abc]x", "dx", true);
        row("[a-c]*", "cat", true);
        row("[a-c]*", "dog", false);
        row("[]]", "]", true);
        row("[", "[", true);
        row("\\*", "*", true);
        row("\\*", "a", false);
        row("a*b*c", "aXbYbZc", true);
        row("a*b*c", "aXbYbZ", false);
        // A single star stays within one folder; two cross folders.
        row("build/*.o", "build/x.o", true);
        row("build/*.o", "build/sub/x.o", false);
        row("build/**.o", "build/sub/x.o", true);
        row("**/build/*.o", "a/b/build/x.o", true);
        row("**/a*/b", "x/a1/y/a2/b", true);
        row("**/a*/b", "x/a1/y/c2/b", false);
        // Bytes that are not UTF-8 match like any other.
        row("caf?.pdf", "caf\xe9.pdf", true);
        row("*\xe9*", "caf\xe9.pdf", true);
    }
    void matchesAsTheShellWould() {
        QFETCH(QByteArray, pattern);
        QFETCH(QByteArray, subject);
        QFETCH(bool, matches);
        QCOMPARE(GlobPattern(pattern).matches(subject), matches);
    }

    void wordsBecomeFoldersOrPatterns() {
        ScanExclusions exclusions;
        for (const char *word : {"/srv/data/", "node_modules", "build/", "", "/", "node_modules",
                                 "src/*.o", "/srv/data", "./src/*.o", "./", "./lib/"})
            exclusions.add(word);
        QCOMPARE(exclusions.folders, (QList<QByteArray>{"/srv/data", "/"}));
        QCOMPARE(exclusions.patterns,
                 (QList<QByteArray>{"node_modules", "build", "src/*.o", "lib"}));
    }

    void pathPatternsAreAnchoredAtTheScanRoot() {
        const ExclusionPatterns patterns({"build/*.o", "*.vmdk"}, "/home/u/project/");
        QVERIFY(patterns.excludes("/home/u/project/build/a.o", "a.o"));
        QVERIFY(!patterns.excludes("/home/u/project/lib/build/a.o", "a.o"));
        QVERIFY(!patterns.excludes("/home/u/projectbuild/a.o", "a.o"));
        QVERIFY(patterns.excludes("/anywhere/disk.vmdk", "disk.vmdk"));
        // The way down counts: a file below an excluded folder name is left out with it.
        const ExclusionPatterns names({"node_modules", "build/*.o"}, "/p");
        QVERIFY(names.excludesOnTheWay("/p/app/node_modules/x/y.bin"));
        QVERIFY(names.excludesOnTheWay("/p/build/a.o"));
        QVERIFY(!names.excludesOnTheWay("/p/app/node_modules_old/y.bin"));
        QVERIFY(!names.excludesOnTheWay("/elsewhere/node_modules/y.bin"));
        QVERIFY(!names.excludesOnTheWay("/pX/node_modules/y.bin"));
        const ExclusionPatterns fromSlash({"tmp/*"}, "/");
        QVERIFY(fromSlash.excludes("/tmp/x", "x"));
        QVERIFY(!fromSlash.excludes("/var/tmp/x", "x"));
    }
};

QTEST_GUILESS_MAIN(GlobPatternTest)
#include "tst_globpattern.moc"
