#pragma once

#include "state/GridModel.h"
#include "layout/Positions.h"
#include "state/Rect.h"
#include "state/AppearanceSettings.h"
#include "state/Viewport.h"

#include <cstdint>

namespace TabulaControl::detail::render {

// The arithmetic of positions lives with the layout, which computes without
// painting; the painters reach it under these names.
using layout::advance;
using layout::cellCoordinates;
using layout::firstScrollableLeft;
using layout::firstScrollableTop;
using layout::SurfaceSize;

// {left, top, left + width, top + height}, right and bottom exclusive.
inline platform::Rect MakeRect(int32_t left, int32_t top, int32_t width, int32_t height)
{
    return {left, top, advance(left, width), advance(top, height)};
}

}  // namespace TabulaControl::detail::render
