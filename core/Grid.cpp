#include "core/Grid.h"

namespace TabulaControl::detail {

Grid::Grid(QWidget& control, TabulaEvents& events)
    : ui(&control), surface(ui.surface), marks(ui.surface), events(events), control(control)
{
}

void Grid::notifyPropertyChanged(const char* name)
{
    if (onPropertyChanged)
        onPropertyChanged(QLatin1String(name));
}

void Grid::redrawIfAuto()
{
    if (s.mAutoRedraw)
        Refresh();
}

void Grid::initialize()
{
    s.mCells = CellArray();
    resizeZones.clear();
    viewport.scrollHome();
    selection.startAtFirstCell();
}

void Grid::applyDefaultProperties()
{
    resizeZones.setEnabled(true);
    s.mFormatString.clear();
    editorState.restoreDefaultSettings();
    dropDownSettings.restoreDefaults();
    s.mAutoRedraw = true;

    SharedBackColor = 0xFFFFFF;
    SharedForeColor = 0x80000012;
    selection.restoreDefaultSettings();

    appearance.restoreDefaults(*ui.window.AmbientFont());

    setCols(5);
    setRows(1);

    viewport.scrollHome();
    selection.startAtFirstCell();
}

void Grid::fitToControl()
{
    const int32_t w = ui.window.ScaleWidth();
    const int32_t h = ui.window.ScaleHeight();
    ui.scrHorizontal.Move(2, h - 21, w - 23, 18);
    ui.scrVertical.Move(w - 21, 2, 18, h - 23);
    ui.picGrid.Move(2, 2, w - 5, h - 5);
    surface.setDevicePixelRatio(control.devicePixelRatioF());
    const int oldWidth = surface.width(), oldHeight = surface.height();
    surface.resize(std::max(0, w - 5), std::max(0, h - 5));
    marks.resized(oldWidth, oldHeight);
    Refresh();
    applyBorderStyle();
    events.Resize();
}

void Grid::shutDown()
{
    s.mCells = CellArray();
    resizeZones.clear();
    s.rows.clearSizes();
    s.cols.clearSizes();
    s.columns.clearEditAllowed();
}

}  // namespace TabulaControl::detail
