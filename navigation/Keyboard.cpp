#include "navigation/Navigation.h"

#include <algorithm>

namespace TabulaControl::detail {

using namespace navigation;

namespace {

bool isArrow(int16_t keyCode) { return keyCode >= VkLeft && keyCode <= VkDown; }

void selectCurrentRow(Grid& g)
{
    GridState& s = g.s;
    if (s.mAllowSelection && s.mSelectionMode == SelectionByRow)
        g.changeSelection([&s] { selectWholeRow(s, s.mRow); });
}

void selectCurrentColumn(Grid& g)
{
    GridState& s = g.s;
    if (s.mAllowSelection && s.mSelectionMode == SelectionByCol)
        g.changeSelection([&s] { selectWholeColumn(s, s.mCol); });
}

// Down and Right test the new cell's pixel extent against the area the
// scroll bars leave free; Up and Left compare indexes with the first shown.
// Whether the current cell ends inside the area the scroll bars leave free
// below (fitsDown) or to the right (fitsRight).
bool fitsDown(Grid& g)
{
    GridState& s = g.s;
    int32_t x = 0, y = 0;
    g.cellCoordinates(s.mRow, s.mCol, x, y);
    const int32_t barHeight = g.ui.scrHorizontal.Visible() ? g.ui.scrHorizontal.Height() : 0;
    return int64_t{g.ui.picGrid.ScaleHeight()} - s.mRowHeight(s.mRow) - barHeight >= y;
}

bool fitsRight(Grid& g)
{
    GridState& s = g.s;
    int32_t x = 0, y = 0;
    g.cellCoordinates(s.mRow, s.mCol, x, y);
    const int32_t barWidth = g.ui.scrVertical.Visible() ? g.ui.scrVertical.Width() : 0;
    return int64_t{g.ui.picGrid.ScaleWidth()} - s.mColWidth(s.mCol) - barWidth >= x;
}

void stepForwardUnless(bool fits, platform::ScrollBar& bar)
{
    if (!fits && bar.Value() < bar.Max())
        bar.setValue(bar.Value() + 1);
}

void moveDown(Grid& g)
{
    GridState& s = g.s;
    if (s.mRow >= s.mRows)
        return;
    bool fits = true;
    g.moveFocus([&] {
        ++s.mRow;
        fits = fitsDown(g);
    });
    stepForwardUnless(fits, g.ui.scrVertical);
    selectCurrentRow(g);
}

void moveRight(Grid& g)
{
    GridState& s = g.s;
    if (s.mCol >= s.mCols)
        return;
    bool fits = true;
    g.moveFocus([&] {
        ++s.mCol;
        fits = fitsRight(g);
    });
    stepForwardUnless(fits, g.ui.scrHorizontal);
    selectCurrentColumn(g);
    selectCurrentRow(g);
}

// Scrolling back repaints the new current cell's mark itself.
void stepBackOrShow(Grid& g, bool onScreen, platform::ScrollBar& bar)
{
    if (onScreen || bar.Value() < 2)
        g.showFocus();
    else
        bar.setValue(bar.Value() - 1);
}

void moveUp(Grid& g)
{
    GridState& s = g.s;
    if (s.mRow < 2)
        return;
    g.hideFocus();
    --s.mRow;
    stepBackOrShow(g, s.mRow >= s.mTopRow, g.ui.scrVertical);
    selectCurrentRow(g);
}

void moveLeft(Grid& g)
{
    GridState& s = g.s;
    if (s.mCol < 2)
        return;
    g.hideFocus();
    --s.mCol;
    stepBackOrShow(g, s.mCol >= s.mLeftCol, g.ui.scrHorizontal);
    selectCurrentColumn(g);
}

void moveByArrow(Grid& g, int16_t keyCode)
{
    switch (keyCode) {
    case VkDown: return moveDown(g);
    case VkRight: return moveRight(g);
    case VkUp: return moveUp(g);
    case VkLeft: return moveLeft(g);
    default: return;
    }
}

// The current row each paging key moves to, always a row of the grid (or
// 0 when it has none). A grid too small to hold one whole page measures a
// negative page, which moves nothing.
int32_t pagedRow(const GridState& s, int16_t keyCode)
{
    const int64_t page = std::max(s.mPageRows, 0);
    int64_t row = s.mRows;
    switch (keyCode) {
    case VkHome: row = 1; break;
    case VkEnd: row = s.mRows; break;
    case VkPageUp: row = s.mRow - page; break;
    default: row = s.mRow + page; break;
    }
    return static_cast<int32_t>(std::clamp<int64_t>(row, std::min(s.mRows, 1), s.mRows));
}

bool isPagingKey(int16_t keyCode)
{
    return keyCode == VkHome || keyCode == VkEnd || keyCode == VkPageUp || keyCode == VkPageDown;
}

// The new current row becomes the top row; the repaint shows its mark.
void moveByPage(Grid& g, int16_t keyCode)
{
    GridState& s = g.s;
    g.hideFocus();
    s.mRow = pagedRow(s, keyCode);
    g.redrawAllCells(true);
    g.ui.scrVertical.setValue(to16(s.mRow));
    g.showCellButtons();
    g.fitSelectionToMode();
}

void toggleCheckmarkByKey(Grid& g)
{
    GridState& s = g.s;
    const bool editable = s.mColAllowEdit(s.mCol);
    if (editable) {
        const int16_t row = to16(s.mRow), col = to16(s.mCol);
        s.mCells.setText(row, col, toggledCheckmark(s.mCells.Text(row, col)));
    }
    redrawCurrentCell(g);
    if (editable)
        g.raiseAfterEdit();
}

}  // namespace

void Grid::KeyDown(int16_t keyCode, int16_t)
{
    const int32_t oldRow = s.mRow, oldCol = s.mCol;
    if (isArrow(keyCode)) {
        moveByArrow(*this, keyCode);
        if (ui.txtEdit.Visible())
            hideEditorBox(*this);
        closeDropDown(*this);
    }
    ui.picGrid.Refresh();
    if (s.mRow != oldRow || s.mCol != oldCol)
        events.RowColChange(oldRow, oldCol);
}

void Grid::onSurfaceKeyDown(int16_t keyCode, int16_t shift)
{
    events.KeyDown(keyCode, shift);
    KeyDown(keyCode, shift);
}

void Grid::onSurfaceCharacter(int16_t keyAscii)
{
    events.KeyPress(keyAscii);
    const bool checkmarkColumn = s.mColMask(s.mCol) == checkmark;
    if (s.mCols > 0 && s.mRows > 0 && keyAscii != CharTab && !checkmarkColumn)
        startEdit(keyAscii);
    if (s.mColMask(s.mCol) == checkmark)
        toggleCheckmarkByKey(*this);
}

void Grid::onSurfaceKeyUp(int16_t keyCode, int16_t shift)
{
    const int32_t oldRow = s.mRow, oldCol = s.mCol;
    if (isPagingKey(keyCode))
        moveByPage(*this, keyCode);
    events.KeyUp(keyCode, shift);
    if (s.mRow != oldRow || s.mCol != oldCol)
        events.RowColChange(oldRow, oldCol);
}

}  // namespace TabulaControl::detail
