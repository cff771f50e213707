#pragma once

#include "core/Grid.h"
#include "render/Geometry.h"

#include <cstdint>

namespace TabulaControl::detail::render {

inline int32_t argOr(int32_t argument, int32_t fallback) { return argument == Omitted ? fallback : argument; }

inline SurfaceSize surfaceSizeOf(const Grid& g) { return {g.ui.picGrid.ScaleWidth(), g.ui.picGrid.ScaleHeight()}; }

// Whether the 20 x 20 square where the two scroll bars meet must be painted.
bool cornerSquareNeeded(const Grid& g);

// Paints that square at the surface's bottom-right corner.
void paintCornerSquare(platform::Surface& surface, SurfaceSize size);

}  // namespace TabulaControl::detail::render
