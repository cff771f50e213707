#include "core/Facade.h"

#include <algorithm>

namespace TabulaControl::detail {

namespace {

// Every scan counts the lookups in 16 bits first.
int16_t lookupCount(const std::vector<Lookup>& lookups) { return to16(static_cast<int64_t>(lookups.size())); }

bool matches(const Lookup& l, int32_t col, const QString& value) { return l.Column == col && l.Value == value; }

}  // namespace

void Grid::AddLookup(int32_t col, const QString& value, const QVariant& itemData)
{
    s.mLookups.push_back(Lookup{to16(col), value, itemData});
}

QVariant Grid::LookupItemData(int32_t col, const QString& value) const
{
    const int16_t count = lookupCount(s.mLookups);
    for (int16_t i = 0; i < count; ++i) {
        if (matches(s.mLookups[static_cast<size_t>(i)], col, value))
            return s.mLookups[static_cast<size_t>(i)].ItemData;
    }
    return QVariant::fromValue<int16_t>(-1);
}

void Grid::RemoveLookupValue(int32_t col, const QString& value)
{
    const int16_t count = lookupCount(s.mLookups);
    for (int16_t i = 0; i < count; ++i) {
        if (matches(s.mLookups[static_cast<size_t>(i)], col, value)) {
            s.mLookups.erase(s.mLookups.begin() + i);
            return;
        }
    }
}

void Grid::RemoveLookup(int32_t col)
{
    lookupCount(s.mLookups);
    std::erase_if(s.mLookups, [col](const Lookup& l) { return l.Column == col; });
}

void Grid::ClearAllLookups() { s.mLookups.clear(); }

bool Grid::ColHasLookup(int32_t col) const
{
    lookupCount(s.mLookups);
    return std::any_of(s.mLookups.begin(), s.mLookups.end(), [col](const Lookup& l) { return l.Column == col; });
}

void Grid::fillList(int32_t col)
{
    ui.listForm.Clear();
    for (const Lookup& l : s.mLookups) {
        if (l.Column == col)
            ui.listForm.AddItem(l.Value);
    }
}

}  // namespace TabulaControl::detail

namespace TabulaControl {

void Tabula::AddLookup(int32_t Col, const QString& Value, const QVariant& ItemData)
{
    call("AddLookup", [&] { grid_->AddLookup(Col, Value, ItemData); });
}
QVariant Tabula::LookupItemData(int32_t Col, const QString& Value) const
{
    return call("LookupItemData", [&] { return grid_->LookupItemData(Col, Value); });
}
void Tabula::RemoveLookupValue(int32_t Col, const QString& Value)
{
    call("RemoveLookupValue", [&] { grid_->RemoveLookupValue(Col, Value); });
}
void Tabula::RemoveLookup(int32_t Col) { call("RemoveLookup", [&] { grid_->RemoveLookup(Col); }); }
bool Tabula::ColHasLookup(int32_t Col) const
{
    return call("ColHasLookup", [&] { return grid_->ColHasLookup(Col); });
}

bool Tabula::UseItemData() const { return grid_->s.mUseItemData; }
void Tabula::setUseItemData(bool value)
{
    change("UseItemData", [&] {
        grid_->s.mUseItemData = value;
        grid_->notifyPropertyChanged("UseItemData");
    });
}

int16_t Tabula::ListBoxRows() const { return grid_->s.mListBoxRows; }
void Tabula::setListBoxRows(int16_t value)
{
    change("ListBoxRows", [&] {
        grid_->s.mListBoxRows = value;
        grid_->notifyPropertyChanged("ListBoxRows");
    });
}

}  // namespace TabulaControl
