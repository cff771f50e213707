#include "state/DateMask.h"

#include <QDate>
#include <QStringList>

namespace TabulaControl::detail {

namespace {

constexpr int16_t Backspace = 8;
constexpr int LeapYear = 2000;

int daysIn(int month) { return QDate(LeapYear, month, 1).daysInMonth(); }

int valueOf(const QString& digits) { return digits.toInt(); }

QString twoDigits(const QString& digits) { return digits.rightJustified(2, QLatin1Char('0')); }

QString finishMonth(const QString& text)
{
    if (text.isEmpty() || text.contains(QLatin1Char('/')) || valueOf(text) < 1)
        return text;
    return twoDigits(text) + QLatin1Char('/');
}

QString finishDay(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('/'));
    if (parts.size() != 2 || parts[1].isEmpty() || valueOf(parts[1]) < 1)
        return text;
    return parts[0] + QLatin1Char('/') + twoDigits(parts[1]) + QLatin1Char('/');
}

QString finishYear(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('/'));
    const QString year = parts.last();
    if (parts.size() != 3 || year.isEmpty() || year.size() > 2)
        return text;
    const QString century = valueOf(year) < 30 ? QStringLiteral("20") : QStringLiteral("19");
    return parts[0] + QLatin1Char('/') + parts[1] + QLatin1Char('/') + century + twoDigits(year);
}

QString typeDigit(QChar digit, const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('/'));
    const QString part = parts.last() + digit;
    if (parts.size() == 1) {
        if (valueOf(part) > 12 || (part.size() == 2 && valueOf(part) == 0))
            return text;
        return part.size() == 2 || valueOf(part) > 1 ? finishMonth(part) : part;
    }
    if (parts.size() == 2) {
        const int maxDay = daysIn(valueOf(parts[0]));
        if (valueOf(part) > maxDay || (part.size() == 2 && valueOf(part) == 0))
            return text;
        const QString head = parts[0] + QLatin1Char('/');
        return part.size() == 2 || valueOf(part) * 10 > maxDay ? finishDay(head + part) : head + part;
    }
    return parts.last().size() < 4 ? text + digit : text;
}

}  // namespace

QString dateMasked(int16_t& keyAscii, const QString& text)
{
    const QChar typed(static_cast<char16_t>(keyAscii));
    keyAscii = 0;
    if (typed.unicode() == Backspace)
        return text.left(text.size() - 1);
    if (typed.isDigit())
        return typeDigit(typed, text);
    if (typed != QLatin1Char('/'))
        return text;
    switch (text.count(QLatin1Char('/'))) {
    case 0: return finishMonth(text);
    case 1: return finishDay(text);
    default: return finishYear(text);
    }
}

}  // namespace TabulaControl::detail
