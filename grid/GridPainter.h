#pragma once

#include "grid/Grid.h"
#include "layout/Geometry.h"

#include <cstdint>
#include <functional>

namespace TabulaControl::detail::render {

inline SurfaceSize surfaceSizeOf(const Grid& g) { return {g.ui.picGrid.ScaleWidth(), g.ui.picGrid.ScaleHeight()}; }

// Calls paintCell for the cells of one row, from the header column through
// the columns that reach the surface, and records how far they reach, the
// horizontal scroll need and the page of columns.
void walkRow(Grid& g, const std::function<void(int32_t col, int32_t x)>& paintCell);

// Whether the 20 x 20 square where the two scroll bars meet must be painted.
bool cornerSquareNeeded(const Grid& g);

// Paints that square at the surface's bottom-right corner.
void paintCornerSquare(Canvas canvas, SurfaceSize size);

}  // namespace TabulaControl::detail::render
