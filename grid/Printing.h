#pragma once

#include "grid/Grid.h"

#include <QPagedPaintDevice>

namespace TabulaControl::detail {

// Prints every row and column of the grid onto device, on the pages of a
// layout::PagePlan, with the header row and column on every page and
// "Page n of m" in the footer. Cells are drawn by the cell painter at the
// device's resolution, so they look as on screen.
void printGrid(const Grid& grid, QPagedPaintDevice& device);

}  // namespace TabulaControl::detail
