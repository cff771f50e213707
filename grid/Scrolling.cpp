#include "grid/Navigation.h"

#include <algorithm>
#include <cmath>

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// Closes an open editor before a scroll bar's move: a vertical scroll drops
// what was typed, a horizontal one stores it unless BeforeEdit cancels. The
// edited cell is painted without the editor box and its stored text reported.
void closeEditorForScroll(Grid& g, bool rows)
{
    if (!g.editorState.isOpen())
        return;
    if (!rows)
        g.storeEditorText();
    g.editorState.close();
    g.withLineSelectionLifted([&g] {
        g.ui.txtEdit.setVisible(false);
        redrawCurrentCell(g);
    });
    g.raiseAfterEdit();
}

// Moves the pixels of area by (dx, dy), draws the strip that came into view,
// then passes over the cells again, the header row too when full.
void moveOneStep(Grid& g, Rect area, int32_t dx, int32_t dy, bool carried, bool full,
                 const std::function<void()>& drawStrip)
{
    g.scrollPixels(dx, dy, area);
    g.inPass(carried, [&] {
        drawStrip();
        g.redrawAllCells(full);
    });
    g.flipSelectionAfterScrollStep();
}

// A step puts every cell it moves whole on the place where that cell is
// drawn afresh when a grid line separates the lines (the step is a line and
// one pixel), and keeps a text's rasterisation when it moves by whole pairs
// of device pixels. The cells it carries then need no drawing if they were
// current before it.
bool carriesCurrentCells(const Grid& g, int32_t top, int32_t left, int32_t step, bool headerRow)
{
    const double deviceStep = step * g.surface.devicePixelRatio();
    return g.viewport.lineWidth() == 1 && std::fmod(deviceStep, 2.0) == 0 && g.cellsCurrent(top, left, headerRow);
}

int32_t firstShown(const Grid& g, bool rows) { return rows ? g.viewport.topRow() : g.viewport.leftCol(); }

void setFirstShown(Grid& g, bool rows, int32_t first)
{
    if (rows)
        g.viewport.setTopRow(first);
    else
        g.viewport.setLeftCol(first);
}

// The pixels past the header row (column) move by one row (column); only the
// uncovered strip is painted before the cells are redrawn, and of those only
// the cells the move did not carry whole or that were not current. The step
// is one pixel past the line even without grid lines; the repaint that
// follows covers the difference, as it always has.
void scrollOneStep(Grid& g, bool rows, int16_t delta, int32_t first)
{
    const Axis& axis = rows ? g.model.rows() : g.model.cols();
    g.hideSelectionMarks();
    const int32_t old = firstShown(g, rows);
    setFirstShown(g, rows, first);
    const bool header = rows ? g.appearance.showsColumnHeader() : g.appearance.showsRowHeader();
    const int32_t start = header ? to32(int64_t{axis.size(0)} + 2) : 1;
    const int32_t right = g.ui.picGrid.ScaleWidth() - 1, bottom = g.ui.picGrid.ScaleHeight() - 1;
    const Rect area = rows ? Rect{1, start, right, bottom} : Rect{start, 1, right, bottom};
    const int32_t step = to32(int64_t{axis.size(delta < 1 ? old : first)} + 1);
    const bool carried = rows ? carriesCurrentCells(g, old, g.viewport.leftCol(), step, false)
                              : carriesCurrentCells(g, g.viewport.topRow(), old, step, true);
    const int32_t moved = to32(int64_t{step} * delta);
    moveOneStep(g, area, rows ? 0 : moved, rows ? moved : 0, carried, !rows, [&] {
        if (delta >= 1)
            rows ? g.drawRow(first, start) : g.drawColumn(first, start);
        else
            rows ? g.drawBottomRows(first, step) : g.drawRightColumns(first, step);
    });
}

// Moving the pixels needs both the row (column) that leaves and the one that
// enters to exist; a stale first position takes the full repaint instead.
// The first row (column) shown is the bar's value. A bar whose range a
// failed call left longer than the grid shows no row past the last.
int32_t shownFrom(const platform::ScrollBar& bar, int32_t count)
{
    return std::min<int32_t>(bar.Value(), std::max(count, 1));
}

bool isOneStep(int64_t delta, int32_t from, int32_t to, int32_t count)
{
    const auto exists = [count](int32_t i) { return i >= 0 && i <= count; };
    return (delta == 1 || delta == -1) && exists(from) && exists(to);
}

// Shows the rows (columns) from the bar's value on.
void followScrollBar(Grid& g, bool rows)
{
    closeEditorForScroll(g, rows);
    const int32_t count = rows ? g.model.rows().count() : g.model.cols().count();
    const int32_t old = firstShown(g, rows);
    const int32_t first = shownFrom(rows ? g.ui.scrVertical : g.ui.scrHorizontal, count);
    const int64_t delta = int64_t{old} - first;
    if (isOneStep(delta, old, first, count)) {
        scrollOneStep(g, rows, static_cast<int16_t>(delta), first);
    } else {
        setFirstShown(g, rows, first);
        g.redrawAllCells(!rows);
    }
    g.placeResizeZones();
    hideEditorBox(g);
    closeDropDown(g);
    g.events.Scroll();
}

}  // namespace

void Grid::setLeftCol(int32_t value)
{
    const int32_t v = std::min<int32_t>(value, ui.scrHorizontal.Max());
    hideFocus();
    viewport.setLeftCol(v);
    selection.setCol(v);
    redrawAllCells(true);
    ui.scrHorizontal.setValue(to16(v));
    showCellButtons();
}

void Grid::onVerticalScroll() { followScrollBar(*this, true); }

void Grid::onHorizontalScroll() { followScrollBar(*this, false); }

}  // namespace TabulaControl::detail
