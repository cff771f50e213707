#include "render/CellPainter.h"

#include "core/Grid.h"
#include "render/Geometry.h"

namespace TabulaControl::detail::render {

namespace {

using platform::Surface;

constexpr int16_t Pressed = -1;
constexpr int16_t Raised = 0;
constexpr int32_t TextMargin = 2;
constexpr int32_t CheckBoxSize = 15;
constexpr unsigned BaseTextFlags = platform::TextSingleLine | platform::TextNoPrefix;

bool isFixed(int32_t row, int32_t col) { return row == 0 || col == 0; }

bool isCheckBoxCell(const GridState& s, int32_t row, int32_t col)
{
    return s.mColMask(col) == checkmark && !isFixed(row, col);
}

// Negative and system colours of a cell both mean "not set".
bool cellColourSet(int32_t colour) { return colour >= 0; }

OleColor defaultBackColour(const GridState& s, int32_t row)
{
    return s.mUseBackColorAlt && row % 2 == 1 ? s.mBackColorAlt : SharedBackColor;
}

void paintButtonCell(const GridState& s, Surface& surface, int32_t row, int32_t col, int32_t x, int32_t y,
                     int32_t width, int32_t height)
{
    if (!isFixed(row, col) || s.mFixedStyle != 0) {
        const int16_t value = s.mCells.Value(to16(row), to16(col));
        DrawButton(surface, x, y, advance(width, 1), advance(height, 1), value);
        return;
    }
    if (s.mShowGrid)
        DrawBox(surface, advance(x, -1), advance(y, -1), advance(width, 2), advance(height, 2), s.mGridLineColor);
    DrawBox(surface, x, y, width, height, s.mBackColorFixed);
}

void paintBackground(const GridState& s, Surface& surface, const CellFormat& format, int32_t row, int32_t col,
                     int32_t x, int32_t y, int32_t width, int32_t height)
{
    if (s.mCells.Style(to16(row), to16(col)) == 1) {
        paintButtonCell(s, surface, row, col, x, y, width, height);
        return;
    }
    const OleColor colour =
        cellColourSet(format.BackColor) ? static_cast<OleColor>(format.BackColor) : defaultBackColour(s, row);
    DrawBox(surface, x, y, width, height, colour);
}

void paintCheckBox(Surface& surface, const QString& text, int32_t x, int32_t y, int32_t width)
{
    const int32_t left = roundTo32(static_cast<double>(x) + static_cast<double>(width) / 2 - 7);
    surface.checkBox(MakeRect(left, advance(y, 1), CheckBoxSize, CheckBoxSize), text == QLatin1String("1"));
}

// Sets each attribute in turn; an attribute that already has the value is
// left alone, which leaves the surface's font exactly as setting it would.
void applyFont(Surface& surface, const QString& name, double size, bool bold, bool italic, bool underline,
               bool strikethrough)
{
    const QFont& current = surface.font();
    if (current.family() != name)
        surface.setFontName(name);
    if (current.pointSizeF() != size)
        surface.setFontSize(size);
    if (current.bold() != bold)
        surface.setFontBold(bold);
    if (current.italic() != italic)
        surface.setFontItalic(italic);
    if (current.underline() != underline)
        surface.setFontUnderline(underline);
    if (current.strikeOut() != strikethrough)
        surface.setFontStrikethrough(strikethrough);
}

void applyGridFont(Surface& surface, const FontRef& font)
{
    if (!font)
        raise(RuntimeError::InvalidCall);
    applyFont(surface, font->Name, font->Size, font->Bold, font->Italic, font->Underline, font->Strikethrough);
}

void applyTextStyle(const GridState& s, Surface& surface, const CellFormat& format, int32_t row, int32_t col)
{
    if (isFixed(row, col)) {
        surface.setTextColor(s.mForeColorFixed);
        applyGridFont(surface, s.mFontFixed);
    } else {
        surface.setTextColor(cellColourSet(format.ForeColor) ? static_cast<OleColor>(format.ForeColor)
                                                             : SharedForeColor);
        applyGridFont(surface, s.mFont);
    }
    if (format.FontName.isEmpty())
        return;
    applyFont(surface, format.FontName, format.FontSize, format.FontBold, format.FontItalic, format.FontUnderline,
              format.FontStrikethru);
}

bool showsText(const GridState& s, const QString& text, int32_t row, int32_t col)
{
    return isFixed(row, col) || (!text.isEmpty() && s.mColMask(col) != checkmark);
}

unsigned textFlags(const GridState& s, int32_t row, int32_t col)
{
    unsigned flags = BaseTextFlags;
    switch (s.mColAlign(col)) {
    case 1: flags |= platform::TextCenter; break;
    case 2: flags |= platform::TextRight; break;
    default: break;
    }
    switch (s.mCells.TextAlignVertical(to16(row), to16(col))) {
    case 1: flags |= platform::TextVCenter; break;
    case 2: flags |= platform::TextBottom; break;
    default: break;
    }
    return flags;
}

}  // namespace

void DrawBox(Surface& surface, int32_t x, int32_t y, int32_t width, int32_t height, OleColor colour)
{
    surface.fill(MakeRect(x, y, width, height), colour);
}

void DrawLine(Surface& surface, platform::Rect r, OleColor colour)
{
    surface.setPenColor(colour);
    surface.line(r.Left, r.Top, r.Right, r.Bottom);
}

void DrawRect(Surface& surface, int32_t left, int32_t top, int32_t right, int32_t bottom, OleColor colour)
{
    surface.setPenColor(colour);
    surface.line(left, top, right, top);
    surface.line(left, bottom, right, bottom);
    surface.line(left, top, left, bottom);
    surface.line(right, top, right, bottom);
}

void DrawButton(Surface& surface, int32_t x, int32_t y, int32_t width, int32_t height, int16_t pressed)
{
    DrawBox(surface, x, y, width, height, ButtonFace);
    const platform::Rect r = MakeRect(x, y, width, height);
    if (pressed == Pressed) {
        surface.edge(r, platform::SunkenInner, platform::SideLeft | platform::SideTop);
        surface.edge(r, platform::SunkenOuter, platform::SideRight | platform::SideBottom);
    } else if (pressed == Raised) {
        surface.edge(r, platform::RaisedInner, platform::SideLeft | platform::SideTop);
        surface.edge(r, platform::RaisedOuter, platform::SideRight | platform::SideBottom);
    }
}

void DrawCell(const GridState& s, Surface& surface, int32_t row, int32_t col, int32_t x, int32_t y, int32_t width,
              int32_t height)
{
    const CellFormat& format = s.mCells.Format(to16(row), to16(col));
    paintBackground(s, surface, format, row, col, x, y, width, height);
    const QString text = s.mCells.Text(to16(row), to16(col));
    if (isCheckBoxCell(s, row, col))
        paintCheckBox(surface, text, x, y, width);
    applyTextStyle(s, surface, format, row, col);
    if (!showsText(s, text, row, col))
        return;
    const platform::Rect textRect{advance(x, TextMargin), y, advance(x, width, -TextMargin), advance(y, height)};
    surface.text(text, textRect, textFlags(s, row, col));
}

}  // namespace TabulaControl::detail::render

namespace TabulaControl::detail {

void Grid::DrawCell(int32_t row, int32_t col, int32_t x, int32_t y, int32_t width, int32_t height)
{
    render::DrawCell(s, surface, row, col, x, y, width, height);
}

}  // namespace TabulaControl::detail
