#pragma once

#include <QDateTime>
#include <QString>
#include <QTimeZone>

namespace ravelinth {

// How far `date` lies from `reference`, in English words: "in 3 days", "2 weeks ago".
//
// The calendar difference is taken unit by unit, largest first (years, months, 7-day weeks,
// days, hours, minutes, seconds), each unit taking the whole number that fits before passing the
// rest on; the first unit that is not zero is named and the smaller ones are dropped, never
// rounded ("1 hour 59 minutes ago" reads "1 hour ago"). Months and years clamp the day of the
// month (Jan 31 + 1 month = Feb 28), and days are calendar days in `zone`, so a day across a
// daylight-saving change still counts as one. Less than a second either way reads
// "in 0 seconds".
QString formatRelativeDate(const QDateTime &date, const QDateTime &reference,
                           const QTimeZone &zone = QTimeZone::systemTimeZone());

} // namespace ravelinth
