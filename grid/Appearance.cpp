#include "grid/Grid.h"

namespace TabulaControl::detail {

namespace {

// Stores a setting and repaints; a saved setting is also reported to the
// host under its name.
template <class Setter, class V>
void restyle(Grid& grid, Setter set, V&& value, const char* savedAs)
{
    (grid.appearance.*set)(std::forward<V>(value));
    grid.Refresh();
    if (savedAs)
        grid.notifyPropertyChanged(savedAs);
}

FontRef requireFont(FontRef font)
{
    if (!font)
        raise(RuntimeError::InvalidCall);
    return font;
}

using render::Appearance;

}  // namespace

void Grid::setColHeader(bool value) { restyle(*this, &Appearance::setShowsColumnHeader, value, "ColHeader"); }

void Grid::setRowHeader(bool value) { restyle(*this, &Appearance::setShowsRowHeader, value, "RowHeader"); }

void Grid::setShowGrid(bool value) { restyle(*this, &Appearance::setShowsGridLines, value, nullptr); }

void Grid::setGridSolid(bool value) { restyle(*this, &Appearance::setGridLinesSolid, value, nullptr); }

void Grid::setGridLineColor(OleColor value) { restyle(*this, &Appearance::setGridLineColor, value, "GridLineColor"); }

void Grid::setBorderStyle(int32_t value)
{
    if (value == appearance.borderStyle())
        return;
    appearance.setBorderStyle(to16(value));
    ui.window.setBackColor(appearance.surroundColor());
    applyBorderStyle();
    notifyPropertyChanged("BorderStyle");
}

void Grid::setMousePointer(int16_t value)
{
    ui.window.setMousePointer(value);
    notifyPropertyChanged("MousePointer");
}

void Grid::setUseBackColorAlt(bool value)
{
    restyle(*this, &Appearance::setAlternatesRowColors, value, "UseBackColorAlt");
}

void Grid::setBackColor(OleColor value)
{
    SharedBackColor = value;
    model.setRowCount(model.rows().count());
    Refresh();
    notifyPropertyChanged("BackColor");
}

void Grid::setBackColorAlt(OleColor value) { restyle(*this, &Appearance::setAlternateRowColor, value, "BackColorAlt"); }

void Grid::setBackColorFixed(OleColor value)
{
    restyle(*this, &Appearance::setHeaderBackColor, value, "BackColorFixed");
}

// The new text colour shows at the next repaint.
void Grid::setForeColor(OleColor value)
{
    SharedForeColor = value;
    notifyPropertyChanged("ForeColor");
}

void Grid::setForeColorFixed(OleColor value)
{
    restyle(*this, &Appearance::setHeaderForeColor, value, "ForeColorFixed");
}

void Grid::setFixedStyle(int32_t value)
{
    if (value != appearance.headerStyle())
        appearance.setHeaderStyle(to16(value));
    Refresh();
    notifyPropertyChanged("FixedStyle");
}

void Grid::setFont(FontRef value) { restyle(*this, &Appearance::setFont, requireFont(std::move(value)), "Font"); }

void Grid::setFontEdit(FontRef value)
{
    restyle(*this, &Appearance::setEditorFont, requireFont(std::move(value)), "FontEdit");
}

void Grid::setFontFixed(FontRef value)
{
    restyle(*this, &Appearance::setHeaderFont, requireFont(std::move(value)), "FontFixed");
}

void Grid::setBackColorBkg(OleColor value)
{
    appearance.setBackgroundColor(value);
    ui.window.setBackColor(appearance.surroundColor());
    Refresh();
    notifyPropertyChanged("BackColorBkg");
}

}  // namespace TabulaControl::detail
