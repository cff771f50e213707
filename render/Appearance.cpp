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

FontRef requireFont(FontRef font)
{
    if (!font)
        raise(RuntimeError::InvalidCall);
    return font;
}

}  // namespace

void Grid::setColHeader(bool value)
{
    s.mColHeader = value;
    Refresh();
    PropertyChanged("ColHeader");
}

void Grid::setRowHeader(bool value)
{
    s.mRowHeader = value;
    Refresh();
    PropertyChanged("RowHeader");
}

void Grid::setShowGrid(bool value)
{
    s.mShowGrid = value;
    Refresh();
}

void Grid::setGridSolid(bool value)
{
    s.mGridSolid = value;
    Refresh();
}

void Grid::setGridLineColor(OleColor value)
{
    s.mGridLineColor = value;
    Refresh();
    PropertyChanged("GridLineColor");
}

void Grid::setBorderStyle(int32_t value)
{
    if (value == s.mBorderStyle)
        return;
    s.mBorderStyle = to16(value);
    ui.window.setBackColor(surroundColour(s.mBorderStyle, s.mBackColorBkg));
    UserControl_Paint();
    PropertyChanged("BorderStyle");
}

void Grid::setMousePointer(int16_t value)
{
    ui.window.setMousePointer(value);
    PropertyChanged("MousePointer");
}

void Grid::setUseBackColorAlt(bool value)
{
    s.mUseBackColorAlt = value;
    Refresh();
    PropertyChanged("UseBackColorAlt");
}

void Grid::setBackColor(OleColor value)
{
    SharedBackColor = value;
    InitializeRows(s.mRows);
    Refresh();
    PropertyChanged("BackColor");
}

void Grid::setBackColorAlt(OleColor value)
{
    s.mBackColorAlt = value;
    Refresh();
    PropertyChanged("BackColorAlt");
}

void Grid::setBackColorFixed(OleColor value)
{
    s.mBackColorFixed = value;
    Refresh();
    PropertyChanged("BackColorFixed");
}

// The new text colour shows at the next repaint.
void Grid::setForeColor(OleColor value)
{
    SharedForeColor = value;
    PropertyChanged("ForeColor");
}

void Grid::setForeColorFixed(OleColor value)
{
    s.mForeColorFixed = value;
    Refresh();
    PropertyChanged("ForeColorFixed");
}

void Grid::setFixedStyle(int32_t value)
{
    if (value != s.mFixedStyle)
        s.mFixedStyle = to16(value);
    Refresh();
    PropertyChanged("FixedStyle");
}

// The fonts are kept by reference: changes made through the object later
// show at the next repaint.
void Grid::setFont(FontRef value)
{
    s.mFont = requireFont(std::move(value));
    Refresh();
    PropertyChanged("Font");
}

void Grid::setFontEdit(FontRef value)
{
    s.mFontEdit = requireFont(std::move(value));
    Refresh();
    PropertyChanged("FontEdit");
}

void Grid::setFontFixed(FontRef value)
{
    s.mFontFixed = requireFont(std::move(value));
    Refresh();
    PropertyChanged("FontFixed");
}

void Grid::setBackColorBkg(OleColor value)
{
    s.mBackColorBkg = value;
    ui.window.setBackColor(surroundColour(s.mBorderStyle, value));
    Refresh();
    PropertyChanged("BackColorBkg");
}

}  // namespace TabulaControl::detail
