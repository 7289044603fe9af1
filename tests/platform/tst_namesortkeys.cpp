// Name keys must order names exactly as QCollator does, whichever kind of key each name gets:
// the expected answers here all come from QCollator::compare.

#include "platform/AsciiCollation.h"
#include "platform/NameSortKeys.h"

#include <QCollator>
#include <QtTest>

#include <random>

using namespace ravelinth;

namespace {

int sign(int value) {
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

QCollator collatorFor(const QLocale &locale) {
    QCollator collator(locale);
    collator.setCaseSensitivity(Qt::CaseSensitive);
    return collator;
}

// Short names over a few letters in both cases, digits and punctuation, so that many pairs
// differ only in case or in one late character.
QByteArray randomAsciiName(std::mt19937 &random) {
    static const char alphabet[] = "aAbBcChHzZsS019 -_.~!()[]{}'@#,+=&%$^`;";
    QByteArray name;
    // No empty names: a file always has one, and QCollator puts "" before names that are
    // entirely ignorable characters while their keys tie.
    const int length = 1 + int(random() % 6);
    for (int i = 0; i < length; ++i) {
        if (random() % 8 == 0)
            name += char(' ' + random() % 95);
        else
            name += alphabet[random() % (sizeof alphabet - 1)];
    }
    return name;
}

QByteArray randomName(std::mt19937 &random) {
    static const char *others[] = {"\xc3\xa9",     "e\xcc\x81", "\xc3\x84", "\xc3\x9f",
                                   "\xe2\x80\x8b", "\xff",      "\t"};
    QByteArray name = randomAsciiName(random);
    if (random() % 5 == 0)
        name.insert(qsizetype(random() % (name.size() + 1)), others[random() % std::size(others)]);
    return name;
}

void checkAgainstCollator(const QLocale &locale, const QList<QByteArray> &names,
                          NameSortKeys::Shortcut shortcut, std::mt19937 &random) {
    const QCollator collator = collatorFor(locale);
    NameSortKeys keys(locale, shortcut);
    for (const QByteArray &name : names)
        keys.appendUtf8(name);
    QCOMPARE(keys.size(), names.size());
    const auto check = [&](qsizetype a, qsizetype b) {
        const int expected =
            sign(collator.compare(QString::fromUtf8(names[a]), QString::fromUtf8(names[b])));
        if (sign(keys.compare(a, b)) != expected) {
            QFAIL(qPrintable(u"%1: \"%2\" vs \"%3\" should be %4"_qs.arg(
                locale.name(), QString::fromUtf8(names[a]), QString::fromUtf8(names[b]),
                QString::number(expected))));
        }
        // Prefixes may only decide between keys of one kind.
        if (keys.isTableKey(a) == keys.isTableKey(b) && keys.prefix(a) != keys.prefix(b))
            QCOMPARE(keys.prefix(a) < keys.prefix(b) ? -1 : 1, expected);
    };
    for (int i = 0; i < 40000; ++i)
        check(qsizetype(random() % names.size()), qsizetype(random() % names.size()));
    // Neighbours in the collator's order are the pairs most likely to be told apart wrongly.
    QList<qsizetype> order(names.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](qsizetype a, qsizetype b) {
        return collator.compare(QString::fromUtf8(names[a]), QString::fromUtf8(names[b])) < 0;
    });
    for (qsizetype i = 1; i < order.size(); ++i)
        check(order[i - 1], order[i]);
}

} // namespace

class NameSortKeysTest : public QObject {
    Q_OBJECT

private slots:
    void asciiNamesOrderAsTheCollatorDoes() {
        std::mt19937 random(11);
        QList<QByteArray> names;
        for (int i = 0; i < 5000; ++i)
            names.append(randomAsciiName(random));
        for (const char *locale : {"en_US", "C", "de_DE", "sv_SE", "fr_FR", "cs_CZ", "da_DK"}) {
            checkAgainstCollator(QLocale(QString::fromLatin1(locale)), names,
                                 NameSortKeys::Shortcut::asciiTable, random);
        }
    }

    void mixedNamesOrderAsTheCollatorDoes() {
        std::mt19937 random(12);
        QList<QByteArray> names;
        for (int i = 0; i < 3000; ++i)
            names.append(randomName(random));
        for (const char *locale : {"en_US", "C", "sv_SE"}) {
            for (auto shortcut :
                 {NameSortKeys::Shortcut::asciiTable, NameSortKeys::Shortcut::none}) {
                checkAgainstCollator(QLocale(QString::fromLatin1(locale)), names, shortcut, random);
            }
        }
    }

    void keysOfTwoHalvesJoin() {
        const QLocale locale(QLocale::English, QLocale::UnitedStates);
        NameSortKeys first(locale, NameSortKeys::Shortcut::asciiTable);
        NameSortKeys second(locale, NameSortKeys::Shortcut::asciiTable);
        first.appendUtf8("\xc3\xa9t\xc3\xa9");
        first.appendUtf8("b");
        second.appendUtf8("a");
        second.appendUtf8("\xc3\x84rger");
        first.appendAll(std::move(second));
        QCOMPARE(first.size(), 4);
        QVERIFY(!first.isTableKey(0));
        QVERIFY(first.isTableKey(1));
        QVERIFY(first.isTableKey(2));
        QVERIFY(!first.isTableKey(3));
        QVERIFY(first.compare(2, 3) < 0); // a < Ärger
        QVERIFY(first.compare(3, 1) < 0); // Ärger < b
        QVERIFY(first.compare(0, 1) > 0); // été > b
    }

    // Locales that join letters must not get the table; English, German and Swedish can.
    void theTableIsOfferedOnlyWhereItHolds() {
        QVERIFY(AsciiCollation::forLocale(QLocale(u"en_US"_qs)));
        QVERIFY(AsciiCollation::forLocale(QLocale(u"de_DE"_qs)));
        QVERIFY(!AsciiCollation::forLocale(QLocale(u"cs_CZ"_qs)));
        QVERIFY(!AsciiCollation::forLocale(QLocale(u"da_DK"_qs)));
    }
};

QTEST_GUILESS_MAIN(NameSortKeysTest)
#include "tst_namesortkeys.moc"
