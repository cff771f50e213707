#include "core/Grid.h"

namespace TabulaControl::detail {

namespace {

// The area around the drawing surface is light grey under any border; only
// a borderless control shows the background colour there.
constexpr OleColor BorderedBackColor = 0xC0C0C0;

OleColor surroundColour(int16_t borderStyle, OleColor backColorBkg)
{
    return borderStyle != 0 ? BorderedBackColor : backColorBkg;
}

// Stores a setting and repaints; a saved setting is also reported to the
// host under its name.
template <class T, class V>
void restyle(Grid& grid, T& field, V&& value, const char* savedAs)
{
    field = std::forward<V>(value);
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

}  // namespace

void Grid::setColHeader(bool value) { restyle(*this, s.mColHeader, value, "ColHeader"); }

void Grid::setRowHeader(bool value) { restyle(*this, s.mRowHeader, value, "RowHeader"); }

void Grid::setShowGrid(bool value) { restyle(*this, s.mShowGrid, value, nullptr); }

void Grid::setGridSolid(bool value) { restyle(*this, s.mGridSolid, value, nullptr); }

void Grid::setGridLineColor(OleColor value) { restyle(*this, s.mGridLineColor, value, "GridLineColor"); }

void Grid::setBorderStyle(int32_t value)
{
    if (value == s.mBorderStyle)
        return;
    s.mBorderStyle = to16(value);
    ui.window.setBackColor(surroundColour(s.mBorderStyle, s.mBackColorBkg));
    applyBorderStyle();
    notifyPropertyChanged("BorderStyle");
}

void Grid::setMousePointer(int16_t value)
{
    ui.window.setMousePointer(value);
    notifyPropertyChanged("MousePointer");
}

void Grid::setUseBackColorAlt(bool value) { restyle(*this, s.mUseBackColorAlt, value, "UseBackColorAlt"); }

void Grid::setBackColor(OleColor value)
{
    SharedBackColor = value;
    initializeRows(s.rows.count());
    Refresh();
    notifyPropertyChanged("BackColor");
}

void Grid::setBackColorAlt(OleColor value) { restyle(*this, s.mBackColorAlt, value, "BackColorAlt"); }

void Grid::setBackColorFixed(OleColor value) { restyle(*this, s.mBackColorFixed, value, "BackColorFixed"); }

// The new text colour shows at the next repaint.
void Grid::setForeColor(OleColor value)
{
    SharedForeColor = value;
    notifyPropertyChanged("ForeColor");
}

void Grid::setForeColorFixed(OleColor value) { restyle(*this, s.mForeColorFixed, value, "ForeColorFixed"); }

void Grid::setFixedStyle(int32_t value)
{
    if (value != s.mFixedStyle)
        s.mFixedStyle = to16(value);
    Refresh();
    notifyPropertyChanged("FixedStyle");
}

// The fonts are kept by reference: changes made through the object later
// show at the next repaint.
void Grid::setFont(FontRef value) { restyle(*this, s.mFont, requireFont(std::move(value)), "Font"); }

void Grid::setFontEdit(FontRef value) { restyle(*this, s.mFontEdit, requireFont(std::move(value)), "FontEdit"); }

void Grid::setFontFixed(FontRef value) { restyle(*this, s.mFontFixed, requireFont(std::move(value)), "FontFixed"); }

void Grid::setBackColorBkg(OleColor value)
{
    s.mBackColorBkg = value;
    ui.window.setBackColor(surroundColour(s.mBorderStyle, value));
    Refresh();
    notifyPropertyChanged("BackColorBkg");
}

}  // namespace TabulaControl::detail
