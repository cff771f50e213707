#include "render/Geometry.h"

#include "core/Grid.h"

namespace TabulaControl::detail::render {

platform::Rect MakeRect(int32_t left, int32_t top, int32_t width, int32_t height)
{
    return {left, top, advance(left, width), advance(top, height)};
}

}  // namespace TabulaControl::detail::render

namespace TabulaControl::detail {

bool Grid::cellCoordinates(int32_t row, int32_t col, int32_t& x, int32_t& y)
{
    const render::SurfaceSize size{ui.picGrid.ScaleWidth(), ui.picGrid.ScaleHeight()};
    return render::cellCoordinates(model, appearance, viewport, size, row, col, x, y);
}

}  // namespace TabulaControl::detail
