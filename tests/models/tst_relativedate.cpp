#include "models/RelativeDateFormatter.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <limits>

using namespace ravelinth;

// The relative-date vectors come from the reference table shipped beside the project: every row
// is an offset from one reference moment and the words expected for it.
class RelativeDateTest : public QObject {
    Q_OBJECT

    static QDateTime reference() {
        return QDateTime(QDate(2021, 6, 10), QTime(12, 0), QTimeZone::utc());
    }

    // "+1 h 30 min", "−3 652 days (= 2011-06-12)", "0" -> milliseconds
    static std::optional<qint64> parseOffset(QString text) {
        text = text.section(u'(', 0, 0).trimmed();
        qint64 sign = 1;
        if (text.startsWith(u'-') || text.startsWith(QChar(0x2212))) {
            sign = -1;
            text.remove(0, 1);
        } else if (text.startsWith(u'+')) {
            text.remove(0, 1);
        }
        if (text.trimmed() == u"0"_qs)
            return 0;
        static const QRegularExpression part(uR"((\d[\d ]*(?:\.\d+)?)\s*(days?|h|min|s)\b)"_qs);
        double msecs = 0;
        int parts = 0;
        for (const auto &match : part.globalMatch(text)) {
            QString number = match.captured(1);
            number.remove(u' ');
            const QString unit = match.captured(2);
            const double scale = unit.startsWith(u'd') ? 86'400'000.0
                                 : unit == u"h"_qs     ? 3'600'000.0
                                 : unit == u"min"_qs   ? 60'000.0
                                                       : 1000.0;
            msecs += number.toDouble() * scale;
            ++parts;
        }
        if (parts == 0)
            return std::nullopt;
        return sign * qint64(std::llround(msecs));
    }

private slots:
    void matchesReferenceTable_data() {
        QTest::addColumn<qint64>("offsetMSecs");
        QTest::addColumn<QString>("expected");
        QFile file(QStringLiteral(RAVELINTH_SHARED_DIR "/reference/formatting.md"));
        QVERIFY2(file.open(QIODevice::ReadOnly), "reference formatting table not found");
        const QString text = QString::fromUtf8(file.readAll());
        const QString section = text.section(u"### 2.2"_qs, 1).section(u"\n---"_qs, 0, 0);
        static const QRegularExpression row(uR"(^\| (\d+) \| ([^|]+?) \| `([^`]+)` \|)"_qs,
                                            QRegularExpression::MultilineOption);
        int rows = 0;
        for (const auto &match : row.globalMatch(section)) {
            const std::optional<qint64> offset = parseOffset(match.captured(2));
            QVERIFY2(offset, qPrintable(u"unreadable offset: "_qs + match.captured(2)));
            QTest::newRow(qPrintable(u"#"_qs + match.captured(1) + u" "_qs + match.captured(2)))
                << *offset << match.captured(3);
            ++rows;
        }
        QCOMPARE(rows, 37);
    }
    void matchesReferenceTable() {
        QFETCH(qint64, offsetMSecs);
        QFETCH(QString, expected);
        const QDateTime date = reference().addMSecs(offsetMSecs);
        QCOMPARE(formatRelativeDate(date, reference(), QTimeZone::utc()), expected);
    }

    // Month arithmetic clamps the day, and the clamped day still has to fit before the target.
    void monthsClampTheDayOfMonth() {
        const QTimeZone utc = QTimeZone::utc();
        const QDateTime jan31(QDate(2021, 1, 31), QTime(9, 0), utc);
        // Jan 31 + 1 month is Feb 28, which is not after Feb 28 10:00.
        QCOMPARE(formatRelativeDate(QDateTime(QDate(2021, 2, 28), QTime(10, 0), utc), jan31, utc),
                 u"in 1 month"_qs);
        QCOMPARE(formatRelativeDate(QDateTime(QDate(2021, 2, 28), QTime(8, 0), utc), jan31, utc),
                 u"in 3 weeks"_qs);
        // A leap day a year on lands on Feb 28.
        const QDateTime leap(QDate(2020, 2, 29), QTime(12, 0), utc);
        QCOMPARE(formatRelativeDate(QDateTime(QDate(2021, 2, 28), QTime(12, 0), utc), leap, utc),
                 u"in 1 year"_qs);
    }

    // Days are calendar days where the user lives: the 23-hour spring-forward day is one day.
    void daysFollowTheTimeZone() {
        const QTimeZone berlin("Europe/Berlin");
        QVERIFY(berlin.isValid());
        const QDateTime before(QDate(2021, 3, 27), QTime(12, 0), berlin);
        const QDateTime after(QDate(2021, 3, 28), QTime(12, 0), berlin);
        QCOMPARE(before.secsTo(after), 23 * 3600);
        QCOMPARE(formatRelativeDate(after, before, berlin), u"in 1 day"_qs);
        QCOMPARE(formatRelativeDate(after, before, QTimeZone::utc()), u"in 23 hours"_qs);
    }

    void largeCountsAreGroupedAndInvalidDatesSayNothing() {
        const QTimeZone utc = QTimeZone::utc();
        const QDateTime now(QDate(2021, 6, 10), QTime(12, 0), utc);
        QCOMPARE(formatRelativeDate(now.addYears(-1000), now, utc), u"1,000 years ago"_qs);
        QCOMPARE(formatRelativeDate(QDateTime::fromMSecsSinceEpoch(0, utc), now, utc),
                 u"51 years ago"_qs);
        QCOMPARE(formatRelativeDate(QDateTime(), now, utc), QString());
    }

    // A time stamp can hold anything a file system or a garbled value gives it, out to the last
    // millisecond a 64-bit count holds, and must still come back at once. The years are the
    // counts divided by a mean Gregorian year of 31,556,952 s: 292,277,024.6 years either side
    // of 1970, and half that, counted from the middle of 2021 and truncated.
    void theFarthestTimesCountWholeYearsAtOnce() {
        const QTimeZone utc = QTimeZone::utc();
        const QDateTime now(QDate(2021, 6, 10), QTime(12, 0), utc);
        const auto words = [&](qint64 msecs) {
            return formatRelativeDate(QDateTime::fromMSecsSinceEpoch(msecs, utc), now, utc);
        };
        QCOMPARE(words(std::numeric_limits<qint64>::min()), u"292,277,076 years ago"_qs);
        QCOMPARE(words(std::numeric_limits<qint64>::min() / 2), u"146,138,563 years ago"_qs);
        QCOMPARE(words(std::numeric_limits<qint64>::max()), u"in 292,276,973 years"_qs);
    }
};

QTEST_GUILESS_MAIN(RelativeDateTest)
#include "tst_relativedate.moc"
