#include "models/RelativeDateFormatter.h"

#include <QLocale>

#include <array>
#include <functional>

namespace ravelinth {

namespace {

using Adder = std::function<QDateTime(const QDateTime &, qint64)>;

// The largest count n (toward `target`, truncating toward zero) such that `add(start, n)` does
// not pass `target`. `estimate` is a guess near the answer; the search corrects it both ways.
qint64 fieldDifference(const QDateTime &start, const QDateTime &target, qint64 estimate,
                       const Adder &add) {
    qint64 n = estimate;
    if (start <= target) {
        if (n < 0)
            n = 0;
        while (n > 0 && add(start, n) > target)
            --n;
        while (add(start, n + 1) <= target)
            ++n;
    } else {
        if (n > 0)
            n = 0;
        while (n < 0 && add(start, n) < target)
            ++n;
        while (add(start, n - 1) >= target)
            --n;
    }
    return n;
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
        {{u"year", u"years"}, [](const QDateTime &t, qint64 n) { return t.addYears(int(n)); }},
        {{u"month", u"months"}, [](const QDateTime &t, qint64 n) { return t.addMonths(int(n)); }},
        {{u"week", u"weeks"}, [](const QDateTime &t, qint64 n) { return t.addDays(n * 7); }},
        {{u"day", u"days"}, [](const QDateTime &t, qint64 n) { return t.addDays(n); }},
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
