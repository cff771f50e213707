#include "grid/Navigation.h"

#include <algorithm>
#include <cmath>

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// Paints the edited cell without the editor box and reports the cell's
// stored text.
void finishEditAfterScroll(Grid& g)
{
    g.withLineSelectionLifted([&g] {
        g.ui.txtEdit.setVisible(false);
        redrawCurrentCell(g);
    });
    g.raiseAfterEdit();
}

// A vertical scroll closes the editor without storing what was typed.
void dropEdit(Grid& g)
{
    g.editorState.close();
    finishEditAfterScroll(g);
}

// A horizontal scroll stores the typed text unless BeforeEdit cancels.
void commitEdit(Grid& g)
{
    g.storeEditorText();
    g.editorState.close();
    finishEditAfterScroll(g);
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

// The pixels below the header row move by one row; only the uncovered strip
// is painted before the cells are redrawn, and of those only the cells the
// move did not carry whole or that were not current.
void scrollRowsOneStep(Grid& g, int16_t delta, int32_t newTop)
{
    const GridModel& model = g.model;
    g.hideSelectionMarks();
    const int32_t oldTop = g.viewport.topRow();
    g.viewport.setTopRow(newTop);
    const int32_t top = g.appearance.showsColumnHeader() ? to32(int64_t{model.rows().size(0)} + 2) : 1;
    const Rect area{1, top, g.ui.picGrid.ScaleWidth() - 1, g.ui.picGrid.ScaleHeight() - 1};
    // One pixel past the row even without grid lines; the repaint that
    // follows covers the difference, as it always has.
    const int32_t step = to32(int64_t{model.rows().size(delta < 1 ? oldTop : newTop)} + 1);
    const bool carried = carriesCurrentCells(g, oldTop, g.viewport.leftCol(), step, false);
    moveOneStep(g, area, 0, to32(int64_t{step} * delta), carried, false, [&] {
        if (delta < 1)
            g.drawBottomRows(newTop, step);
        else
            g.drawRow(newTop, top, true);
    });
}

void scrollColumnsOneStep(Grid& g, int16_t delta, int32_t newLeft)
{
    const GridModel& model = g.model;
    g.hideSelectionMarks();
    const int32_t oldLeft = g.viewport.leftCol();
    g.viewport.setLeftCol(newLeft);
    const int32_t left = g.appearance.showsRowHeader() ? to32(int64_t{model.cols().size(0)} + 2) : 1;
    const Rect area{left, 1, g.ui.picGrid.ScaleWidth() - 1, g.ui.picGrid.ScaleHeight() - 1};
    // One pixel past the column even without grid lines, as for rows.
    const int32_t step = to32(int64_t{model.cols().size(delta < 1 ? oldLeft : newLeft)} + 1);
    const bool carried = carriesCurrentCells(g, g.viewport.topRow(), oldLeft, step, true);
    moveOneStep(g, area, to32(int64_t{step} * delta), 0, carried, true, [&] {
        if (delta < 1)
            g.drawRightColumns(newLeft, step);
        else
            g.drawColumn(newLeft, left, true);
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

void afterScrollBarChange(Grid& g)
{
    if (g.ui.txtEdit.Visible())
        hideEditorBox(g);
    closeDropDown(g);
    g.events.Scroll();
}

}  // namespace

void Grid::setTopRow(int32_t value) { viewport.setTopRow(value); }

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

void Grid::applyVerticalScroll()
{
    if (editorState.isOpen())
        dropEdit(*this);
    const int32_t newTop = shownFrom(ui.scrVertical, model.rows().count());
    const int64_t delta = int64_t{viewport.topRow()} - newTop;
    if (isOneStep(delta, viewport.topRow(), newTop, model.rows().count())) {
        scrollRowsOneStep(*this, static_cast<int16_t>(delta), newTop);
    } else {
        viewport.setTopRow(newTop);
        redrawAllCells(false);
    }
    placeResizeZones();
}

void Grid::applyHorizontalScroll()
{
    if (editorState.isOpen())
        commitEdit(*this);
    const int32_t newLeft = shownFrom(ui.scrHorizontal, model.cols().count());
    const int64_t delta = int64_t{viewport.leftCol()} - newLeft;
    if (isOneStep(delta, viewport.leftCol(), newLeft, model.cols().count())) {
        scrollColumnsOneStep(*this, static_cast<int16_t>(delta), newLeft);
    } else {
        viewport.setLeftCol(newLeft);
        redrawAllCells(true);
    }
    placeResizeZones();
}

void Grid::onVerticalScroll()
{
    applyVerticalScroll();
    afterScrollBarChange(*this);
}

void Grid::onHorizontalScroll()
{
    applyHorizontalScroll();
    afterScrollBarChange(*this);
}

void Grid::onScrollBarFocus() { ui.picGrid.SetFocus(); }

}  // namespace TabulaControl::detail
