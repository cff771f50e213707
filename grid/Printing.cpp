#include "grid/Printing.h"

#include "layout/PagePlan.h"
#include "render/CellPainter.h"

#include <QPainter>

#include <algorithm>

namespace TabulaControl::detail {

namespace {

using layout::LineRun;
using layout::PrintedPage;

// Surface pixels are 1/96 inch; pages are drawn at most this many device
// pixels per surface pixel, which keeps a page's image within memory.
constexpr qreal SurfaceDpi = 96;
constexpr qreal MaxRatio = 3;
constexpr int32_t FooterHeight = 24;

// The lines a page shows: the header line when it is repeated, then the run.
std::vector<int32_t> linesOf(LineRun run, bool header)
{
    std::vector<int32_t> lines;
    if (header)
        lines.push_back(0);
    for (int32_t i = run.first; i <= run.last; ++i)
        lines.push_back(i);
    return lines;
}

// Where each line starts, one pixel in for the outer line, and the extent.
std::vector<int32_t> startsOf(const std::vector<int32_t>& lines, const Axis& axis, int32_t lineWidth, int32_t& extent)
{
    std::vector<int32_t> starts;
    int32_t at = lineWidth;
    for (int32_t line : lines) {
        starts.push_back(at);
        at = saturate32(int64_t{at} + axis.size(line) + lineWidth);
    }
    extent = std::max(at, 1);
    return starts;
}

QImage paintPage(const Grid& g, const PrintedPage& page, qreal ratio)
{
    const GridModel& model = g.model;
    const render::Appearance& look = g.appearance;
    const int32_t line = look.showsGridLines() ? 1 : 0;
    const std::vector<int32_t> rows = linesOf(page.rows, look.showsColumnHeader());
    const std::vector<int32_t> cols = linesOf(page.cols, look.showsRowHeader());
    int32_t width = 0, height = 0;
    const std::vector<int32_t> ys = startsOf(rows, model.rows(), line, height);
    const std::vector<int32_t> xs = startsOf(cols, model.cols(), line, width);
    platform::Surface surface(width, height, ratio);
    surface.setSystemColours(g.surface.ownSystemColours());
    render::Marks marks(surface);
    const render::Canvas canvas{surface, marks};
    for (size_t r = 0; r < rows.size(); ++r) {
        for (size_t c = 0; c < cols.size(); ++c)
            render::drawCell(model, look, canvas, rows[r], cols[c], xs[c], ys[r], model.cols().size(cols[c]),
                             model.rows().size(rows[r]));
    }
    if (line > 0) {
        surface.setPenStyle(look.gridLinesSolid() ? platform::PenStyle::Solid : platform::PenStyle::Dot);
        for (size_t c = 0; c <= cols.size(); ++c) {
            const int32_t x = c < cols.size() ? xs[c] - line : width - line;
            render::DrawLine(canvas, {x, 0, x, height}, look.gridLineColor());
        }
        for (size_t r = 0; r <= rows.size(); ++r) {
            const int32_t y = r < rows.size() ? ys[r] - line : height - line;
            render::DrawLine(canvas, {0, y, width, y}, look.gridLineColor());
        }
    }
    return surface.picture();
}

}  // namespace

void printGrid(const Grid& g, QPagedPaintDevice& device)
{
    const qreal scale = device.logicalDpiX() / SurfaceDpi;
    const auto pageWidth = static_cast<int32_t>(device.width() / scale);
    const auto pageHeight = static_cast<int32_t>(device.height() / scale) - FooterHeight;
    const int32_t line = g.appearance.showsGridLines() ? 1 : 0;
    const auto pages = layout::planPages(
        layout::splitLines(g.model.rows(), g.appearance.showsColumnHeader(), pageHeight - line, line),
        layout::splitLines(g.model.cols(), g.appearance.showsRowHeader(), pageWidth - line, line));
    QPainter painter;
    if (!painter.begin(&device))
        raise(RuntimeError::InvalidCall);
    // Cell texts stay sharp: a PDF keeps the page images without JPEG.
    painter.setRenderHint(QPainter::LosslessImageRendering);
    const qreal ratio = std::clamp(scale, qreal{1}, MaxRatio);
    for (size_t i = 0; i < pages.size(); ++i) {
        if (i > 0 && !device.newPage())
            raise(RuntimeError::InvalidCall);
        const QImage image = paintPage(g, pages[i], ratio);
        const QSizeF size = image.deviceIndependentSize() * scale;
        painter.drawImage(QRectF(QPointF(0, 0), size), image);
        const QRectF footer(0, device.height() - FooterHeight * scale, device.width(), FooterHeight * scale);
        painter.drawText(footer, Qt::AlignCenter, QStringLiteral("Page %1 of %2").arg(i + 1).arg(pages.size()));
    }
    painter.end();
}

}  // namespace TabulaControl::detail
