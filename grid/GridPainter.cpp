#include "grid/GridPainter.h"

#include "state/Check.h"
#include "render/CellPainter.h"

#include <QScopeGuard>

#include <algorithm>
#include <bit>
#include <cmath>

namespace TabulaControl::detail::render {

namespace {

constexpr int32_t CornerSquareSize = 20;

// A band usually stays where it was from one repaint to the next, so the
// surface keeps its pixels rather than filling them again.
void paintBand(Canvas canvas, int32_t x, int32_t y, int32_t width, int32_t height, OleColor colour)
{
    const platform::Rect box = MakeRect(x, y, width, height);
    canvas.surface.fillRemembered(box, colour);
    canvas.marks.covered(box);
}

// The background colour beyond the last row and column. Under a border the
// surface's pixel row 0 and column 0 are left alone.
void paintBackgroundBands(const Appearance& look, const Viewport& view, Canvas canvas, SurfaceSize size)
{
    const int32_t inset = look.borderInset();
    paintBand(canvas, inset, advance(view.drawnBottom(), 1), advance(size.width, -inset), advance(size.height, -1),
              look.backgroundColor());
    paintBand(canvas, advance(view.drawnRight(), 1), inset, size.width, advance(size.height, -inset),
              look.backgroundColor());
}

// The first row (column) from `first` whose extent, grid line included,
// reaches past `stripStart`; pos is left at its start. Returns last + 1
// when the walk ends first.
template <class SizeOf>
int32_t firstReaching(int32_t first, int32_t last, int32_t stripStart, int32_t line, int32_t& pos, SizeOf sizeOf)
{
    int32_t i = first;
    for (; i <= last; ++i) {
        const int32_t next = advance(pos, sizeOf(i), line);
        if (next > stripStart)
            break;
        pos = next;
    }
    return i;
}

// Vertical lines after each column and horizontal lines after each row of
// the block, each on the first pixel past its cell. The running starts
// assume the block begins at the viewport's first column and row.
void drawGridLines(Grid& g, int32_t row1, int32_t col1, int32_t row2, int32_t col2, SurfaceSize size)
{
    GridModel& model = g.model;
    int32_t x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    g.cellCoordinates(row1, col1, x1, y1);
    g.cellCoordinates(row2, col2, x2, y2);
    const int32_t line = g.viewport.lineWidth();

    const int32_t bottom = advance(y2, model.rows().size(row2));
    int32_t x = g.appearance.showsRowHeader() ? advance(model.cols().size(0), line) : 0;
    for (int32_t c = firstWalked(col1); c <= col2; ++c) {
        x = advance(x, model.cols().size(c), line);
        if (x > size.width)
            break;
        DrawLine(g.canvas(), {x, y1, x, bottom}, g.appearance.gridLineColor());
    }

    const int32_t right = advance(x2, model.cols().size(col2));
    int32_t y = g.appearance.showsColumnHeader() ? advance(model.rows().size(0), line) : 0;
    for (int32_t r = firstWalked(row1); r <= row2; ++r) {
        y = advance(y, model.rows().size(r), line);
        if (y > size.height)
            break;
        DrawLine(g.canvas(), {x1, y, right, y}, g.appearance.gridLineColor());
    }
}

}  // namespace

void walkRow(Grid& g, const std::function<void(int32_t col, int32_t x)>& paintCell)
{
    const int32_t lastX = g.ui.picGrid.ScaleWidth() - 1;
    if (const auto page = layout::walkColumns(g.model, g.appearance, g.viewport, lastX, paintCell))
        g.ui.scrHorizontal.setLargeChange(*page);
}

bool cornerSquareNeeded(const Grid& g)
{
    return g.barsShown() || (g.viewport.hScrollNeeded() && g.viewport.vScrollNeeded());
}

void paintCornerSquare(Canvas canvas, SurfaceSize size)
{
    DrawBox(canvas, advance(size.width, -CornerSquareSize), advance(size.height, -CornerSquareSize),
            CornerSquareSize, CornerSquareSize, ButtonFace);
}

}  // namespace TabulaControl::detail::render

namespace TabulaControl::detail {

using render::advance;
using render::DrawBox;
using render::DrawLine;

void Grid::Refresh()
{
    // The host's edit events meet a line selection's block taken off.
    if (editorState.isOpen())
        withLineSelectionLifted([this] { endEdit(); });
    if (selection.row() < 1 && model.rows().count() >= 1)
        selection.setRow(1);
    if (selection.col() < 1 && model.cols().count() >= 1)
        selection.setCol(1);
    // With AutoRedraw off, what the rest of this call changes is not painted
    // again, so the pixels are made now, from the state as it is.
    if (deferDepth_ > 0 && autoRedraw_)
        layoutAll();
    else
        paintAll();
}

// Cache checks compare what the painters settle with what the layout
// computes from the same state.
void Grid::paintAll()
{
    surface.clear();
    marks.cleared();
#ifdef TABULA_CACHE_CHECKS
    const std::optional<layout::Layout> expected = layoutOrNothing();
#endif
    viewport.takeLineWidth(appearance.showsGridLines());
    redrawAllCells(true);
    showScrollBars();
    fitSelectionToMode();
#ifdef TABULA_CACHE_CHECKS
    TABULA_CHECK(expected && observedLayout().observable() == expected->observable());
#endif
    ui.picGrid.Refresh();
}

CellInputs Grid::cellInputs() const
{
    const auto fontOf = [](const FontRef& font) { return font ? std::optional<StdFont>(*font) : std::nullopt; };
    const render::Appearance& look = appearance;
    return {model.revision(),
            {look.showsColumnHeader(), look.showsRowHeader(), look.showsGridLines(), look.headerStyle(),
             look.gridLineColor(), look.headerBackColor(), look.headerForeColor(), look.alternatesRowColors(),
             look.alternateRowColor(), SharedBackColor, SharedForeColor, viewport.lineWidth(), surface.width(),
             surface.height(), std::bit_cast<int64_t>(double{surface.devicePixelRatio()})},
            fontOf(look.font()),
            fontOf(look.headerFont())};
}

namespace {

// A font size the surface cannot take leaves the size of the cell drawn
// before, so the cells' pixels depend on the order they are drawn in.
bool fontsStandAlone(const render::Appearance& look)
{
    const auto takes = [](const FontRef& font) { return font && font->Size > 0 && std::isfinite(font->Size); };
    return takes(look.font()) && takes(look.headerFont());
}

}  // namespace

bool Grid::cellsCurrent(int32_t top, int32_t left, bool headerRow) const
{
    return !owedRepaint_ && painted_ && painted_->topRow == top && painted_->leftCol == left &&
           (painted_->headerRowCurrent || !headerRow) && fontsStandAlone(appearance) &&
           painted_->inputs == cellInputs();
}

void Grid::notePass(bool full)
{
    CellInputs inputs = cellInputs();
    const bool headerRowCurrent = full || (painted_ && painted_->headerRowCurrent &&
                                           painted_->leftCol == viewport.leftCol() && painted_->inputs == inputs);
    painted_ = PaintedCells{std::move(inputs), viewport.topRow(), viewport.leftCol(), headerRowCurrent};
}

void Grid::inPass(bool keepCarried, const std::function<void()>& body)
{
    const auto restore = qScopeGuard([this, wasKeeping = keepCarriedCells_] {
        --passDepth_;
        keepCarriedCells_ = wasKeeping;
    });
    keepCarriedCells_ = keepCarried;
    ++passDepth_;
    body();
}

// A cell the memo holds in place while the cells are current is left as it
// is; it takes away the marks it covers, as drawing it would. Debug builds
// draw it anyway and check that the memo matched it and the marks agree.
bool Grid::keepsCarriedCell(int32_t row, int32_t col, int32_t x, int32_t y, int32_t width, int32_t height)
{
    if (!keepCarriedCells_)
        return false;
    const render::CellCover cover = render::cellCover(model, appearance, row, col, x, y, width, height);
    const std::optional<size_t> kept = surface.movedCell(cover.bounds);
    if (!kept)
        return false;
#ifdef TABULA_CACHE_CHECKS
    const auto regionOf = [](platform::Rect r) {
        return r.Right > r.Left && r.Bottom > r.Top ? QRegion(r.Left, r.Top, r.Right - r.Left, r.Bottom - r.Top)
                                                    : QRegion();
    };
    QRegion covered = regionOf(cover.bounds);
    if (cover.checkBox)
        covered += regionOf(*cover.checkBox);
    const QRegion inverted = marks.inverted() - covered, dotted = marks.dotted() - covered;
    surface.drawCell([&] { render::drawCell(model, appearance, canvas(), row, col, x, y, width, height); });
    TABULA_CHECK(surface.movedCell(cover.bounds) == kept);
    TABULA_CHECK(marks.inverted() == inverted && marks.dotted() == dotted);
#else
    marks.covered(cover.bounds);
    if (cover.checkBox)
        marks.covered(*cover.checkBox);
#endif
    return true;
}

void Grid::redrawAllCells(bool full)
{
    inPass(keepCarriedCells_, [&] { passOverCells(full); });
}

void Grid::passOverCells(bool full)
{
    const render::SurfaceSize size = render::surfaceSizeOf(*this);
    const auto page = layout::walkRows(model, appearance, viewport, size, full,
                                       [&](int32_t row, int32_t y) { drawRow(row, y); });
    if (page)
        ui.scrVertical.setLargeChange(saturate16(*page));
    render::paintBackgroundBands(appearance, viewport, canvas(), size);
    if (model.rows().count() > 0) {
        drawGrid();
        showMarksAfterPaint();
    }
    placeResizeZones();
    notePass(full);
}

// A cell drawn anywhere but in a pass may not be where its cell belongs
// (a current cell scrolled out of view is drawn over the first row shown).
void Grid::notePaintOutsidePass()
{
    if (passDepth_ == 0)
        painted_.reset();
}

void Grid::drawRow(int32_t row, int32_t y)
{
    viewport.takeLineWidth(appearance.showsGridLines());
    const int32_t height = model.rows().size(row);
    render::walkRow(*this, [&](int32_t col, int32_t x) { drawCell(row, col, x, y, model.cols().size(col), height); });
}

void Grid::drawColumn(int32_t col, int32_t x)
{
    viewport.takeLineWidth(appearance.showsGridLines());
    const int32_t width = model.cols().size(col);
    const int32_t surfaceHeight = ui.picGrid.ScaleHeight();
    int32_t y = 1;
    if (appearance.showsColumnHeader()) {
        drawCell(0, col, x, 1, width, model.rows().size(0));
        y = advance(1, model.rows().size(0), viewport.lineWidth());
    }
    viewport.startRowWalk();
    for (int32_t r = firstWalked(viewport.topRow()); r <= model.rows().count(); ++r) {
        drawCell(r, col, x, y, width, model.rows().size(r));
        y = advance(y, model.rows().size(r), viewport.lineWidth());
        if (y <= surfaceHeight)
            continue;
        viewport.rowsCutOff();
        ui.scrVertical.setLargeChange(saturate16(int64_t{r} - viewport.topRow()));
        break;
    }
    viewport.setDrawnBottom(std::min(advance(y, -1), surfaceHeight - 1));
}

void Grid::drawGrid()
{
    const render::SurfaceSize size = render::surfaceSizeOf(*this);
    if (appearance.showsGridLines()) {
        if (!appearance.gridLinesSolid())
            surface.setPenStyle(platform::PenStyle::Dot);
        render::drawGridLines(*this, viewport.topRow(), viewport.leftCol(), model.rows().count(),
                              model.cols().count(), size);
    }
    drawGridBorder();
    surface.setPenStyle(platform::PenStyle::Solid);
    if (render::cornerSquareNeeded(*this))
        render::paintCornerSquare(canvas(), size);
}

// The lines around the cells from the first shown to the last of the grid.
void Grid::drawGridBorder()
{
    const int32_t row1 = viewport.topRow(), col1 = viewport.leftCol();
    const int32_t row2 = model.rows().count(), col2 = model.cols().count();
    int32_t x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    cellCoordinates(row1, col1, x1, y1);
    cellCoordinates(row2, col2, x2, y2);
    const int32_t right = advance(x2, model.cols().size(col2));
    const int32_t bottom = advance(y2, model.rows().size(row2));
    const bool flatHeaders = appearance.flatHeaders();
    if (flatHeaders || !appearance.showsColumnHeader())
        DrawLine(canvas(), {x1, y1, right, y1}, appearance.gridLineColor());
    DrawLine(canvas(), {x1, bottom, right, bottom}, appearance.gridLineColor());
    if (flatHeaders || !appearance.showsRowHeader())
        DrawLine(canvas(), {x1, y1, x1, bottom}, appearance.gridLineColor());
    DrawLine(canvas(), {right, y1, right, bottom}, appearance.gridLineColor());
}

void Grid::drawBottomRows(int32_t fromRow, int32_t lines)
{
    viewport.takeLineWidth(appearance.showsGridLines());
    const render::SurfaceSize size = render::surfaceSizeOf(*this);
    const int32_t stripTop = to32(int64_t{size.height} - 1 - lines);
    int32_t y = render::firstScrollableTop(model, appearance, viewport.lineWidth());
    int32_t r = render::firstReaching(fromRow, model.rows().count(), stripTop, viewport.lineWidth(), y,
                                      [&](int32_t row) { return int32_t{model.rows().size(row)}; });
    for (; r <= model.rows().count() && y <= size.height - 1; ++r) {
        drawRow(r, y);
        y = advance(y, model.rows().size(r), viewport.lineWidth());
    }
    viewport.setDrawnBottom(std::min(advance(y, -1), size.height - 1));
    DrawBox(canvas(), 1, advance(viewport.drawnBottom(), 1), size.width, size.height, render::ButtonFace);
}

void Grid::drawRightColumns(int32_t fromCol, int32_t pixels)
{
    const render::SurfaceSize size = render::surfaceSizeOf(*this);
    const int32_t stripLeft = to32(int64_t{size.width} - 1 - pixels);
    int32_t x = render::firstScrollableLeft(model, appearance, viewport.lineWidth());
    int32_t c = render::firstReaching(fromCol, model.cols().count(), stripLeft, viewport.lineWidth(), x,
                                      [&](int32_t col) { return int32_t{model.cols().size(col)}; });
    for (; c <= model.cols().count() && x <= size.width - 1; ++c) {
        drawColumn(c, x);
        x = advance(x, model.cols().size(c), viewport.lineWidth());
    }
    viewport.setDrawnRight(std::min(advance(x, -1), size.width - 1));
    DrawBox(canvas(), advance(viewport.drawnRight(), 1), 1, size.width, size.height, render::ButtonFace);
}

void Grid::redrawCell(int32_t row, int32_t col)
{
    if (!model.hasCell(row, col))
        return;
    int32_t x = 0, y = 0;
    cellCoordinates(row, col, x, y);
    drawCell(row, col, x, y, model.cols().size(col), model.rows().size(row));
}

void Grid::scrollPixels(int32_t dx, int32_t dy, Rect area)
{
    surface.scroll(dx, dy, area, area);
    marks.scrolled(dx, dy, area, area);
}

void Grid::applyBorderStyle() { ui.window.setBorder(appearance.borderStyle()); }

bool Grid::barsShown() const
{
    if (barsShownOverride_)
        return *barsShownOverride_;
    return ui.scrHorizontal.Visible() && ui.scrVertical.Visible();
}

void Grid::showScrollBars()
{
    barsShownOverride_.reset();
    ui.scrVertical.setVisible(viewport.vScrollNeeded());
    ui.scrHorizontal.setVisible(viewport.hScrollNeeded());
}

}  // namespace TabulaControl::detail

namespace TabulaControl::detail {

void Grid::drawCell(int32_t row, int32_t col, int32_t x, int32_t y, int32_t width, int32_t height)
{
    notePaintOutsidePass();
    if (keepsCarriedCell(row, col, x, y, width, height))
        return;
    surface.drawCell([&] { render::drawCell(model, appearance, canvas(), row, col, x, y, width, height); });
}

bool Grid::cellCoordinates(int32_t row, int32_t col, int32_t& x, int32_t& y)
{
    const render::SurfaceSize size{ui.picGrid.ScaleWidth(), ui.picGrid.ScaleHeight()};
    return render::cellCoordinates(model, appearance, viewport, size, row, col, x, y);
}

}  // namespace TabulaControl::detail
