#include "layout/Positions.h"

#include <algorithm>

namespace TabulaControl::detail::layout {

namespace {

constexpr int32_t EditorLeftInset = 3;
constexpr int32_t EditorTopInset = 2;

// Walks the sizes from first up to target, adding size + line for every
// index before target; indexes that do not exist (below 0, above count)
// take no space. Returns true when a running start lies past last.
template <class SizeOf>
bool walk(int32_t first, int32_t target, int32_t count, int32_t last, int32_t line, int32_t& pos, SizeOf sizeOf)
{
    for (int64_t i = firstWalked(first); i <= target; ++i) {
        if (pos > last)
            return true;
        if (i == target || i > count)
            return false;
        pos = advance(pos, sizeOf(static_cast<int32_t>(i)), line);
    }
    return false;
}

}  // namespace

int32_t firstScrollableTop(const GridModel& model, const render::Appearance& look, int32_t line)
{
    return look.showsColumnHeader() ? advance(model.rows().size(0), line, 1) : 1;
}

int32_t firstScrollableLeft(const GridModel& model, const render::Appearance& look, int32_t line)
{
    return look.showsRowHeader() ? advance(model.cols().size(0), line, 1) : 1;
}

bool cellCoordinates(const GridModel& model, const render::Appearance& look, render::Viewport& view,
                     SurfaceSize surface, int32_t row, int32_t col, int32_t& x, int32_t& y)
{
    y = firstScrollableTop(model, look, view.lineWidth());
    x = firstScrollableLeft(model, look, view.lineWidth());
    view.takeLineWidth(look.showsGridLines());
    const int32_t line = view.lineWidth();
    const bool rowBeyond = walk(view.topRow(), row, model.rows().count(), surface.height - 1, line, y,
                                [&](int32_t r) { return int32_t{model.rows().size(r)}; });
    const bool colBeyond = walk(view.leftCol(), col, model.cols().count(), surface.width - 1, line, x,
                                [&](int32_t c) { return int32_t{model.cols().size(c)}; });
    return rowBeyond || colBeyond;
}

EditorBox editorBox(int32_t x, int32_t y, int32_t width, int32_t height)
{
    // The widget takes no negative size.
    const int32_t boxWidth = width < EditorLeftInset ? 0 : width - EditorLeftInset;
    return {advance(x, EditorLeftInset), advance(y, EditorTopInset), boxWidth, std::max(height, 0)};
}

std::optional<int16_t> walkColumns(const GridModel& model, const render::Appearance& look, render::Viewport& view,
                                   int32_t lastX, const std::function<void(int32_t col, int32_t x)>& visit)
{
    int32_t x = 1;
    if (look.showsRowHeader()) {
        visit(0, 1);
        x = advance(1, model.cols().size(0), view.lineWidth());
    }
    std::optional<int16_t> page;
    view.startColumnWalk();
    for (int32_t c = firstWalked(view.leftCol()); c <= model.cols().count(); ++c) {
        visit(c, x);
        x = advance(x, model.cols().size(c), view.lineWidth());
        if (x <= lastX)
            continue;
        if (c < model.cols().count()) {
            view.columnsCutOff();
            view.measurePageCols(c);
            page = view.pageCols() > 0 ? saturate16(view.pageCols()) : int16_t{1};
        }
        break;
    }
    view.setDrawnRight(std::min(advance(x, -1), lastX));
    return page;
}

std::optional<int32_t> walkRows(const GridModel& model, const render::Appearance& look, render::Viewport& view,
                                SurfaceSize surface, bool withHeader,
                                const std::function<void(int32_t row, int32_t y)>& visit)
{
    std::optional<int32_t> page;
    int32_t y = 1;
    view.setDrawnBottom(0);
    if (look.showsColumnHeader()) {
        if (withHeader)
            visit(0, 1);
        y = advance(model.rows().size(0), 1, view.lineWidth());
        view.setDrawnBottom(advance(model.rows().size(0), 1));
    }
    for (int32_t r = firstWalked(view.topRow()); r <= model.rows().count(); ++r) {
        visit(r, y);
        y = advance(y, model.rows().size(r), view.lineWidth());
        if (y <= surface.height - 1 && r != model.rows().count())
            continue;
        if (view.measurePageRows(r))
            page = view.pageRows();
        view.setDrawnBottom(advance(y, -1));
        break;
    }
    view.settleExtents(surface.width - 1, surface.height - 1);
    return page;
}

}  // namespace TabulaControl::detail::layout
