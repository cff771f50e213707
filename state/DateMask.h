#pragma once

#include <QString>

#include <cstdint>

namespace TabulaControl::detail {

// The editor's text after keyAscii, for a date typed as mm/dd/yyyy: digits
// fill the month, the day and the year in turn, a part is completed (and its
// "/" added) as soon as no further digit could make it valid or "/" is typed,
// a day is checked against its month in a leap year, and a one- or two-digit
// year is given its century when "/" is typed after it. Backspace removes the
// last character. Every key is consumed: keyAscii comes back 0.
QString dateMasked(int16_t& keyAscii, const QString& text);

}  // namespace TabulaControl::detail
