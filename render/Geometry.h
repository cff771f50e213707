#pragma once

#include "core/GridState.h"
#include "platform/Surface.h"

#include <cstdint>

namespace TabulaControl::detail::render {

// The drawing surface's inner size in whole pixels.
struct SurfaceSize {
    int32_t width = 0;
    int32_t height = 0;
};

inline uint8_t gridLineWidthOf(const GridState& s) { return s.mShowGrid ? 1 : 0; }

// pos + size + line, failing with the overflow error beyond 32 bits.
int32_t advance(int32_t pos, int32_t size, int32_t line = 0);

// Top pixel of the first scrollable row and left pixel of the first
// scrollable column, with the grid line width currently in s.
int32_t firstScrollableTop(const GridState& s);
int32_t firstScrollableLeft(const GridState& s);

// Top-left pixel of cell (row, col). Returns true when the walk towards the
// cell met a start at or past the surface's last pixel; x and y then hold
// the start at which it stopped. Rows above mTopRow and columns left of
// mLeftCol are not walked: they report the start of the scrollable area.
// Recomputes s.mGridLineWidth after the header offsets are taken.
bool cellCoordinates(GridState& s, SurfaceSize surface, int32_t row, int32_t col, int32_t& x, int32_t& y);

// {left, top, left + width, top + height}, right and bottom exclusive.
platform::Rect MakeRect(int32_t left, int32_t top, int32_t width, int32_t height);

}  // namespace TabulaControl::detail::render
