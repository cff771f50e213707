#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <array>
#include <memory>

namespace {

using TabulaControl::Tabula;

// The control keeps 5 pixels for its border and margins, so its drawing
// surface is 1920 x 1080.
constexpr int ControlWidth = 1925;
constexpr int ControlHeight = 1085;
constexpr int32_t Rows = 2000;
constexpr int32_t Cols = 60;

std::unique_ptr<Tabula> filledGrid()
{
    static const std::array<QString, 6> texts = {"Alpha", "12.50", "Bravo charlie", "x", "-7", "Foxtrot golf"};
    auto grid = std::make_unique<Tabula>();
    grid->resize(ControlWidth, ControlHeight);
    grid->show();
    QApplication::processEvents();
    grid->setAutoRedraw(false);
    grid->setCols(Cols);
    grid->setRows(Rows);
    for (int32_t c = 1; c <= Cols; ++c)
        grid->setTextMatrix(0, c, QStringLiteral("Column %1").arg(c));
    for (int32_t r = 1; r <= Rows; ++r) {
        grid->setTextMatrix(r, 0, QString::number(r));
        for (int32_t c = 1; c <= Cols; ++c)
            grid->setTextMatrix(r, c, texts[static_cast<size_t>(r * 7 + c) % texts.size()]);
    }
    grid->setAutoRedraw(true);
    return grid;
}

bool surfaceIsFullHd(benchmark::State& state, const Tabula& grid)
{
    if (grid.Picture().size() == QSize(ControlWidth - 5, ControlHeight - 5))
        return true;
    state.SkipWithError("the drawing surface is not 1920 x 1080");
    return false;
}

// One step of the bar per iteration; at its end the bar is put back to the
// start outside the measured time.
void stepBar(benchmark::State& state, const char* barName)
{
    auto grid = filledGrid();
    if (!surfaceIsFullHd(state, *grid))
        return;
    auto* bar = grid->findChild<QScrollBar*>(barName);
    for (auto _ : state) {
        if (bar->value() >= bar->maximum()) {
            state.PauseTiming();
            bar->setValue(1);
            state.ResumeTiming();
        }
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        benchmark::DoNotOptimize(grid->Picture().constBits());
    }
}

void scrollDownOneRow(benchmark::State& state) { stepBar(state, "scrVertical"); }
void scrollRightOneColumn(benchmark::State& state) { stepBar(state, "scrHorizontal"); }

void refreshSameGrid(benchmark::State& state)
{
    auto grid = filledGrid();
    if (!surfaceIsFullHd(state, *grid))
        return;
    for (auto _ : state) {
        grid->Refresh();
        benchmark::DoNotOptimize(grid->Picture().constBits());
    }
}

}  // namespace

BENCHMARK(scrollDownOneRow)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollRightOneColumn)->Unit(benchmark::kMillisecond);
BENCHMARK(refreshSameGrid)->Unit(benchmark::kMillisecond);
