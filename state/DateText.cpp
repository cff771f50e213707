#include "state/DateText.h"

#include <QRegularExpression>
#include <QStringList>

namespace TabulaControl::detail {

namespace {

int expandYear(const QString& digits)
{
    const int year = digits.toInt();
    if (digits.size() > 2)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

int monthFromName(const QString& name)
{
    static const QStringList names = {"january", "february", "march",     "april",   "may",      "june",
                                      "july",    "august",   "september", "october", "november", "december"};
    const QString lower = name.toLower();
    for (int i = 0; i < names.size(); ++i) {
        if (lower == names[i] || (lower.size() == 3 && names[i].startsWith(lower)))
            return i + 1;
    }
    return 0;
}

QDate numericDate(int first, int second, int year)
{
    QDate date(year, first, second);
    if (date.isValid())
        return date;
    if (first > 12)
        return QDate(year, second, first);
    return {};
}

QDate matchNumeric(const QString& text)
{
    static const QRegularExpression yearFirst(QStringLiteral(R"(^(\d{4})([-/.])(\d{1,2})\2(\d{1,2})$)"));
    static const QRegularExpression monthFirst(QStringLiteral(R"(^(\d{1,2})([-/.])(\d{1,2})\2(\d{1,4})$)"));
    if (auto m = yearFirst.match(text); m.hasMatch())
        return QDate(m.captured(1).toInt(), m.captured(3).toInt(), m.captured(4).toInt());
    if (auto m = monthFirst.match(text); m.hasMatch()) {
        if (m.captured(4).size() == 3)
            return {};
        return numericDate(m.captured(1).toInt(), m.captured(3).toInt(), expandYear(m.captured(4)));
    }
    return {};
}

QDate matchNamed(const QString& text)
{
    static const QRegularExpression nameFirst(
        QStringLiteral(R"(^([A-Za-z]+)\.?[\s\-/]+(\d{1,2}),?[\s\-/,]+(\d{1,4})$)"));
    static const QRegularExpression dayFirst(
        QStringLiteral(R"(^(\d{1,2})[\s\-/]+([A-Za-z]+)\.?,?[\s\-/,]+(\d{1,4})$)"));
    QString name, day, year;
    if (auto m = nameFirst.match(text); m.hasMatch()) {
        name = m.captured(1), day = m.captured(2), year = m.captured(3);
    } else if (auto m2 = dayFirst.match(text); m2.hasMatch()) {
        day = m2.captured(1), name = m2.captured(2), year = m2.captured(3);
    } else {
        return {};
    }
    const int month = monthFromName(name);
    if (month == 0 || year.size() == 3)
        return {};
    return QDate(expandYear(year), month, day.toInt());
}

}  // namespace

QDate parseDateText(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return {};
    const QDate numeric = matchNumeric(trimmed);
    if (numeric.isValid())
        return numeric;
    const QDate named = matchNamed(trimmed);
    return named.isValid() ? named : QDate();
}

}  // namespace TabulaControl::detail
