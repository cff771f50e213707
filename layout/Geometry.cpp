#include "layout/Geometry.h"

namespace TabulaControl::detail::render {

platform::Rect MakeRect(int32_t left, int32_t top, int32_t width, int32_t height)
{
    return {left, top, advance(left, width), advance(top, height)};
}

}  // namespace TabulaControl::detail::render
