#include "render/CellPainter.h"

#include "layout/Geometry.h"

namespace TabulaControl::detail::render {

namespace {

using platform::Surface;

constexpr int16_t Pressed = -1;
constexpr int16_t Raised = 0;
constexpr int32_t TextMargin = 2;
constexpr int32_t CheckBoxSize = 15;
constexpr unsigned BaseTextFlags = platform::TextSingleLine | platform::TextNoPrefix;

bool isFixed(int32_t row, int32_t col) { return row == 0 || col == 0; }

bool isCheckBoxCell(const GridModel& model, int32_t row, int32_t col)
{
    return model.columns().mask(col) == checkmark && !isFixed(row, col);
}

// Negative and system colours of a cell both mean "not set".
bool cellColourSet(int32_t colour) { return colour >= 0; }

// The box a cell's background covers, which holds everything the cell
// draws: a button's face reaches over the grid lines after it, and a flat
// header's line colour over the lines around it.
struct Area {
    int32_t x, y, width, height;
};

bool isButtonCell(const GridModel& model, int32_t row, int32_t col)
{
    return model.cells().Style(model.storeRow(row), to16(col)) == 1;
}

Area backgroundArea(const GridModel& model, const Appearance& look, int32_t row, int32_t col, Area cell)
{
    if (!isButtonCell(model, row, col))
        return cell;
    if (!isFixed(row, col) || !look.flatHeaders())
        return {cell.x, cell.y, advance(cell.width, 1), advance(cell.height, 1)};
    if (look.showsGridLines())
        return {advance(cell.x, -1), advance(cell.y, -1), advance(cell.width, 2), advance(cell.height, 2)};
    return cell;
}

void paintBackground(const GridModel& model, const Appearance& look, Canvas canvas, const CellFormat& format, int32_t row,
                     int32_t col, Area cell)
{
    const Area area = backgroundArea(model, look, row, col, cell);
    if (!isButtonCell(model, row, col)) {
        const OleColor colour =
            cellColourSet(format.BackColor) ? static_cast<OleColor>(format.BackColor) : look.cellBackColor(row);
        DrawBox(canvas, area.x, area.y, area.width, area.height, colour);
        return;
    }
    if (!isFixed(row, col) || !look.flatHeaders()) {
        const int16_t value = model.cells().Value(model.storeRow(row), to16(col));
        DrawButton(canvas, area.x, area.y, area.width, area.height, value);
        return;
    }
    if (look.showsGridLines())
        DrawBox(canvas, area.x, area.y, area.width, area.height, look.gridLineColor());
    DrawBox(canvas, cell.x, cell.y, cell.width, cell.height, look.headerBackColor());
}

// The box covers its whole square.
platform::Rect checkBoxSquare(int32_t x, int32_t y, int32_t width)
{
    const int32_t left = roundTo32(static_cast<double>(x) + static_cast<double>(width) / 2 - 7);
    return MakeRect(left, advance(y, 1), CheckBoxSize, CheckBoxSize);
}

void paintCheckBox(Canvas canvas, QAnyStringView text, int32_t x, int32_t y, int32_t width)
{
    const platform::Rect square = checkBoxSquare(x, y, width);
    canvas.surface.checkBox(square, text == QLatin1StringView("1"));
    canvas.marks.covered(square);
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

void applyTextStyle(const Appearance& look, Surface& surface, const CellFormat& format, int32_t row, int32_t col)
{
    if (isFixed(row, col)) {
        surface.setTextColor(look.headerForeColor());
        applyGridFont(surface, look.headerFont());
    } else {
        surface.setTextColor(cellColourSet(format.ForeColor) ? static_cast<OleColor>(format.ForeColor)
                                                             : SharedForeColor);
        applyGridFont(surface, look.font());
    }
    if (format.FontName.isEmpty())
        return;
    applyFont(surface, format.FontName, format.FontSize, format.FontBold, format.FontItalic, format.FontUnderline,
              format.FontStrikethru);
}

bool showsText(const GridModel& model, QAnyStringView text, int32_t row, int32_t col)
{
    return isFixed(row, col) || (!text.isEmpty() && model.columns().mask(col) != checkmark);
}

unsigned textFlags(const GridModel& model, int32_t row, int32_t col)
{
    unsigned flags = BaseTextFlags;
    switch (model.columns().alignment(col)) {
    case 1: flags |= platform::TextCenter; break;
    case 2: flags |= platform::TextRight; break;
    default: break;
    }
    switch (model.cells().TextAlignVertical(model.storeRow(row), to16(col))) {
    case 1: flags |= platform::TextVCenter; break;
    case 2: flags |= platform::TextBottom; break;
    default: break;
    }
    return flags;
}

}  // namespace

void DrawBox(Canvas canvas, int32_t x, int32_t y, int32_t width, int32_t height, OleColor colour)
{
    const platform::Rect box = MakeRect(x, y, width, height);
    canvas.surface.fill(box, colour);
    canvas.marks.covered(box);
}

void DrawLine(Canvas canvas, platform::Rect r, OleColor colour)
{
    canvas.surface.setPenColor(colour);
    canvas.surface.line(r.Left, r.Top, r.Right, r.Bottom);
    canvas.marks.coveredByLine(r.Left, r.Top, r.Right, r.Bottom, canvas.surface.penStyle() == platform::PenStyle::Dot);
}

// The edges lie on the button's face.
void DrawButton(Canvas canvas, int32_t x, int32_t y, int32_t width, int32_t height, int16_t pressed)
{
    DrawBox(canvas, x, y, width, height, ButtonFace);
    Surface& surface = canvas.surface;
    const platform::Rect r = MakeRect(x, y, width, height);
    if (pressed == Pressed) {
        surface.edge(r, platform::SunkenInner, platform::SideLeft | platform::SideTop);
        surface.edge(r, platform::SunkenOuter, platform::SideRight | platform::SideBottom);
    } else if (pressed == Raised) {
        surface.edge(r, platform::RaisedInner, platform::SideLeft | platform::SideTop);
        surface.edge(r, platform::RaisedOuter, platform::SideRight | platform::SideBottom);
    }
}

// The text stays inside the background, so only the background and the
// check box take marks away.
static void drawCellContents(const GridModel& model, const Appearance& look, Canvas canvas, int32_t row, int32_t col,
                             int32_t x, int32_t y, int32_t width, int32_t height)
{
    const CellFormat& format = model.cells().Format(model.storeRow(row), to16(col));
    paintBackground(model, look, canvas, format, row, col, {x, y, width, height});
    const QAnyStringView text = model.textView(row, col);
    if (isCheckBoxCell(model, row, col))
        paintCheckBox(canvas, text, x, y, width);
    Surface& surface = canvas.surface;
    applyTextStyle(look, surface, format, row, col);
    if (!showsText(model, text, row, col))
        return;
    const platform::Rect textRect{advance(x, TextMargin), y, advance(x, width, -TextMargin), advance(y, height)};
    surface.text(text, textRect, textFlags(model, row, col));
}

// A small triangle at the right of the sorted column's header, one box per
// pixel row; a header too small for it shows none.
static void paintSortArrow(const Appearance& look, Canvas canvas, int32_t x, int32_t y, int32_t width, int32_t height)
{
    constexpr int32_t Half = 4, Margin = 5;
    if (width < 4 * Half + Margin || height < Half + 4)
        return;
    const int32_t centre = x + width - Margin - Half, top = y + (height - Half) / 2;
    for (int32_t i = 0; i < Half; ++i) {
        const int32_t reach = look.sortDescending() ? Half - 1 - i : i;
        DrawBox(canvas, centre - reach, top + i, 2 * reach + 1, 1, look.headerForeColor());
    }
}

void drawCell(const GridModel& model, const Appearance& look, Canvas canvas, int32_t row, int32_t col, int32_t x, int32_t y,
              int32_t width, int32_t height)
{
    drawCellContents(model, look, canvas, row, col, x, y, width, height);
    if (row == 0 && col > 0 && col == look.sortColumn())
        paintSortArrow(look, canvas, x, y, width, height);
}

CellCover cellCover(const GridModel& model, const Appearance& look, int32_t row, int32_t col, int32_t x, int32_t y,
                    int32_t width, int32_t height)
{
    const Area area = backgroundArea(model, look, row, col, {x, y, width, height});
    CellCover cover{MakeRect(area.x, area.y, area.width, area.height), std::nullopt};
    if (isCheckBoxCell(model, row, col))
        cover.checkBox = checkBoxSquare(x, y, width);
    return cover;
}

}  // namespace TabulaControl::detail::render
