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
    const int32_t w = ui.cmdLookup.Width();
    const auto place = [&](platform::Child& button, bool shown) {
        if (shown) {
            const int32_t right = to32(int64_t{x} + model.cols().size(cell.col) - w + 1);
            button.Move(right, to32(int64_t{y} + 3), w, model.rows().size(cell.row) - 2);
        }
        button.setVisible(shown);
    };
    place(ui.cmdLookup, inView && ColHasLookup(cell.col));
    place(ui.cmdButton, inView && ColHasButton(cell.col));
}

}  // namespace TabulaControl::detail
