#pragma once

#include <QDate>
#include <QString>

namespace TabulaControl::detail {

// Recognises a date written the way people type one:
//   month/day/year with "/", "-" or "." between the parts ("3/7/2024",
//   "03-07-24"); when the first number cannot be a month but the second can,
//   the two are read as day/month ("25/12/2024");
//   year-month-day with a four-digit year first ("2024-03-07", "2024/3/7");
//   a month name, full or abbreviated to three letters, in any case, before
//   or after the day ("March 7, 2024", "7 Mar 2024", "7-mar-24").
// A one- or two-digit year means 2000..2029 below 30 and 1930..1999 from 30.
// Anything else, and any day the month does not have, is no date.
QDate parseDateText(const QString& text);

}  // namespace TabulaControl::detail
