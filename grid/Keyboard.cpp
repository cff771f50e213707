#include "grid/Navigation.h"

#include <algorithm>

namespace TabulaControl::detail {

using namespace navigation;

namespace {

bool isArrow(int16_t keyCode) { return keyCode >= VkLeft && keyCode <= VkDown; }

void selectCurrentRow(Grid& g)
{
    if (g.selection.selectsRows())
        g.changeSelection([&g] { g.selection.selectCurrentRow(g.model.cols().count()); });
}

void selectCurrentColumn(Grid& g)
{
    if (g.selection.selectsColumns())
        g.changeSelection([&g] { g.selection.selectCurrentColumn(g.model.rows().count()); });
}

// Down and Right test the new cell's pixel extent against the area the
// scroll bars leave free; Up and Left compare indexes with the first shown.
// Whether the current cell ends inside the area the scroll bars leave free
// below (fitsDown) or to the right (fitsRight).
bool fitsDown(Grid& g)
{
    const CellIndex cell = g.selection.current();
    int32_t x = 0, y = 0;
    g.cellCoordinates(cell.row, cell.col, x, y);
    const int32_t barHeight = g.ui.scrHorizontal.Visible() ? g.ui.scrHorizontal.Height() : 0;
    return int64_t{g.ui.picGrid.ScaleHeight()} - g.model.rows().size(cell.row) - barHeight >= y;
}

bool fitsRight(Grid& g)
{
    const CellIndex cell = g.selection.current();
    int32_t x = 0, y = 0;
    g.cellCoordinates(cell.row, cell.col, x, y);
    const int32_t barWidth = g.ui.scrVertical.Visible() ? g.ui.scrVertical.Width() : 0;
    return int64_t{g.ui.picGrid.ScaleWidth()} - g.model.cols().size(cell.col) - barWidth >= x;
}

void stepForwardUnless(bool fits, platform::ScrollBar& bar)
{
    if (!fits && bar.Value() < bar.Max())
        bar.setValue(bar.Value() + 1);
}

void moveDown(Grid& g)
{
    Selection& selection = g.selection;
    if (selection.row() >= g.model.rows().count())
        return;
    bool fits = true;
    g.moveFocus([&] {
        selection.setRow(selection.row() + 1);
        fits = fitsDown(g);
    });
    stepForwardUnless(fits, g.ui.scrVertical);
    selectCurrentRow(g);
}

void moveRight(Grid& g)
{
    Selection& selection = g.selection;
    if (selection.col() >= g.model.cols().count())
        return;
    bool fits = true;
    g.moveFocus([&] {
        selection.setCol(selection.col() + 1);
        fits = fitsRight(g);
    });
    stepForwardUnless(fits, g.ui.scrHorizontal);
    // Unlike the other arrows, Right refits the selection in either line mode.
    g.fitSelectionToMode();
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
    Selection& selection = g.selection;
    if (selection.row() < 2)
        return;
    g.hideFocus();
    selection.setRow(selection.row() - 1);
    stepBackOrShow(g, selection.row() >= g.viewport.topRow(), g.ui.scrVertical);
    selectCurrentRow(g);
}

void moveLeft(Grid& g)
{
    Selection& selection = g.selection;
    if (selection.col() < 2)
        return;
    g.hideFocus();
    selection.setCol(selection.col() - 1);
    stepBackOrShow(g, selection.col() >= g.viewport.leftCol(), g.ui.scrHorizontal);
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
int32_t pagedRow(const Grid& g, int32_t currentRow, int16_t keyCode)
{
    const GridModel& model = g.model;
    const int64_t page = std::max(g.viewport.pageRows(), 0);
    int64_t row = model.rows().count();
    switch (keyCode) {
    case VkHome: row = 1; break;
    case VkEnd: row = model.rows().count(); break;
    case VkPageUp: row = currentRow - page; break;
    default: row = currentRow + page; break;
    }
    return static_cast<int32_t>(std::clamp<int64_t>(row, std::min(model.rows().count(), 1), model.rows().count()));
}

bool isPagingKey(int16_t keyCode)
{
    return keyCode == VkHome || keyCode == VkEnd || keyCode == VkPageUp || keyCode == VkPageDown;
}

// The new current row becomes the top row; the repaint shows its mark.
void moveByPage(Grid& g, int16_t keyCode)
{
    g.hideFocus();
    g.selection.setRow(pagedRow(g, g.selection.row(), keyCode));
    g.redrawAllCells(true);
    g.ui.scrVertical.setValue(to16(g.selection.row()));
    g.showCellButtons();
    g.fitSelectionToMode();
}

void toggleCheckmarkByKey(Grid& g)
{
    GridModel& model = g.model;
    const bool editable = model.columns().editAllowed(g.selection.col());
    if (editable) {
        const int16_t row = to16(g.selection.row()), col = to16(g.selection.col());
        model.cells().setText(row, col, toggledCheckmark(model.cells().Text(row, col)));
    }
    redrawCurrentCell(g);
    if (editable)
        g.raiseAfterEdit();
}

}  // namespace

void Grid::KeyDown(int16_t keyCode, int16_t)
{
    const CellIndex old = selection.current();
    if (isArrow(keyCode)) {
        moveByArrow(*this, keyCode);
        if (ui.txtEdit.Visible())
            hideEditorBox(*this);
        closeDropDown(*this);
    }
    if (selection.current() != old)
        events.RowColChange(old.row, old.col);
}

void Grid::onSurfaceKeyDown(int16_t keyCode, int16_t shift)
{
    events.KeyDown(keyCode, shift);
    KeyDown(keyCode, shift);
}

void Grid::onSurfaceCharacter(int16_t keyAscii)
{
    events.KeyPress(keyAscii);
    const bool checkmarkColumn = model.columns().mask(selection.col()) == checkmark;
    if (model.cols().count() > 0 && model.rows().count() > 0 && keyAscii != CharTab && !checkmarkColumn)
        startEdit(keyAscii);
    if (model.columns().mask(selection.col()) == checkmark)
        toggleCheckmarkByKey(*this);
}

void Grid::onSurfaceKeyUp(int16_t keyCode, int16_t shift)
{
    const CellIndex old = selection.current();
    if (isPagingKey(keyCode))
        moveByPage(*this, keyCode);
    events.KeyUp(keyCode, shift);
    if (selection.current() != old)
        events.RowColChange(old.row, old.col);
}

}  // namespace TabulaControl::detail
