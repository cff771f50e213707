#include "api/Facade.h"

namespace TabulaControl::detail {

void Grid::AddButton(int32_t col) { lookupLists_.addButtonColumn(col); }

void Grid::RemoveButton(int32_t col) { lookupLists_.removeButtonColumn(col); }

bool Grid::ColHasButton(int32_t col) const { return lookupLists_.isButtonColumn(col); }

void Grid::onCellButtonClick() { events.BtnClick(selection.row(), selection.col()); }

}  // namespace TabulaControl::detail

namespace TabulaControl {

void Tabula::AddButton(int32_t Col) { call("AddButton", [&] { grid_->AddButton(Col); }); }
void Tabula::RemoveButton(int32_t Col) { call("RemoveButton", [&] { grid_->RemoveButton(Col); }); }
bool Tabula::ColHasButton(int32_t Col) const { return call("ColHasButton", [&] { return grid_->ColHasButton(Col); }); }

}  // namespace TabulaControl
