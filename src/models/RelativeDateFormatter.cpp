#include "models/RelativeDateFormatter.h"

#include <QLocale>

#include <array>
#include <functional>
#include <limits>

namespace ravelinth {

namespace {

using Adder = std::function<QDateTime(const QDateTime &, qint64)>;

// Whether `add(start, n)` lands on or before `target`, coming from `start`'s side. A count the
// calendar cannot hold passes every target, so the search below stays bounded for any time stamp.
// The calendar pins a move past the first or last millisecond it can hold to that millisecond;
// such a move did not really happen, and counting it would find every count "reaches".
bool reaches(const QDateTime &start, const QDateTime &target, qint64 n, const Adder &add) {
    const QDateTime moved = add(start, n);
    if (!moved.isValid())
        return false;
    const qint64 msecs = moved.toMSecsSinceEpoch();
    if (msecs == std::numeric_limits<qint64>::min() || msecs == std::numeric_limits<qint64>::max())
        return false;
    return start <= target ? moved <= target : moved >= target;
}

// The largest count n (toward `target`, truncating toward zero) such that `add(start, n)` does
// not pass `target`. `estimate` is a guess near the answer: usually it is right, and two calls
// settle it. Otherwise the search gallops from the last count that held, then halves the gap, so
// a wild guess or a time stamp millions of years off costs a few dozen calls, not millions.
qint64 fieldDifference(const QDateTime &start, const QDateTime &target, qint64 estimate,
                       const Adder &add) {
    const qint64 direction = start <= target ? 1 : -1;
    qint64 held = 0;
    if (estimate * direction > 0 && reaches(start, target, estimate, add))
        held = estimate;
    qint64 stride = direction;
    qint64 passed = held + stride;
    while (reaches(start, target, passed, add)) {
        held = passed;
        stride *= 2;
        passed = held + stride;
    }
    while ((passed - held) * direction > 1) {
        const qint64 middle = held + (passed - held) / 2;
        (reaches(start, target, middle, add) ? held : passed) = middle;
    }
    return held;
}

// The calendar's adders take an int, or overflow silently. The answers stay far below a billion
// (a 64-bit time stamp is at most 292 million years away, and weeks and days are counted only
// within a month), so the galloping search may ask for more: it gets an invalid date, which it
// treats as too far.
constexpr qint64 farthestCount = qint64(1) << 30;

bool countable(qint64 n) {
    return n > -farthestCount && n < farthestCount;
}

struct Unit {
    const char16_t *singular;
    const char16_t *plural;
};

QString phrase(qint64 value, const Unit &unit) {
    const qint64 magnitude = value < 0 ? -value : value;
    const QString number = QLocale(QLocale::English, QLocale::UnitedStates).toString(magnitude);
    const QString words =
        number + u' ' + QString::fromUtf16(magnitude == 1 ? unit.singular : unit.plural);
    return value < 0 ? words + u" ago"_qs : u"in "_qs + words;
}

} // namespace

QString formatRelativeDate(const QDateTime &date, const QDateTime &reference,
                           const QTimeZone &zone) {
    if (!date.isValid() || !reference.isValid())
        return {};
    const QDateTime target = date.toTimeZone(zone);
    QDateTime cursor = reference.toTimeZone(zone);

    const qint64 monthGuess = qint64(target.date().year() - cursor.date().year()) * 12 +
                              (target.date().month() - cursor.date().month());
    const std::array<std::pair<Unit, Adder>, 4> calendarUnits{{
        {{u"year", u"years"},
         [](const QDateTime &t, qint64 n) {
             return countable(n) ? t.addYears(int(n)) : QDateTime();
         }},
        {{u"month", u"months"},
         [](const QDateTime &t, qint64 n) {
             return countable(n) ? t.addMonths(int(n)) : QDateTime();
         }},
        {{u"week", u"weeks"},
         [](const QDateTime &t, qint64 n) {
             return countable(n) ? t.addDays(n * 7) : QDateTime();
         }},
        {{u"day", u"days"},
         [](const QDateTime &t, qint64 n) { return countable(n) ? t.addDays(n) : QDateTime(); }},
    }};
    for (size_t i = 0; i < calendarUnits.size(); ++i) {
        const qint64 days = cursor.date().daysTo(target.date());
        const qint64 guesses[] = {monthGuess / 12, monthGuess, days / 7, days};
        const auto &[unit, add] = calendarUnits[i];
        const qint64 n = fieldDifference(cursor, target, guesses[i], add);
        if (n != 0)
            return phrase(n, unit);
    }

    // Below a day every unit is a fixed length, so plain division truncates exactly.
    const qint64 msecs = cursor.msecsTo(target);
    if (const qint64 hours = msecs / 3'600'000; hours != 0)
        return phrase(hours, {u"hour", u"hours"});
    if (const qint64 minutes = msecs / 60'000; minutes != 0)
        return phrase(minutes, {u"minute", u"minutes"});
    return phrase(msecs / 1000, {u"second", u"seconds"});
}

} // namespace ravelinth
