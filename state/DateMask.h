#pragma once

#include <QString>

#include <cstdint>

namespace TabulaControl::detail {

// Edits a date as mm/dd/yyyy while it is typed: digits fill the month, the
// day and the year in turn, a part is completed (and its "/" added) as soon
// as no further digit could make it valid or "/" is typed, a day is checked
// against its month in a leap year, and a one- or two-digit year is given
// its century when "/" is typed after it. Backspace removes the last
// character. Every key is consumed.
class DateMask {
public:
    QString Mask(int16_t& keyAscii, const QString& text) const;

private:
    static QString FinishMonth(const QString& text);
    static QString FinishDay(const QString& text);
    static QString FinishYear(const QString& text);
    static QString typeDigit(QChar digit, const QString& text);
};

}  // namespace TabulaControl::detail
