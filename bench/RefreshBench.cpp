#include <TabulaControl/Tabula.h>

#include <QApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>

namespace {

using TabulaControl::Tabula;

// The control keeps 5 pixels for its border and margins, so its drawing
// surface is 1920 x 1080.
constexpr int ControlWidth = 1925;
constexpr int ControlHeight = 1085;

// Cells of this size make 30 rows and 10 columns cover the whole surface
// (rows from y = 17 in steps of 36, columns from x = 34 in steps of 190), so
// the small and the large grid show the same number of cells.
constexpr int32_t FillingColWidth = 189;
constexpr int32_t FillingRowHeight = 35;
// More rows than can ever be on the surface at the top of the grid.
constexpr int32_t RowsOnScreen = 40;

enum class Cells { FillSurface, Default };

// Every cell gets one of a few texts; equal texts share their storage, so
// even the largest grid fits in memory comfortably.
void fill(Tabula& grid, int32_t rows, int32_t cols)
{
    static const std::array<QString, 8> texts = {"Alpha",      "12.50",      "Bravo charlie", "x",
                                                 "2024-01-31", "Delta echo", "-7",            "Foxtrot golf hotel"};
    for (int32_t c = 1; c <= cols; ++c)
        grid.setTextMatrix(0, c, QStringLiteral("Column %1").arg(c));
    for (int32_t r = 1; r <= rows; ++r) {
        grid.setTextMatrix(r, 0, QString::number(r));
        for (int32_t c = 1; c <= cols; ++c)
            grid.setTextMatrix(r, c, texts[static_cast<size_t>(r + c) % texts.size()]);
    }
}

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
    Tabula grid;
    grid.resize(ControlWidth, ControlHeight);
    grid.show();
    QApplication::processEvents();
    grid.setAutoRedraw(false);
    grid.setCols(cols);
    grid.setRows(rows);
    fill(grid, rows, cols);
    if (cells == Cells::FillSurface)
        sizeCells(grid, rows, cols);
    if (grid.Picture().size() != QSize(ControlWidth - 5, ControlHeight - 5)) {
        state.SkipWithError("the drawing surface is not 1920 x 1080");
        return;
    }
    for (auto _ : state) {
        grid.Refresh();
        benchmark::DoNotOptimize(grid.Picture().constBits());
    }
}

}  // namespace

BENCHMARK_CAPTURE(refreshGrid, rows30_cols10, 30, 10, Cells::FillSurface)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refreshGrid, rows30000_cols200, 30000, 200, Cells::FillSurface)->Unit(benchmark::kMillisecond);
// For reference: default 64 x 15 cells, about 2,000 of them on the surface.
BENCHMARK_CAPTURE(refreshGrid, rows30000_cols200_default_cells, 30000, 200, Cells::Default)
    ->Unit(benchmark::kMillisecond);
