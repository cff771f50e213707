#include "grid/Navigation.h"

#include "state/Errors.h"

#include <algorithm>

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// The sizer bar of a column (row) follows the pointer up to the scroll bar
// or the surface's edge; past the limit it stays where it was.
void followSizer(Grid& g, bool column, float pos, int16_t surfaceExtent)
{
    const auto& bar = column ? g.ui.scrVertical : g.ui.scrHorizontal;
    const int32_t limit = bar.Visible() ? (column ? bar.Left() : bar.Top()) - 1 : surfaceExtent;
    if (double{pos} > limit)
        return;
    if (column)
        g.ui.picSizer.setLeft(roundTo32(pos));
    else
        g.ui.picSizer.setTop(roundTo32(pos));
}

// Only the header row has sizing zones; the leftmost border within reach
// wins.
void updateSizingPointer(Grid& g, float x)
{
    const bool onBorder = g.appearance.showsColumnHeader() && g.pointer.row() == 0 && g.resizeZones.findZoneAt(x);
    g.ui.window.setMousePointer(onBorder ? PointerSizeWE : PointerDefault);
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
        g.resizeZones.startColumnDrag();
        return true;
    }
    if (pointer == PointerSizeNS) {
        g.ui.picSizer.Move(0, roundTo32(y), g.ui.window.ScaleWidth(), 2);
        g.ui.picSizer.setVisible(true);
        g.resizeZones.startRowDrag();
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
    const GridModel& model = g.model;
    const ResizeZones& zones = g.resizeZones;
    const int64_t col = int64_t{g.viewport.leftCol()} + zones.foundZone() - (g.appearance.showsRowHeader() ? 2 : 1);
    if (!zones.foundZonePlaced() || !model.hasCell(0, col))
        return;
    g.setColWidth(static_cast<int32_t>(col), std::max(0, zones.draggedWidth(g.ui.picSizer.Left())));
    g.showCellButtons();
}

}  // namespace navigation

void Grid::placeResizeZones()
{
    if (!resizeZones.enabled())
        return;
    resizeZones.place(model.cols(), appearance.showsRowHeader(), firstWalked(viewport.leftCol()), ui.window.ScaleWidth());
}

void Grid::MouseMove(int16_t, int16_t, float x, float y)
{
    const int16_t surfaceWidth = to16(ui.picGrid.ScaleWidth());
    const int16_t surfaceHeight = to16(ui.picGrid.ScaleHeight());
    pointer.setRow(rowAt(x, y));
    pointer.setCol(to16(columnAt(x, y)));
    if (resizeZones.columnDragging())
        return followSizer(*this, true, x, surfaceWidth);
    if (resizeZones.rowDragging())
        return followSizer(*this, false, y, surfaceHeight);
    if (pointer.buttonDown() && selection.selectsFreely()) {
        if (!selection.linesSelected())
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
