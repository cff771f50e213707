#include "grid/Grid.h"

namespace TabulaControl::detail {

// Places the drop-down button and the column button at the right end of the
// current cell. Only cells scrolled off to the left or above lose them; a
// cell past the right or bottom edge keeps its buttons where the surface
// clips them.
void Grid::showCellButtons()
{
    const CellIndex cell = selection.current();
    int32_t x = 0, y = 0;
    cellCoordinates(cell.row, cell.col, x, y);
    const bool inView = cell.col > 0 && cell.row > 0 && !viewport.isScrolledOff(cell.row, cell.col) &&
                        model.hasCell(cell.row, cell.col);
    placeCellButton(ui.cmdLookup, inView && ColHasLookup(cell.col), x, y);
    placeCellButton(ui.cmdButton, inView && ColHasButton(cell.col), x, y);
}

void Grid::placeCellButton(platform::Child& button, bool shown, int32_t x, int32_t y)
{
    if (!shown) {
        button.setVisible(false);
        return;
    }
    const int32_t width = model.cols().size(selection.col());
    const int32_t height = model.rows().size(selection.row());
    const int32_t w = ui.cmdLookup.Width();
    button.Move(to32(int64_t{x} + width - w + 1), to32(int64_t{y} + 3), w, height - 2);
    button.setVisible(true);
}

}  // namespace TabulaControl::detail
