// Where the grid places its marks, and how each change of the current cell
// or the selection moves them.

#include "grid/GridPainter.h"

#include <algorithm>

namespace TabulaControl::detail {

using render::advance;

namespace {

constexpr int32_t GridLineReach = 2;

// One axis of the selection block: start pixel of the smaller index and
// end pixel (exclusive) of the larger one.
struct Span {
    int32_t start;
    int32_t end;
};

Span blockSpan(int32_t index1, int32_t pos1, int32_t index2, int32_t pos2, const Axis& axis)
{
    if (index1 <= index2)
        return {pos1, advance(pos2, axis.size(index2))};
    return {pos2, advance(pos1, axis.size(index1))};
}

}  // namespace

// Every flip of a focus rectangle also places the hidden editor box over
// that cell, which is where opening the editor finds it: inside the cell's
// left and top edges, with the column's edit width.
void Grid::flipFocusMark()
{
    const int32_t row = selection.row(), col = selection.col();
    if (model.rows().count() < 1 || model.cols().count() < 1 || viewport.isScrolledOff(row, col) || !model.hasCell(row, col))
        return;
    int32_t x = 0, y = 0;
    const bool beyond = cellCoordinates(row, col, x, y);
    const int32_t width = model.cols().size(col);
    const int32_t height = model.rows().size(row);
    if (!beyond)
        marks.toggleFocusRect(render::MakeRect(x, y, width, height));
    const layout::EditorBox box = layout::editorBox(x, y, width, height);
    ui.txtEdit.Move(box.left, box.top, box.width, box.height);
    ui.txtEdit.setMaxLength(model.columns().editWidth(col));
}

// The square between the scroll bars is painted again over every flip.
void Grid::flipSelectionBlock(int32_t row1, int32_t col1, int32_t row2, int32_t col2)
{
    if (model.rows().count() < 1 || model.cols().count() < 1 || !model.hasCell(row1, col1) || !model.hasCell(row2, col2))
        return;
    if (row1 < viewport.topRow() && row2 < viewport.topRow())
        return;
    int32_t x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    cellCoordinates(row1, col1, x1, y1);
    cellCoordinates(row2, col2, x2, y2);
    const Span across = blockSpan(col1, x1, col2, x2, model.cols());
    const Span down = blockSpan(row1, y1, row2, y2, model.rows());
    const int32_t reach = appearance.showsGridLines() ? GridLineReach : 0;
    // A block lying wholly left of the scrolled columns has no visible cells.
    if (std::max(col1, col2) >= viewport.leftCol())
        marks.toggleInversion({across.start, down.start, advance(across.end, reach), advance(down.end, reach)});
    const render::SurfaceSize size = render::surfaceSizeOf(*this);
    if (render::cornerSquareNeeded(*this))
        render::paintCornerSquare(canvas(), size);
}

void Grid::flipSelectionBlock()
{
    const navigation::CellBlock block = selection.block();
    flipSelectionBlock(block.row1, block.col1, block.row2, block.col2);
}

// The anchor's own flip shows it in normal colours inside the block.
void Grid::flipSelectionMarks()
{
    flipSelectionBlock();
    const navigation::CellBlock block = selection.block();
    flipSelectionBlock(block.row1, block.col1, block.row1, block.col1);
}

// A scroll inside moveCurrentCell repaints the focus rectangle, which the
// show after it then takes off again.
void Grid::moveFocus(const std::function<void()>& moveCurrentCell)
{
    hideFocus();
    moveCurrentCell();
    showFocus();
}

void Grid::changeSelection(const std::function<void()>& change)
{
    flipSelectionBlock();
    change();
    flipSelectionBlock();
}

// In free mode the block stays on, so what body paints takes it away.
void Grid::withLineSelectionLifted(const std::function<void()>& body)
{
    const bool lines = selection.selectsLines();
    if (lines)
        flipSelectionBlock();
    body();
    if (lines)
        flipSelectionBlock();
}

void Grid::fitSelectionToMode()
{
    if (selection.selectsRows())
        changeSelection([this] { selection.selectCurrentRow(model.cols().count()); });
    else if (selection.selectsColumns())
        changeSelection([this] { selection.selectCurrentColumn(model.rows().count()); });
}

void Grid::showMarksAfterPaint()
{
    showSelectionMarks();
    int32_t x = 0, y = 0;
    if (!cellCoordinates(selection.row(), selection.col(), x, y))
        showFocus();
}

// The by-row mode takes its block off and moves it to the current row; the
// by-column mode reshapes its block without taking it off; then every mode
// flips the marks its repaint has just drawn.
void Grid::flipSelectionAfterScrollStep()
{
    if (selection.selectsRows()) {
        flipSelectionBlock();
        selection.selectCurrentRow(model.cols().count());
    } else if (selection.selectsColumns()) {
        selection.selectCurrentColumn(model.rows().count());
    }
    flipSelectionMarks();
}

// A press on a header shows the selection marks and the focus at the
// anchor cell; after a Shift press, which took nothing off, it flips them
// off instead.
void Grid::showMarksAtAnchor()
{
    showSelectionMarks();
    selection.moveToAnchor();
    showFocus();
}

}  // namespace TabulaControl::detail
