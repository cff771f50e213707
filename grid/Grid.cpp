#include "grid/Grid.h"

namespace TabulaControl::detail {

Grid::Grid(Tabula& control, TabulaEvents& events)
    : ui(&control), surface(ui.surface), marks(ui.surface), events(control, events), control(control)
{
}

void Grid::notifyPropertyChanged(const char* name)
{
    if (onPropertyChanged)
        onPropertyChanged(QLatin1String(name));
}

void Grid::redrawIfAuto()
{
    if (autoRedraw_)
        Refresh();
}

void Grid::initialize()
{
    model.cells() = CellArray();
    resizeZones.clear();
    viewport.scrollHome();
    selection.startAtFirstCell();
}

void Grid::applyDefaultProperties()
{
    resizeZones.setEnabled(true);
    model.setFormatString(QString());
    editorState.restoreDefaultSettings();
    dropDownSettings.restoreDefaults();
    autoRedraw_ = true;

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
    model.release();
    resizeZones.clear();
}

}  // namespace TabulaControl::detail
