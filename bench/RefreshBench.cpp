#include "bench/FullHdGrid.h"

#include <algorithm>

namespace {

using TabulaControl::Tabula;

// Cells of this size make 30 rows and 10 columns cover the whole surface
// (rows from y = 17 in steps of 36, columns from x = 34 in steps of 190), so
// the small and the large grid show the same number of cells.
constexpr int32_t FillingColWidth = 189;
constexpr int32_t FillingRowHeight = 35;
// More rows than can ever be on the surface at the top of the grid.
constexpr int32_t RowsOnScreen = 40;

enum class Cells { FillSurface, Default };

// Row heights always repaint, so only the rows that can reach the surface
// are given the filling height.
void sizeCells(Tabula& grid, int32_t rows, int32_t cols)
{
    for (int32_t c = 1; c <= cols; ++c)
        grid.setColWidth(c, FillingColWidth);
    for (int32_t r = 1; r <= std::min(rows, RowsOnScreen); ++r)
        grid.setRowHeight(r, FillingRowHeight);
}

void refreshGrid(benchmark::State& state, int32_t rows, int32_t cols, Cells cells)
{
    auto grid = TabulaBench::fullHdGrid(rows, cols);
    if (cells == Cells::FillSurface)
        sizeCells(*grid, rows, cols);
    if (!TabulaBench::surfaceIsFullHd(state, *grid))
        return;
    for (auto _ : state) {
        state.PauseTiming();
        TabulaBench::writeNewShownTexts(*grid);
        state.ResumeTiming();
        grid->Refresh();
        benchmark::DoNotOptimize(grid->Picture().constBits());
    }
}

}  // namespace

BENCHMARK_CAPTURE(refreshGrid, rows30_cols10, 30, 10, Cells::FillSurface)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refreshGrid, rows30000_cols200, 30000, 200, Cells::FillSurface)->Unit(benchmark::kMillisecond);
// For reference: default 64 x 15 cells, about 2,000 of them on the surface.
BENCHMARK_CAPTURE(refreshGrid, rows30000_cols200_default_cells, 30000, 200, Cells::Default)
    ->Unit(benchmark::kMillisecond);
