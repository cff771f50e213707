#include "state/LookupLists.h"

#include "state/Errors.h"

#include <algorithm>

namespace TabulaControl::detail::lookups {

int16_t LookupLists::checkedCount() const { return to16(static_cast<int64_t>(values_.size())); }

void LookupLists::add(int32_t col, const QString& value, const QVariant& itemData)
{
    values_.push_back(Value{to16(col), value, itemData});
}

QVariant LookupLists::itemDataOf(int32_t col, const QString& value) const
{
    checkedCount();
    for (const Value& v : values_) {
        if (v.column == col && v.text == value)
            return v.itemData;
    }
    return QVariant::fromValue<int16_t>(-1);
}

void LookupLists::removeValue(int32_t col, const QString& value)
{
    checkedCount();
    const auto found =
        std::find_if(values_.begin(), values_.end(), [&](const Value& v) { return v.column == col && v.text == value; });
    if (found != values_.end())
        values_.erase(found);
}

void LookupLists::removeColumn(int32_t col)
{
    checkedCount();
    std::erase_if(values_, [col](const Value& v) { return v.column == col; });
}

bool LookupLists::columnHasList(int32_t col) const
{
    checkedCount();
    return std::any_of(values_.begin(), values_.end(), [col](const Value& v) { return v.column == col; });
}

QStringList LookupLists::valuesOf(int32_t col) const
{
    QStringList values;
    for (const Value& v : values_) {
        if (v.column == col)
            values.append(v.text);
    }
    return values;
}

std::vector<LookupLists::SavedValue> LookupLists::savedValues() const
{
    std::vector<SavedValue> saved;
    saved.reserve(values_.size());
    for (const Value& v : values_)
        saved.push_back({v.column, v.text});
    return saved;
}

void LookupLists::addButtonColumn(int32_t col) { buttonColumns_.push_back(to16(col)); }

// Each removal restarts the scan at the second element while the bound
// stays the count taken at the start, so removing one of several buttons
// runs past the end and fails once the matching buttons are gone.
void LookupLists::removeButtonColumn(int32_t col)
{
    const int16_t count = to16(static_cast<int64_t>(buttonColumns_.size()));
    for (int32_t i = 1; i <= count; ++i) {
        if (i > static_cast<int32_t>(buttonColumns_.size()))
            raise(RuntimeError::InvalidCall);
        if (buttonColumns_[static_cast<size_t>(i - 1)] != col)
            continue;
        buttonColumns_.erase(buttonColumns_.begin() + (i - 1));
        i = 1;
    }
}

bool LookupLists::isButtonColumn(int32_t col) const
{
    return std::find(buttonColumns_.begin(), buttonColumns_.end(), col) != buttonColumns_.end();
}

}  // namespace TabulaControl::detail::lookups
