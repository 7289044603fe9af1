#include "models/PlatformWords.h"

#include <QTest>

using namespace ravelinth;

// The texts users read on Linux name Linux things; everything else passes through untouched.
class TestPlatformWords : public QObject {
    Q_OBJECT

private slots:
    void rewordsTextsAndShortcuts() {
        QCOMPARE(PlatformWords::text(u"Show in Finder"_qs), u"Show in File Manager"_qs);
        QCOMPARE(PlatformWords::text(u"Let's clean up your Mac"_qs),
                 u"Let's clean up your computer"_qs);
        QCOMPARE(PlatformWords::text(u"A powerful disk space analyzer for macOS. Find"_qs),
                 u"A powerful disk space analyzer for Linux. Find"_qs);
        QCOMPARE(PlatformWords::text(u"Version 6.0"_qs), u"Version 6.0"_qs);
        QCOMPARE(PlatformWords::shortcut(u"⌘ ⇧ A"_qs), u"Ctrl Shift A"_qs);
        QCOMPARE(PlatformWords::shortcut(u"⌘ ⌫"_qs), u"Ctrl Backspace"_qs);
        QCOMPARE(PlatformWords::shortcut(u"Space"_qs), u"Space"_qs);
    }
};

QTEST_GUILESS_MAIN(TestPlatformWords)
#include "tst_platformwords.moc"
