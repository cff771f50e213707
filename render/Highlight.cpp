#include "render/GridPainter.h"

#include <algorithm>

namespace TabulaControl::detail::render {

namespace {

constexpr int32_t EditorLeftInset = 3;
constexpr int32_t EditorTopInset = 2;
constexpr int32_t GridLineReach = 2;

// One axis of the selection block: start pixel of the smaller index and
// end pixel (exclusive) of the larger one.
struct Span {
    int32_t start;
    int32_t end;
};

Span blockSpan(int32_t index1, int32_t pos1, int32_t index2, int32_t pos2, const VbArray<int16_t>& sizes)
{
    if (index1 <= index2)
        return {pos1, advance(pos2, sizes(index2))};
    return {pos2, advance(pos1, sizes(index1))};
}

}  // namespace

}  // namespace TabulaControl::detail::render

namespace TabulaControl::detail {

using render::advance;
using render::argOr;

void Grid::HilightCell(int32_t row, int32_t col)
{
    row = argOr(row, s.mRow);
    col = argOr(col, s.mCol);
    if (s.mRows < 1 || s.mCols < 1 || row < s.mTopRow || col < s.mLeftCol || !hasCell(s, row, col))
        return;
    int32_t x = 0, y = 0;
    const bool beyond = GetCellCoordinates(row, col, x, y);
    const int32_t width = s.mColWidth(col);
    const int32_t height = s.mRowHeight(row);
    if (!beyond)
        marks.toggleFocusRect(render::MakeRect(x, y, width, height));
    const int32_t editorWidth = width < render::EditorLeftInset ? 0 : width - render::EditorLeftInset;
    ui.txtEdit.Move(advance(x, render::EditorLeftInset), advance(y, render::EditorTopInset), editorWidth, height);
    ui.txtEdit.setMaxLength(s.mColEditWidth(col));
    if (!surface.discarding())
        ui.picGrid.Refresh();
}

void Grid::HilightSelection(int32_t row1, int32_t col1, int32_t row2, int32_t col2)
{
    row1 = argOr(row1, s.mRow1);
    col1 = argOr(col1, s.mCol1);
    row2 = argOr(row2, s.mRow2);
    col2 = argOr(col2, s.mCol2);
    if (s.mRows < 1 || s.mCols < 1 || !hasCell(s, row1, col1) || !hasCell(s, row2, col2))
        return;
    if (row1 < s.mTopRow && row2 < s.mTopRow)
        return;
    int32_t x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    GetCellCoordinates(row1, col1, x1, y1);
    GetCellCoordinates(row2, col2, x2, y2);
    const render::Span across = render::blockSpan(col1, x1, col2, x2, s.mColWidth);
    const render::Span down = render::blockSpan(row1, y1, row2, y2, s.mRowHeight);
    const int32_t reach = s.mShowGrid ? render::GridLineReach : 0;
    // A block lying wholly left of the scrolled columns has no visible cells.
    if (std::max(col1, col2) >= s.mLeftCol)
        marks.toggleInversion({across.start, down.start, advance(across.end, reach), advance(down.end, reach)});
    const render::SurfaceSize size = render::surfaceSizeOf(*this);
    if (render::cornerSquareNeeded(*this))
        render::paintCornerSquare(canvas(), size);
    if (!surface.discarding())
        ui.picGrid.Refresh();
}

void Grid::CheckHighlight()
{
    if (!s.mAllowSelection)
        return;
    if (s.mSelectionMode == SelectionByRow) {
        HilightSelection();
        selectWholeRow(s, s.mRow);
        HilightSelection();
        return;
    }
    if (s.mSelectionMode == SelectionByCol) {
        HilightSelection();
        selectWholeColumn(s, s.mCol);
        HilightSelection();
    }
}

}  // namespace TabulaControl::detail
