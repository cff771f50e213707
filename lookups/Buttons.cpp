#include "core/Facade.h"

#include <algorithm>

namespace TabulaControl::detail {

void Grid::AddButton(int32_t col) { s.mButtons.push_back(to16(col)); }

// Each removal restarts the scan at the second element while the bound
// stays the count taken at the start, so removing one of several buttons
// runs past the end and fails once the matching buttons are gone.
void Grid::RemoveButton(int32_t col)
{
    const int16_t count = to16(static_cast<int64_t>(s.mButtons.size()));
    for (int32_t i = 1; i <= count; ++i) {
        if (i > static_cast<int32_t>(s.mButtons.size()))
            raise(RuntimeError::InvalidCall);
        if (s.mButtons[static_cast<size_t>(i - 1)] != col)
            continue;
        s.mButtons.erase(s.mButtons.begin() + (i - 1));
        i = 1;
    }
}

bool Grid::ColHasButton(int32_t col) const
{
    return std::any_of(s.mButtons.begin(), s.mButtons.end(), [col](int16_t c) { return c == col; });
}

void Grid::onCellButtonClick() { events.BtnClick(s.mRow, s.mCol); }

}  // namespace TabulaControl::detail

namespace TabulaControl {

void Tabula::AddButton(int32_t Col) { call("AddButton", [&] { grid_->AddButton(Col); }); }
void Tabula::RemoveButton(int32_t Col) { call("RemoveButton", [&] { grid_->RemoveButton(Col); }); }
bool Tabula::ColHasButton(int32_t Col) const { return call("ColHasButton", [&] { return grid_->ColHasButton(Col); }); }

}  // namespace TabulaControl
