// Name keys must order names exactly as QCollator does, whichever kind of key each name gets:
// the expected answers here all come from QCollator::compare.

#include "models/AsciiText.h"
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

// Every answer of the table, its prefixes and the library's keys against QCollator's.
void checkAgainstCollator(const QLocale &locale, const QList<QByteArray> &names,
                          std::mt19937 &random) {
    const QCollator collator = collatorFor(locale);
    const std::shared_ptr<const AsciiCollation> table = AsciiCollation::forLocale(locale);
    NameSortKeys keys(locale);
    for (const QByteArray &name : names)
        keys.appendUtf8(name);
    QCOMPARE(keys.size(), names.size());
    const auto check = [&](qsizetype a, qsizetype b) {
        const QString nameA = QString::fromUtf8(names[a]);
        const QString nameB = QString::fromUtf8(names[b]);
        const int expected = sign(collator.compare(nameA, nameB));
        const auto fail = [&](const char *what) {
            QFAIL(qPrintable(u"%1 (%2): \"%3\" vs \"%4\" should be %5"_qs.arg(
                locale.name(), QString::fromLatin1(what), nameA, nameB,
                QString::number(expected))));
        };
        if (sign(keys.compare(a, b)) != expected)
            fail("keys");
        if (sign(keys.compareWith(a, nameB)) != expected)
            fail("key and name");
        if (keys.prefix(a) != keys.prefix(b) &&
            (keys.prefix(a) < keys.prefix(b) ? -1 : 1) != expected)
            fail("key prefixes");
        if (!table || !isPrintableAscii(names[a]) || !isPrintableAscii(names[b]))
            return;
        if (sign(table->compare(names[a], names[b])) != expected)
            fail("table");
        const auto prefixA = table->prefix(names[a]);
        const auto prefixB = table->prefix(names[b]);
        if (prefixA != prefixB && (prefixA < prefixB ? -1 : 1) != expected)
            fail("table prefixes");
    };
    for (int i = 0; i < 40000; ++i)
        check(qsizetype(random() % names.size()), qsizetype(random() % names.size()));
    // Neighbours in the collator's order are the pairs most likely to be told apart wrongly.
    QList<qsizetype> order(names.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](qsizetype a, qsizetype b) {
        return collator.compare(QString::fromUtf8(names[a]), QString::fromUtf8(names[b])) < 0;
    });
    for (qsizetype i = 1; i < order.size(); ++i) {
        check(order[i - 1], order[i]);
        check(order[i], order[i - 1]);
    }
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
        for (const char *locale : {"en_US", "C", "de_DE", "sv_SE", "fr_FR", "cs_CZ", "da_DK"})
            checkAgainstCollator(QLocale(QString::fromLatin1(locale)), names, random);
    }

    void otherNamesOrderAsTheCollatorDoes() {
        std::mt19937 random(12);
        QList<QByteArray> names;
        for (int i = 0; i < 3000; ++i)
            names.append(randomName(random));
        for (const char *locale : {"en_US", "C", "sv_SE"})
            checkAgainstCollator(QLocale(QString::fromLatin1(locale)), names, random);
    }

    // Without a table for these the checks above would pass over the table's answers; a table
    // wrongly offered where letters join (cs_CZ, da_DK) fails those checks instead.
    void theTableIsOfferedWhereItHolds() {
        QVERIFY(AsciiCollation::forLocale(QLocale(u"en_US"_qs)));
        QVERIFY(AsciiCollation::forLocale(QLocale(u"de_DE"_qs)));
    }
};

QTEST_GUILESS_MAIN(NameSortKeysTest)
#include "tst_namesortkeys.moc"
