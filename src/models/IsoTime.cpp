#include "models/IsoTime.h"

#include <QDateTime>

namespace ravelinth {

namespace {

constexpr qint64 msecsPerDay = 86'400'000;

struct CivilDate {
    qint64 year;
    int month;
    int day;
};

// Howard Hinnant's days-to-civil conversion on the proleptic Gregorian calendar.
CivilDate civilFromDays(qint64 days) {
    days += 719'468;
    const qint64 era = (days >= 0 ? days : days - 146'096) / 146'097;
    const qint64 dayOfEra = days - era * 146'097;
    const qint64 yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const qint64 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const qint64 shiftedMonth = (5 * dayOfYear + 2) / 153;
    const int day = int(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1);
    const int month = int(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

void appendDigits(char *&at, qint64 value, int width) {
    for (int i = width - 1; i >= 0; --i) {
        at[i] = char('0' + value % 10);
        value /= 10;
    }
    at += width;
}

} // namespace

void appendIsoUtc(QByteArray &out, qint64 msecsSinceEpoch) {
    qint64 days = msecsSinceEpoch / msecsPerDay;
    qint64 rest = msecsSinceEpoch % msecsPerDay;
    if (rest < 0) {
        rest += msecsPerDay;
        --days;
    }
    const CivilDate date = civilFromDays(days);
    // Years without four plain digits take Qt's own spelling, whatever it is.
    if (date.year < 0 || date.year > 9999) {
        out.append(QDateTime::fromMSecsSinceEpoch(msecsSinceEpoch, Qt::UTC)
                       .toString(Qt::ISODateWithMs)
                       .toLatin1());
        return;
    }
    char text[24];
    char *at = text;
    appendDigits(at, date.year, 4);
    *at++ = '-';
    appendDigits(at, date.month, 2);
    *at++ = '-';
    appendDigits(at, date.day, 2);
    *at++ = 'T';
    appendDigits(at, rest / 3'600'000, 2);
    *at++ = ':';
    appendDigits(at, rest / 60'000 % 60, 2);
    *at++ = ':';
    appendDigits(at, rest / 1000 % 60, 2);
    *at++ = '.';
    appendDigits(at, rest % 1000, 3);
    *at++ = 'Z';
    out.append(text, at - text);
}

QString isoUtcText(qint64 msecsSinceEpoch) {
    QByteArray text;
    appendIsoUtc(text, msecsSinceEpoch);
    return QString::fromLatin1(text);
}

} // namespace ravelinth
