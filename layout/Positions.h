#pragma once

#include "state/GridModel.h"
#include "state/AppearanceSettings.h"
#include "state/Viewport.h"

#include <cstdint>

namespace TabulaControl::detail::layout {

// The drawing surface's inner size in whole pixels.
struct SurfaceSize {
    int32_t width = 0;
    int32_t height = 0;
};

// pos + size + line, failing with the overflow error beyond 32 bits.
int32_t advance(int32_t pos, int32_t size, int32_t line = 0);

// Top pixel of the first scrollable row and left pixel of the first
// scrollable column, with grid lines line pixels wide.
int32_t firstScrollableTop(const GridModel& model, const render::Appearance& look, int32_t line);
int32_t firstScrollableLeft(const GridModel& model, const render::Appearance& look, int32_t line);

// Top-left pixel of cell (row, col). Returns true when the walk towards the
// cell met a start at or past the surface's last pixel; x and y then hold
// the start at which it stopped. Rows above the viewport's first row and
// columns left of its first column are not walked: they report the start of
// the scrollable area. Takes the grid line width again after the header
// offsets are taken.
bool cellCoordinates(const GridModel& model, const render::Appearance& look, render::Viewport& view,
                     SurfaceSize surface, int32_t row, int32_t col, int32_t& x, int32_t& y);

// Where the hidden editor box goes over a cell at (x, y) of the given size:
// inside its left and top edges, in the sizes the widget holds.
struct EditorBox {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;
};
EditorBox editorBox(int32_t x, int32_t y, int32_t width, int32_t height);

}  // namespace TabulaControl::detail::layout
