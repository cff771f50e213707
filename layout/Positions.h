#pragma once

#include "state/GridModel.h"
#include "state/AppearanceSettings.h"
#include "state/Errors.h"
#include "state/Viewport.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace TabulaControl::detail::layout {

// The drawing surface's inner size in whole pixels.
struct SurfaceSize {
    int32_t width = 0;
    int32_t height = 0;
};

// pos + size + line, failing with the overflow error beyond 32 bits.
inline int32_t advance(int32_t pos, int32_t size, int32_t line = 0) { return to32(int64_t{pos} + size + line); }

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

// The walk across the columns a row shows: visit(col, x) for the row header
// and for each column from the first shown, until one ends past lastX.
// Settles the view's column reach; returns the page of columns when the walk
// stopped before the last one.
std::optional<int16_t> walkColumns(const GridModel& model, const render::Appearance& look, render::Viewport& view,
                                   int32_t lastX, const std::function<void(int32_t col, int32_t x)>& visit);

// The walk down the rows of a pass: visit(row, y) for the header row when
// withHeader, and for each row from the first shown until one ends past the
// surface. Settles the view's drawn extents; returns the rows of a page when
// the walk measured them.
std::optional<int32_t> walkRows(const GridModel& model, const render::Appearance& look, render::Viewport& view,
                                SurfaceSize surface, bool withHeader,
                                const std::function<void(int32_t row, int32_t y)>& visit);

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
