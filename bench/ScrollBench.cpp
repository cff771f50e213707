#include "bench/FullHdGrid.h"

#include <QScrollBar>

namespace {

using TabulaBench::fullHdGrid;
using TabulaBench::surfaceIsFullHd;

constexpr int32_t Rows = 2000;
constexpr int32_t Cols = 60;

std::unique_ptr<TabulaControl::Tabula> filledGrid()
{
    auto grid = fullHdGrid(Rows, Cols);
    grid->setAutoRedraw(true);
    return grid;
}

void stepBar(benchmark::State& state, const char* barName)
{
    auto grid = filledGrid();
    if (surfaceIsFullHd(state, *grid))
        TabulaBench::stepScrollBar(state, *grid, barName);
}

void scrollDownOneRow(benchmark::State& state) { stepBar(state, "scrVertical"); }
void scrollRightOneColumn(benchmark::State& state) { stepBar(state, "scrHorizontal"); }

void refreshWithNewTexts(benchmark::State& state)
{
    auto grid = fullHdGrid(Rows, Cols);
    if (!surfaceIsFullHd(state, *grid))
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

BENCHMARK(scrollDownOneRow)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollRightOneColumn)->Unit(benchmark::kMillisecond);
BENCHMARK(refreshWithNewTexts)->Unit(benchmark::kMillisecond);
