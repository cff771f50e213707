#include "api/Facade.h"

namespace TabulaControl::detail {

void Grid::AddLookup(int32_t col, const QString& value, const QVariant& itemData)
{
    lookupLists_.add(col, value, itemData);
}

QVariant Grid::LookupItemData(int32_t col, const QString& value) const
{
    return lookupLists_.itemDataOf(col, value);
}

void Grid::RemoveLookupValue(int32_t col, const QString& value) { lookupLists_.removeValue(col, value); }

void Grid::RemoveLookup(int32_t col) { lookupLists_.removeColumn(col); }

void Grid::ClearAllLookups() { lookupLists_.clear(); }

bool Grid::ColHasLookup(int32_t col) const { return lookupLists_.columnHasList(col); }

void Grid::fillList(int32_t col)
{
    ui.listForm.Clear();
    for (const QString& value : lookupLists_.valuesOf(col))
        ui.listForm.AddItem(value);
}

void Grid::AddButton(int32_t col) { lookupLists_.addButtonColumn(col); }

void Grid::RemoveButton(int32_t col) { lookupLists_.removeButtonColumn(col); }

bool Grid::ColHasButton(int32_t col) const { return lookupLists_.isButtonColumn(col); }

void Grid::onCellButtonClick() { events.BtnClick(selection.row(), selection.col()); }

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

bool Tabula::UseItemData() const { return grid_->dropDownSettings.picksItemData(); }
void Tabula::setUseItemData(bool value)
{
    changeProperty("UseItemData", [&] { grid_->dropDownSettings.setPicksItemData(value); });
}

int16_t Tabula::ListBoxRows() const { return grid_->dropDownSettings.minimumRows(); }
void Tabula::setListBoxRows(int16_t value)
{
    changeProperty("ListBoxRows", [&] { grid_->dropDownSettings.setMinimumRows(value); });
}

void Tabula::AddButton(int32_t Col) { call("AddButton", [&] { grid_->AddButton(Col); }); }
void Tabula::RemoveButton(int32_t Col) { call("RemoveButton", [&] { grid_->RemoveButton(Col); }); }
bool Tabula::ColHasButton(int32_t Col) const { return call("ColHasButton", [&] { return grid_->ColHasButton(Col); }); }

}  // namespace TabulaControl
