#include "navigation/Navigation.h"

#include "core/Errors.h"

#include <cmath>

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// Entry index (1-based) of the column sizer list.
int32_t sizerAt(const GridState& s, int32_t index)
{
    if (index < 1 || index > static_cast<int64_t>(s.mColSizers.size()))
        raise(RuntimeError::Subscript);
    return s.mColSizers[static_cast<size_t>(index - 1)];
}

// Past the limit the bar stays where it was.
void followColumnSizer(Grid& g, float x, int16_t surfaceWidth)
{
    const auto& bar = g.ui.scrVertical;
    const int32_t limit = bar.Visible() ? bar.Left() - 1 : surfaceWidth;
    if (double{x} <= limit)
        g.ui.picSizer.setLeft(roundTo32(x));
}

void followRowSizer(Grid& g, float y, int16_t surfaceHeight)
{
    const auto& bar = g.ui.scrHorizontal;
    const int32_t limit = bar.Visible() ? bar.Top() - 1 : surfaceHeight;
    if (double{y} <= limit)
        g.ui.picSizer.setTop(roundTo32(y));
}

// Only the header row has sizing zones; the leftmost border within reach
// wins.
void updateSizingPointer(Grid& g, float x)
{
    GridState& s = g.s;
    if (!s.mColHeader || s.mMouseRow != 0) {
        g.ui.window.setMousePointer(PointerDefault);
        return;
    }
    s.mSizerIndex = -1;
    for (size_t i = 0; i < s.mColSizers.size(); ++i) {
        if (std::abs(double{x} - s.mColSizers[i]) < 2) {
            s.mSizerIndex = static_cast<int32_t>(i + 1);
            break;
        }
    }
    g.ui.window.setMousePointer(s.mSizerIndex >= 1 ? PointerSizeWE : PointerDefault);
}

// Shows the host's tooltip over the grid. A failure to copy it must not
// stop the mouse move, so it is only logged.
void copyHostToolTip(Grid& g)
{
    try {
        const QString tip = g.ui.window.ToolTipText();
        if (tip != g.ui.picGrid.ToolTipText())
            g.ui.picGrid.setToolTipText(tip);
    } catch (...) {
        logContained("copying the host's tool tip", std::current_exception());
    }
}

}  // namespace

namespace navigation {

bool startSizerDrag(Grid& g, float x, float y)
{
    const int16_t pointer = g.ui.window.MousePointer();
    if (pointer == PointerSizeWE) {
        g.ui.picSizer.Move(roundTo32(x), 0, 2, g.ui.window.ScaleHeight());
        g.ui.picSizer.setVisible(true);
        g.s.mColSizing = true;
        return true;
    }
    if (pointer == PointerSizeNS) {
        g.ui.picSizer.Move(0, roundTo32(y), g.ui.window.ScaleWidth(), 2);
        g.ui.picSizer.setVisible(true);
        g.s.mRowSizing = true;
        return true;
    }
    return false;
}

// Sizer 1 with the header column shown is the header column's own border,
// so the width goes to the column left of the first visible one. A drag that
// matches no border of the current list, or no column (the pointer shape was
// the host's, or the view moved since the zone was found), sizes nothing.
void finishColumnDrag(Grid& g)
{
    GridState& s = g.s;
    const int64_t col = int64_t{s.mLeftCol} + s.mSizerIndex - (s.mRowHeader ? 2 : 1);
    if (s.mSizerIndex > static_cast<int64_t>(s.mColSizers.size()) || !hasCell(s, 0, col))
        return;
    const int32_t barLeft = g.ui.picSizer.Left();
    int32_t width = s.mSizerIndex < 2 ? barLeft : to32(int64_t{barLeft} - sizerAt(s, s.mSizerIndex - 1));
    if (width < 0)
        width = 0;
    g.setColWidth(static_cast<int32_t>(col), width);
    g.showCellButtons();
}

}  // namespace navigation

void Grid::placeResizeZones()
{
    if (!s.mAllowUserResizing)
        return;
    s.mColSizers.clear();
    s.mRowSizers.clear();
    int32_t pos = 0;
    if (s.mRowHeader) {
        pos = s.mColWidth(0);
        s.mColSizers.push_back(pos);
    }
    const int32_t innerWidth = ui.window.ScaleWidth();
    for (int32_t c = firstWalked(s.mLeftCol); c <= s.mCols; ++c) {
        pos = to32(int64_t{pos} + s.mColWidth(c) + 1);
        if (pos > innerWidth)
            return;
        s.mColSizers.push_back(pos);
    }
}

void Grid::MouseMove(int16_t, int16_t, float x, float y)
{
    const int16_t surfaceWidth = to16(ui.picGrid.ScaleWidth());
    const int16_t surfaceHeight = to16(ui.picGrid.ScaleHeight());
    s.mMouseRow = to16(rowAt(x, y));
    s.mMouseCol = to16(columnAt(x, y));
    if (s.mColSizing)
        return followColumnSizer(*this, x, surfaceWidth);
    if (s.mRowSizing)
        return followRowSizer(*this, y, surfaceHeight);
    if (s.mMouseDown && s.mAllowSelection && s.mSelectionMode == SelectionFree) {
        if (!s.mRowsSelected && !s.mColumnsSelected)
            extendSelectionByDrag(*this, x, y);
        return;
    }
    updateSizingPointer(*this, x);
}

void Grid::onSurfaceMouseMove(const MouseArgs& e)
{
    MouseMove(e.Button, e.Shift, e.X, e.Y);
    copyHostToolTip(*this);
    events.MouseMove(e.Button, e.Shift, e.X, e.Y);
}

}  // namespace TabulaControl::detail
