#include "models/IconGlyphs.h"
#include "models/QuickAccessLocation.h"
#include "models/ScanCategory.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace ravelinth;

// Every icon the program names must draw a real glyph of the icon font: an identifier missing
// from the table, or a table entry naming a glyph the font lacks, shows a wrong symbol.
class TestIcons : public QObject {
    Q_OBJECT

    static QSet<QString> fontGlyphNames() {
        QFile file(u"/usr/share/fonts-material-design-icons-iconfont/scss/_variables.scss"_qs);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QSet<QString> names;
        static const QRegularExpression entry(uR"re(^\s*"([a-z0-9_]+)":\s*[0-9a-f]+,?\s*$)re"_qs,
                                              QRegularExpression::MultilineOption);
        const QString text = QString::fromUtf8(file.readAll());
        for (auto it = entry.globalMatch(text); it.hasNext();)
            names.insert(it.next().captured(1));
        return names;
    }

    // Icon identifiers written in the views: `symbol: "…"`, `icon: "…"`, `…Icon: "…"` and
    // identifiers given in lists of rows (`icon: "…"` inside JS objects).
    static QSet<QString> identifiersInViews() {
        QSet<QString> found;
        static const QRegularExpression use(
            uR"re(\b(?:symbol|icon|[a-z]+Icon)\s*:\s*"([a-z0-9.]+)")re"_qs);
        QDirIterator it(QStringLiteral(RAVELINTH_SOURCE_DIR "/src/views"), {u"*.qml"_qs},
                        QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile file(it.next());
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QString text = QString::fromUtf8(file.readAll());
            for (auto match = use.globalMatch(text); match.hasNext();)
                found.insert(match.next().captured(1));
        }
        return found;
    }

private slots:
    void everyTableEntryNamesAGlyphOfTheFont() {
        const QSet<QString> glyphs = fontGlyphNames();
        QVERIFY2(glyphs.size() > 1000, "the icon font's name table was not found");
        for (const auto &[identifier, name] : IconGlyphs::table())
            QVERIFY2(glyphs.contains(name), qPrintable(identifier + u" -> "_qs + name));
    }

    void everyIdentifierInUseHasAnEntry() {
        QSet<QString> used = identifiersInViews();
        for (ScanCategory category : ScanCategory::allCases())
            used.insert(category.icon());
        for (const QuickAccessLocation &location : QuickAccessLocation::presets({}))
            used.insert(location.icon);
        for (const QString &identifier : std::as_const(used))
            QVERIFY2(IconGlyphs::materialName(identifier).has_value(), qPrintable(identifier));
        QVERIFY(!IconGlyphs::materialName(u"no.such.symbol"_qs));
    }
};

QTEST_GUILESS_MAIN(TestIcons)
#include "tst_icons.moc"
