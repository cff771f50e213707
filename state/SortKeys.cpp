#include "state/SortKeys.h"

#include "state/DateText.h"

#include <TabulaControl/TabulaTypes.h>

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <optional>

namespace TabulaControl::detail {

namespace {

bool isEmpty(const QString& text) { return QStringView(text).trimmed().isEmpty(); }

std::optional<double> numberIn(const QString& text)
{
    const QStringView trimmed = QStringView(text).trimmed();
    bool ok = false;
    double value = trimmed.toDouble(&ok);
    if (!ok)
        value = QLocale().toDouble(trimmed, &ok);
    return ok ? std::optional<double>(value) : std::nullopt;
}

std::optional<double> keyOf(const QString& text, SortKind kind)
{
    if (kind == SortKind::Number)
        return numberIn(text);
    const QDate date = parseDateText(text);
    return date.isValid() ? std::optional<double>(static_cast<double>(date.toJulianDay())) : std::nullopt;
}

// Sorts the keyed indexes in place by key, keeping equal keys in order.
template <class Less>
void sortKeyed(std::vector<int32_t>& keyed, bool descending, Less less)
{
    if (descending)
        std::stable_sort(keyed.begin(), keyed.end(), [&](int32_t a, int32_t b) { return less(b, a); });
    else
        std::stable_sort(keyed.begin(), keyed.end(), less);
}

// The user's locale; the C locale collates by code point and ignores the
// numeric mode, so it gives way to English rules.
QCollator userCollator()
{
    const QLocale locale;
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setNumericMode(true);
    return collator;
}

}  // namespace

SortKind sortKindOf(const std::vector<QString>& texts, int32_t mask)
{
    if (mask == NumericOnly)
        return SortKind::Number;
    if (mask == DateOnly)
        return SortKind::Date;
    const bool numbers = std::any_of(texts.begin(), texts.end(), [](const QString& t) { return !isEmpty(t); }) &&
                         std::all_of(texts.begin(), texts.end(),
                                     [](const QString& t) { return isEmpty(t) || numberIn(t).has_value(); });
    return numbers ? SortKind::Number : SortKind::Text;
}

std::vector<int32_t> sortedOrder(const std::vector<QString>& texts, SortKind kind, bool descending)
{
    std::vector<int32_t> keyed, unkeyed, empty;
    std::vector<double> numbers(kind == SortKind::Text ? 0 : texts.size());
    std::vector<QCollatorSortKey> words;
    const QCollator collator = userCollator();
    for (int32_t i = 0; i < static_cast<int32_t>(texts.size()); ++i) {
        const QString& text = texts[static_cast<size_t>(i)];
        if (isEmpty(text)) {
            empty.push_back(i);
        } else if (kind == SortKind::Text) {
            keyed.push_back(i);
            words.push_back(collator.sortKey(text));
        } else if (const auto key = keyOf(text, kind)) {
            keyed.push_back(i);
            numbers[static_cast<size_t>(i)] = *key;
        } else {
            unkeyed.push_back(i);
        }
    }
    if (kind == SortKind::Text) {
        // The words are stored in the order of keyed; sort positions into it.
        std::vector<int32_t> positions(keyed.size());
        for (size_t p = 0; p < positions.size(); ++p)
            positions[p] = static_cast<int32_t>(p);
        sortKeyed(positions, descending, [&](int32_t a, int32_t b) {
            return words[static_cast<size_t>(a)].compare(words[static_cast<size_t>(b)]) < 0;
        });
        for (int32_t& p : positions)
            p = keyed[static_cast<size_t>(p)];
        keyed = std::move(positions);
    } else {
        const auto less = [&](int32_t a, int32_t b) {
            return numbers[static_cast<size_t>(a)] < numbers[static_cast<size_t>(b)];
        };
        sortKeyed(keyed, descending, less);
    }
    keyed.insert(keyed.end(), unkeyed.begin(), unkeyed.end());
    keyed.insert(keyed.end(), empty.begin(), empty.end());
    return keyed;
}

}  // namespace TabulaControl::detail
