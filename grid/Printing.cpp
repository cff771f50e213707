#include "grid/Printing.h"

#include "layout/PagePlan.h"
#include "render/CellPainter.h"

#include <QPainter>

#include <algorithm>

namespace TabulaControl::detail {

namespace {

using layout::PageLines;
using layout::PlacedLine;

// Surface pixels are 1/96 inch; pages are drawn at most this many device
// pixels per surface pixel, which keeps a page's image within memory.
constexpr qreal SurfaceDpi = 96;
constexpr qreal MaxRatio = 3;
constexpr int32_t FooterHeight = 24;

// A one-pixel grid line before every line and after the last.
void drawGridLines(const Grid& g, const render::Canvas& canvas, const PageLines& rows, const PageLines& cols)
{
    const render::Appearance& look = g.appearance;
    canvas.surface.setPenStyle(look.gridLinesSolid() ? platform::PenStyle::Solid : platform::PenStyle::Dot);
    for (const PlacedLine& col : cols.lines)
        render::DrawLine(canvas, {col.start - 1, 0, col.start - 1, rows.extent}, look.gridLineColor());
    render::DrawLine(canvas, {cols.extent - 1, 0, cols.extent - 1, rows.extent}, look.gridLineColor());
    for (const PlacedLine& row : rows.lines)
        render::DrawLine(canvas, {0, row.start - 1, cols.extent, row.start - 1}, look.gridLineColor());
    render::DrawLine(canvas, {0, rows.extent - 1, cols.extent, rows.extent - 1}, look.gridLineColor());
}

QImage paintPage(const Grid& g, const layout::PrintedPage& page, qreal ratio)
{
    const GridModel& model = g.model;
    platform::Surface surface(page.cols.extent, page.rows.extent, ratio);
    surface.setSystemColours(g.surface.ownSystemColours());
    render::Marks marks(surface);
    const render::Canvas canvas{surface, marks};
    for (const PlacedLine& row : page.rows.lines) {
        for (const PlacedLine& col : page.cols.lines)
            render::drawCell(model, g.appearance, canvas, row.index, col.index, col.start, row.start,
                             model.cols().size(col.index), model.rows().size(row.index));
    }
    if (g.appearance.showsGridLines())
        drawGridLines(g, canvas, page.rows, page.cols);
    return surface.picture();
}

}  // namespace

void printGrid(const Grid& g, QPagedPaintDevice& device)
{
    const qreal scale = device.logicalDpiX() / SurfaceDpi;
    const auto pageWidth = static_cast<int32_t>(device.width() / scale);
    const auto pageHeight = static_cast<int32_t>(device.height() / scale) - FooterHeight;
    const int32_t line = g.appearance.showsGridLines() ? 1 : 0;
    const layout::PagePlan plan({g.model.rows(), g.appearance.showsColumnHeader(), pageHeight - line},
                                {g.model.cols(), g.appearance.showsRowHeader(), pageWidth - line}, line);
    QPainter painter;
    if (!painter.begin(&device))
        raise(RuntimeError::InvalidCall);
    // Cell texts stay sharp: a PDF keeps the page images without JPEG.
    painter.setRenderHint(QPainter::LosslessImageRendering);
    const qreal ratio = std::clamp(scale, qreal{1}, MaxRatio);
    for (size_t i = 0; i < plan.pageCount(); ++i) {
        if (i > 0 && !device.newPage())
            raise(RuntimeError::InvalidCall);
        const QImage image = paintPage(g, plan.page(i), ratio);
        const QSizeF size = image.deviceIndependentSize() * scale;
        painter.drawImage(QRectF(QPointF(0, 0), size), image);
        const QRectF footer(0, device.height() - FooterHeight * scale, device.width(), FooterHeight * scale);
        painter.drawText(footer, Qt::AlignCenter, QStringLiteral("Page %1 of %2").arg(i + 1).arg(plan.pageCount()));
    }
    painter.end();
}

}  // namespace TabulaControl::detail
