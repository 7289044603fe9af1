#include "models/ByteCountFormatter.h"
#include "models/ScanState.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <clocale>

using namespace ravelinth;

namespace {

// Switches the C library to de_DE.UTF-8, first compiling that locale into a folder of the test's
// own when the system has not generated it.
bool useGermanLocale() {
    if (std::setlocale(LC_ALL, "de_DE.UTF-8"))
        return true;
    static QTemporaryDir compiled;
    const QString target = compiled.path() + u"/de_DE.UTF-8"_qs;
    QProcess::execute(u"localedef"_qs, {u"-i"_qs, u"de_DE"_qs, u"-f"_qs, u"UTF-8"_qs, target});
    qputenv("LOCPATH", QFile::encodeName(compiled.path()));
    return std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
}

} // namespace

// The byte-count vectors come from the reference table shipped beside the project, so the
// formatter is checked against every row of it rather than a hand-copied subset.
class FormattingTest : public QObject {
    Q_OBJECT

private slots:
    void byteCountMatchesReferenceTable_data() {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<QString>("expected");
        QFile file(QStringLiteral(RAVELINTH_SHARED_DIR "/reference/formatting.md"));
        QVERIFY2(file.open(QIODevice::ReadOnly), "reference formatting table not found");
        const QString text = QString::fromUtf8(file.readAll());
        const QString section = text.section(u"### 1.3"_qs, 1).section(u"Extra Darwin"_qs, 0, 0);
        static const QRegularExpression row(
            uR"(^\| (\d+) \| ([-\d ]+?)(?: \([^)]*\))? \| `([^`]+)` \|)"_qs,
            QRegularExpression::MultilineOption);
        int rows = 0;
        for (const auto &match : row.globalMatch(section)) {
            QString digits = match.captured(2);
            digits.remove(u' ');
            QTest::newRow(qPrintable(u"#"_qs + match.captured(1)))
                << digits.toLongLong() << match.captured(3);
            ++rows;
        }
        QVERIFY2(rows >= 50, "the reference table was not read");
    }
    void byteCountMatchesReferenceTable() {
        QFETCH(qint64, bytes);
        QFETCH(QString, expected);
        QCOMPARE(formatByteCount(bytes), expected);
    }

    // Hand-worked: 1536 = 1.5 x 1024; 1048575 is 1023.999 KiB, which rounds to 1024 and so
    // reads as the next unit; 5 GB on the box is 4.66 GiB.
    void binaryUnitsCountIn1024s_data() {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<QString>("expected");
        const QList<QPair<qint64, const char *>> rows{
            {0, "Zero KiB"},           {1, "1 byte"},
            {1000, "1000 bytes"},      {1023, "1023 bytes"},
            {1024, "1 KiB"},           {1536, "2 KiB"},
            {1000 * 1024, "1000 KiB"}, {1048575, "1 MiB"},
            {1572864, "1.5 MiB"},      {104857600, "100 MiB"},
            {5000000000, "4.66 GiB"},  {1099511627776, "1 TiB"},
            {-1536, "-2 KiB"}};
        for (const auto &[bytes, expected] : rows)
            QTest::newRow(expected) << bytes << QString::fromLatin1(expected);
    }
    void binaryUnitsCountIn1024s() {
        QFETCH(qint64, bytes);
        QFETCH(QString, expected);
        QCOMPARE(formatByteCount(bytes, ByteUnits::binary), expected);
        setDefaultByteUnits(ByteUnits::binary);
        const QString asDefault = formatByteCount(bytes);
        setDefaultByteUnits(ByteUnits::decimal);
        QCOMPARE(asDefault, expected);
    }

    void oneDecimalRoundsLikePrintf_data() {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("expected");
        const QList<QPair<double, const char *>> rows{
            {0.05, "0.1"}, {0.15, "0.1"},    {0.25, "0.2"},   {0.35, "0.3"},   {0.45, "0.5"},
            {1.05, "1.1"}, {1.25, "1.2"},    {3.24, "3.2"},   {3.25, "3.2"},   {3.35, "3.4"},
            {9.95, "9.9"}, {99.95, "100.0"}, {-0.25, "-0.2"}, {-0.04, "-0.0"}, {0.04, "0.0"}};
        for (const auto &[value, expected] : rows)
            QTest::newRow(expected) << value << QString::fromLatin1(expected);
    }
    void oneDecimalRoundsLikePrintf() {
        QFETCH(double, value);
        QFETCH(QString, expected);
        QCOMPARE(formatOneDecimal(value), expected);
    }

    void statusMessages() {
        QCOMPARE(ScanState::idle().statusMessage(), u"Ready to scan"_qs);
        QCOMPARE(ScanState::cancelled().statusMessage(), u"\u23F9\uFE0F Scan cancelled"_qs);
        QCOMPARE(ScanState::error(u"Path not found: /x"_qs).statusMessage(),
                 u"\u274C Error: Path not found: /x"_qs);
        QCOMPARE(ScanState::completed(42, 1234567, 3.24).statusMessage(),
                 u"\u2705 Found 42 files (1.2 MB) in 3.2s"_qs);
        QCOMPARE(ScanState::completed(12345, 0, 0.04).statusMessage(),
                 u"\u2705 Found 12345 files (Zero KB) in 0.0s"_qs);
    }

    // Under a locale whose decimal separator is a comma, a duration still reads "3.2s".
    void durationsIgnoreTheLocalesDecimalSeparator() {
        QVERIFY2(useGermanLocale(), "no de_DE.UTF-8 locale, and localedef could not make one");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const QString message = ScanState::completed(1, 0, 3.24).statusMessage();
        const QString half = formatOneDecimal(0.25);
        std::setlocale(LC_ALL, "C.UTF-8");
        QLocale::setDefault(QLocale::c());
        QCOMPARE(message, u"\u2705 Found 1 files (Zero KB) in 3.2s"_qs);
        QCOMPARE(half, u"0.2"_qs);
    }

    void scanningMessageGroupsItsCountWithTheLocale() {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QCOMPARE(ScanState::scanning(u"/a"_qs, 12345, 1000, u"/a/b/movie.mov"_qs).statusMessage(),
                 u"Scanning: movie.mov\nFiles: 12,345 \u2022 1 KB"_qs);
        QCOMPARE(ScanState::scanning(u"/a"_qs, 0, 0, QString()).statusMessage(),
                 u"Scanning: \nFiles: 0 \u2022 Zero KB"_qs);
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(ScanState::scanning(u"/a"_qs, 1234567, 1, u"/x/"_qs).statusMessage(),
                 u"Scanning: x\nFiles: 1.234.567 \u2022 1 byte"_qs);
        QLocale::setDefault(QLocale::c());
    }

    void stateEquality() {
        QVERIFY(ScanState::idle() == ScanState::idle());
        QVERIFY(ScanState::idle() != ScanState::cancelled());
        QVERIFY(ScanState::scanning(u"/a"_qs, 1, 2, u"x"_qs) !=
                ScanState::scanning(u"/a"_qs, 1, 2, u"y"_qs));
        QVERIFY(ScanState::completed(1, 2, 0.5) == ScanState::completed(1, 2, 0.5));
        QVERIFY(ScanState::completed(1, 2, 0.5) != ScanState::completed(1, 2, 0.6));
    }
};

QTEST_GUILESS_MAIN(FormattingTest)
#include "tst_formatting.moc"
