#include "grid/Navigation.h"

#include <algorithm>

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// Whether the current cell ends inside the area the scroll bars leave free
// below (rows) or to the right.
bool fitsForward(Grid& g, bool rows)
{
    const CellIndex cell = g.selection.current();
    int32_t x = 0, y = 0;
    g.cellCoordinates(cell.row, cell.col, x, y);
    const platform::ScrollBar& bar = rows ? g.ui.scrHorizontal : g.ui.scrVertical;
    const int32_t covered = bar.Visible() ? (rows ? bar.Height() : bar.Width()) : 0;
    const int64_t room = rows ? g.ui.picGrid.ScaleHeight() : g.ui.picGrid.ScaleWidth();
    const int32_t size = rows ? g.model.rows().size(cell.row) : g.model.cols().size(cell.col);
    return room - size - covered >= (rows ? y : x);
}

void setCurrentLine(Selection& selection, bool rows, int32_t line)
{
    if (rows)
        selection.setRow(line);
    else
        selection.setCol(line);
}

// Down and Right test the new cell's pixel extent against the area the
// scroll bars leave free and step the bar when it does not fit. Returns
// whether the current cell moved.
bool moveForward(Grid& g, bool rows)
{
    const int32_t line = rows ? g.selection.row() : g.selection.col();
    if (line >= (rows ? g.model.rows().count() : g.model.cols().count()))
        return false;
    bool fits = true;
    g.moveFocus([&] {
        setCurrentLine(g.selection, rows, line + 1);
        fits = fitsForward(g, rows);
    });
    platform::ScrollBar& bar = rows ? g.ui.scrVertical : g.ui.scrHorizontal;
    if (!fits && bar.Value() < bar.Max())
        bar.setValue(bar.Value() + 1);
    return true;
}

// Up and Left compare indexes with the first shown. Scrolling back repaints
// the new current cell's mark itself.
bool moveBack(Grid& g, bool rows)
{
    const int32_t line = rows ? g.selection.row() : g.selection.col();
    if (line < 2)
        return false;
    g.hideFocus();
    setCurrentLine(g.selection, rows, line - 1);
    platform::ScrollBar& bar = rows ? g.ui.scrVertical : g.ui.scrHorizontal;
    if (line - 1 >= (rows ? g.viewport.topRow() : g.viewport.leftCol()) || bar.Value() < 2)
        g.showFocus();
    else
        bar.setValue(bar.Value() - 1);
    return true;
}

// Up and Down select the current row again in the by-row mode, Left the
// current column in the by-column mode; Right does either.
void moveByArrow(Grid& g, int16_t keyCode)
{
    const bool rows = keyCode == VkUp || keyCode == VkDown;
    const bool forward = keyCode == VkDown || keyCode == VkRight;
    if (!(forward ? moveForward(g, rows) : moveBack(g, rows)))
        return;
    if (keyCode == VkRight)
        g.fitSelectionToMode();
    else if (rows && g.selection.selectsRows())
        g.changeSelection([&g] { g.selection.selectCurrentRow(g.model.cols().count()); });
    else if (!rows && g.selection.selectsColumns())
        g.changeSelection([&g] { g.selection.selectCurrentColumn(g.model.rows().count()); });
}

// The current row each paging key moves to, always a row of the grid (or
// 0 when it has none). A grid too small to hold one whole page measures a
// negative page, which moves nothing.
int32_t pagedRow(const Grid& g, int32_t currentRow, int16_t keyCode)
{
    const int32_t count = g.model.rows().count();
    const int64_t page = std::max(g.viewport.pageRows(), 0);
    const int64_t row = keyCode == VkHome     ? 1
                        : keyCode == VkEnd    ? count
                        : keyCode == VkPageUp ? currentRow - page
                                              : currentRow + page;
    return static_cast<int32_t>(std::clamp<int64_t>(row, std::min(count, 1), count));
}

// The new current row becomes the top row; the repaint shows its mark.
void moveByPage(Grid& g, int16_t keyCode)
{
    g.hideFocus();
    g.selection.setRow(pagedRow(g, g.selection.row(), keyCode));
    g.redrawAllCells(true);
    g.ui.scrVertical.setValue(g.selection.row());
    g.showCellButtons();
    g.fitSelectionToMode();
}

}  // namespace

void Grid::KeyDown(int16_t keyCode, int16_t)
{
    const CellIndex old = selection.current();
    if (keyCode >= VkLeft && keyCode <= VkDown) {
        moveByArrow(*this, keyCode);
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
        toggleCurrentCheckmark(*this, false);
}

void Grid::onSurfaceKeyUp(int16_t keyCode, int16_t shift)
{
    const CellIndex old = selection.current();
    if (keyCode >= VkPageUp && keyCode <= VkHome)
        moveByPage(*this, keyCode);
    events.KeyUp(keyCode, shift);
    if (selection.current() != old)
        events.RowColChange(old.row, old.col);
}

}  // namespace TabulaControl::detail
