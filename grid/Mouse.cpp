#include "grid/Navigation.h"

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// A header cell is marked by its value: a marked header cell draws as a
// pressed button.
constexpr int16_t Marked = -1;
constexpr int16_t Unmarked = 0;

bool isMarked(const GridModel& model, int32_t row, int32_t col)
{
    return model.cells().Value(model.storeRow(row), to16(col)) != 0;
}

// A bound grid's data rows share one record of attributes, so their headers
// are never marked.
void setMark(GridModel& model, int32_t row, int32_t col, int16_t value)
{
    if (!model.bound() || row == 0)
        model.cells().setValue(model.storeRow(row), to16(col), value);
}


bool isHeader(CellIndex c) { return (c.row == 0 || c.col == 0) && c.row >= 0 && c.col >= 0; }
bool isDataCell(CellIndex c) { return c.row >= 1 && c.col >= 1; }
bool extendsSelection(const Selection& selection, int16_t button, int16_t shift)
{
    return (shift & 1) && (button & 1) && selection.allowed();
}

// Header cells sit at their fixed places: the header row at y = 1, the
// header column at x = 1. A cell that starts beyond the surface is skipped.
void drawHeaderCell(Grid& g, int32_t row, int32_t col)
{
    int32_t x = 0, y = 0;
    if (g.cellCoordinates(row, col, x, y))
        return;
    if (row == 0)
        y = 1;
    if (col == 0)
        x = 1;
    g.drawCell(row, col, x, y, g.model.cols().size(col), g.model.rows().size(row));
}

void unmarkHeaderCell(Grid& g, int32_t row, int32_t col)
{
    if (!isMarked(g.model, row, col))
        return;
    setMark(g.model, row, col, Unmarked);
    drawHeaderCell(g, row, col);
}

void unmarkHeaders(Grid& g)
{
    GridModel& model = g.model;
    if (isMarked(model, 0, 0)) {
        model.cells().setValue(0, 0, Unmarked);
        g.drawCell(0, 0, 1, 1, model.cols().size(0), model.rows().size(0));
    }
    const CellBlock& block = g.selection.block();
    for (int32_t c = block.col1; c <= block.col2; ++c)
        unmarkHeaderCell(g, 0, c);
    for (int32_t r = block.row1; r <= block.row2 && !model.bound(); ++r)
        unmarkHeaderCell(g, r, 0);
}

// The square between the two scroll bars, by the bars' positions on the
// control.
bool inDeadCorner(Grid& g, float x, float y)
{
    const auto& v = g.ui.scrVertical;
    const auto& h = g.ui.scrHorizontal;
    return v.Visible() && h.Visible() && x > v.Left() && y > h.Top();
}

void markPressedHeader(Grid& g, CellIndex pressed)
{
    GridModel& model = g.model;
    if (g.selection.selectsRows() && pressed.row >= 1)
        setMark(model, pressed.row, 0, Marked);
    if (g.selection.selectsColumns() && pressed.col >= 1)
        model.cells().setValue(0, to16(pressed.col), Marked);
}

void selectHeaderLine(Grid& g, CellIndex pressed)
{
    GridModel& model = g.model;
    if (pressed.row == 0 && pressed.col >= 1 && g.selection.selectsColumns()) {
        drawHeaderCell(g, 0, pressed.col);
        g.selection.selectWholeColumn(pressed.col, model.rows().count());
    } else if (pressed.row >= 1 && pressed.col == 0 && g.selection.selectsRows()) {
        drawHeaderCell(g, pressed.row, 0);
        g.selection.selectWholeRow(pressed.row, model.cols().count());
    }
}

void markAndDrawHeader(Grid& g, int32_t row, int32_t col)
{
    setMark(g.model, row, col, Marked);
    drawHeaderCell(g, row, col);
}

void selectAllFromCorner(Grid& g, CellIndex pressed)
{
    GridModel& model = g.model;
    if (pressed.row != 0 || pressed.col != 0 || !g.selection.selectsFreely())
        return;
    g.drawCell(0, 0, 1, 1, model.cols().size(0), model.rows().size(0));
    for (int32_t c = 1; c <= model.cols().count(); ++c)
        markAndDrawHeader(g, 0, c);
    for (int32_t r = 1; r <= model.rows().count(); ++r)
        markAndDrawHeader(g, r, 0);
    g.selection.selectAll(model.rows().count(), model.cols().count());
}

void pressHeader(Grid& g, CellIndex pressed, int16_t button, int16_t shift)
{
    if (!extendsSelection(g.selection, button, shift)) {
        if (g.selection.isBlock())
            g.hideSelectionMarks();
        g.hideFocus();
        markPressedHeader(g, pressed);
        selectHeaderLine(g, pressed);
        selectAllFromCorner(g, pressed);
    }
    g.showMarksAtAnchor();
}

// One step per press and direction toward a cell cut off by the right or
// bottom edge. The edges are the scroll bars' own positions on the control,
// taken as they are.
void scrollTowardCell(Grid& g, CellIndex pressed)
{
    GridModel& model = g.model;
    auto& h = g.ui.scrHorizontal;
    auto& v = g.ui.scrVertical;
    int32_t x = 0, y = 0;
    g.cellCoordinates(pressed.row, pressed.col, x, y);
    if (to32(int64_t{x} + model.cols().size(pressed.col)) > v.Left() && h.Visible() && h.Value() < h.Max())
        h.setValue(h.Value() + 1);
    if (to32(int64_t{y} + model.rows().size(pressed.row)) > h.Top() && v.Visible() && v.Value() < v.Max())
        v.setValue(v.Value() + 1);
}

void extendSelectionTo(Grid& g, CellIndex pressed)
{
    const GridModel& model = g.model;
    g.changeSelection([&] {
        CellIndex corner = pressed;
        if (g.selection.mode() == SelectionByRow)
            corner.col = model.cols().count();
        if (g.selection.mode() == SelectionByCol)
            corner.row = model.rows().count();
        g.selection.setCorner(corner);
    });
}

void anchorSelectionAt(Grid& g, CellIndex pressed)
{
    const GridModel& model = g.model;
    if (g.selection.isBlock())
        g.hideSelectionMarks();
    g.selection.anchorAt(pressed);
    if (!g.selection.selectsLines())
        return;
    if (g.selection.mode() == SelectionByRow)
        g.selection.selectWholeRow(pressed.row, model.cols().count());
    else if (g.selection.mode() == SelectionByCol)
        g.selection.selectWholeColumn(pressed.col, model.rows().count());
    if (g.selection.mode() == SelectionByRow || g.selection.mode() == SelectionByCol)
        g.showSelectionMarks();
}

void moveCurrentCellTo(Grid& g, CellIndex pressed)
{
    if (pressed == g.selection.current())
        return;
    if (g.editorState.isOpen())
        g.hideEditor();
    else
        g.hideFocus();
    g.selection.setCurrent(pressed);
    g.showFocus();
}

void pressCell(Grid& g, CellIndex pressed, int16_t button, int16_t shift)
{
    scrollTowardCell(g, pressed);
    if (extendsSelection(g.selection, button, shift))
        return extendSelectionTo(g, pressed);
    anchorSelectionAt(g, pressed);
    moveCurrentCellTo(g, pressed);
}

// A press on a check-mark cell toggles the current cell, which after a
// Shift-extend is not the pressed one.
void toggleCheckmarkAfterPress(Grid& g, CellIndex pressed)
{
    if (!isDataCell(pressed) || g.model.columns().mask(g.selection.col()) != checkmark)
        return;
    toggleCurrentCheckmark(g, true);
}

// One step of the bar toward a pointer before the start or at or past end
// of the visible area; returns whether the bar moved.
bool stepToward(platform::ScrollBar& bar, float pos, int32_t end)
{
    const int step = pos < 0 && bar.Value() > 1 ? -1 : pos >= end && bar.Value() < bar.Max() ? 1 : 0;
    if (step != 0)
        bar.setValue(bar.Value() + step);
    return step != 0;
}

// The visible area is the surface less what the scroll bars cover.
bool autoScrollStep(Grid& g, float x, float y)
{
    auto& h = g.ui.scrHorizontal;
    auto& v = g.ui.scrVertical;
    const auto& surface = g.ui.picGrid;
    const int32_t visibleWidth = v.Visible() ? v.Left() - surface.Left() : surface.ScaleWidth();
    const int32_t visibleHeight = h.Visible() ? h.Top() - surface.Top() : surface.ScaleHeight();
    const bool across = stepToward(h, x, visibleWidth);
    const bool down = stepToward(v, y, visibleHeight);
    return across || down;
}

// The row (column) whose span, its lower (right) grid line included, holds
// pos: 0 in the header band (also left of the first pixel when the header is
// hidden), -1 when none does.
int32_t lineAt(double pos, bool headerShown, const Axis& axis, int32_t first, int32_t line)
{
    int32_t start = headerShown ? to32(int64_t{axis.size(0)} + line + 1) : 1;
    if (pos > 0 && pos <= start)
        return 0;
    for (int32_t i = firstWalked(first); i <= axis.count(); ++i) {
        const int32_t end = to32(int64_t{start} + axis.size(i));
        if (start <= pos && pos <= end)
            return i;
        start = to32(int64_t{end} + line);
    }
    return -1;
}

}  // namespace

namespace navigation {

void extendSelectionByDrag(Grid& g, float x, float y)
{
    if (autoScrollStep(g, x, y))
        g.ui.picGrid.repeatMouseMove();
    const CellIndex pointed = {g.pointer.row(), g.pointer.col()};
    const CellBlock& block = g.selection.block();
    if ((pointed.row == block.row2 && pointed.col == block.col2) || pointed.row < 1 || pointed.col < 1)
        return;
    g.changeSelection([&] { g.selection.setCorner(pointed); });
}

}  // namespace navigation

int32_t Grid::rowAt(float, float y)
{
    viewport.takeLineWidth(appearance.showsGridLines());
    return lineAt(y, appearance.showsColumnHeader(), model.rows(), viewport.topRow(), viewport.lineWidth());
}

int32_t Grid::columnAt(float x, float)
{
    viewport.takeLineWidth(appearance.showsGridLines());
    return lineAt(x, appearance.showsRowHeader(), model.cols(), viewport.leftCol(), viewport.lineWidth());
}

void Grid::MouseDown(int16_t button, int16_t shift, float x, float y)
{
    const CellIndex old = selection.current();
    pointer.press();
    CellIndex pressed;
    if (!startSizerDrag(*this, x, y)) {
        unmarkHeaders(*this);
        if (inDeadCorner(*this, x, y))
            return;
        pressed = {rowAt(x, y), columnAt(x, y)};
        pointer.setHeaderPressed(pressed.row < 1 || pressed.col < 1);
        const bool sorts = sortOnHeaderClick && button == 1 && pressed.row == 0 && pressed.col >= 1 &&
                           pressed.col <= model.cols().count();
        if (sorts)
            sortByHeader(pressed.col);
        else if (isHeader(pressed))
            pressHeader(*this, pressed, button, shift);
        else if (isDataCell(pressed))
            pressCell(*this, pressed, button, shift);
    }
    if (hideEditorBox(*this) && editorState.isOpen())
        raiseAfterEdit();
    closeDropDown(*this);
    toggleCheckmarkAfterPress(*this, pressed);
    if (selection.current() != old)
        events.RowColChange(old.row, old.col);
}

void Grid::MouseUp(int16_t, int16_t, float, float)
{
    pointer.release();
    selection.clearLineSelection();
    ui.picSizer.setVisible(false);
    if (resizeZones.columnDragging())
        finishColumnDrag(*this);
    resizeZones.endDrag();
}

void Grid::DblClick()
{
    if (selection.row() > 0 && selection.col() > 0 && model.columns().mask(selection.col()) != checkmark && !pointer.headerPressed())
        startEdit(CharSpace);
}

void Grid::onSurfaceMousePress(const MouseArgs& e)
{
    if (e.Button == 1)
        MouseDown(e.Button, e.Shift, e.X, e.Y);
    pointer.setRow(rowAt(e.X, e.Y));
    pointer.setCol(to16(columnAt(e.X, e.Y)));
    if (!resizeZones.dragging())
        events.MouseDown(e.Button, e.Shift, e.X, e.Y);
}

void Grid::onSurfaceMouseRelease(const MouseArgs& e)
{
    MouseUp(e.Button, e.Shift, e.X, e.Y);
    events.MouseUp(e.Button, e.Shift, e.X, e.Y);
}

void Grid::onSurfaceDoubleClick()
{
    events.DblClick();
    DblClick();
}

}  // namespace TabulaControl::detail
