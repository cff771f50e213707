// Legal inputs that once cost far more than what they change: a long
// format string, one very long cell (a new text each time), a thousand
// columns.
#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QStringList>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using TabulaControl::Tabula;

std::unique_ptr<Tabula> shownGrid()
{
    auto grid = std::make_unique<Tabula>();
    grid->resize(1280, 720);
    grid->show();
    QApplication::processEvents();
    return grid;
}

QString captions(int count)
{
    QStringList parts;
    for (int i = 1; i <= count; ++i)
        parts << QStringLiteral("Caption %1").arg(i);
    return parts.join(QLatin1Char('|'));
}

void formatStringOnAShownGrid(benchmark::State& state)
{
    const QString format = captions(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = shownGrid();
        state.ResumeTiming();
        grid->setFormatString(format);
        state.PauseTiming();
        grid.reset();
        state.ResumeTiming();
    }
}

void colsOnAShownGrid(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = shownGrid();
        state.ResumeTiming();
        grid->setCols(static_cast<int32_t>(state.range(0)));
        grid->setRows(20);
        state.PauseTiming();
        grid.reset();
        state.ResumeTiming();
    }
}

void refreshWithOneLongCell(benchmark::State& state)
{
    auto grid = shownGrid();
    grid->setRows(20);
    const QString longText(static_cast<qsizetype>(state.range(0)), QLatin1Char('w'));
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        grid->setTextMatrix(1, 1, QString::number(++round) + longText);
        state.ResumeTiming();
        grid->Refresh();
        benchmark::DoNotOptimize(grid->Picture().constBits());
    }
}

}  // namespace

BENCHMARK(formatStringOnAShownGrid)->Arg(300)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(colsOnAShownGrid)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(refreshWithOneLongCell)->Arg(11)->Arg(99000)->Unit(benchmark::kMillisecond);
