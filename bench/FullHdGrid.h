#pragma once

#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <array>
#include <memory>

namespace TabulaBench {

// The control keeps 5 pixels for its border and margins, so its drawing
// surface is 1920 x 1080.
inline constexpr int ControlWidth = 1925;
inline constexpr int ControlHeight = 1085;

// A shown 1920 x 1080 grid of rows x cols cells, every cell holding one of a
// few texts (short texts sit inside their cells, so even a large grid stays
// small).
// AutoRedraw is left off.
inline std::unique_ptr<TabulaControl::Tabula> fullHdGrid(int32_t rows, int32_t cols)
{
    static const std::array<QString, 8> texts = {"Alpha",      "12.50",      "Bravo charlie", "x",
                                                 "2024-01-31", "Delta echo", "-7",            "Foxtrot golf hotel"};
    auto grid = std::make_unique<TabulaControl::Tabula>();
    grid->resize(ControlWidth, ControlHeight);
    grid->show();
    QApplication::processEvents();
    grid->setAutoRedraw(false);
    grid->setCols(cols);
    grid->setRows(rows);
    for (int32_t c = 1; c <= cols; ++c)
        grid->setTextMatrix(0, c, QStringLiteral("Column %1").arg(c));
    for (int32_t r = 1; r <= rows; ++r) {
        grid->setTextMatrix(r, 0, QString::number(r));
        for (int32_t c = 1; c <= cols; ++c)
            grid->setTextMatrix(r, c, texts[static_cast<size_t>(r * 7 + c) % texts.size()]);
    }
    return grid;
}

// One step of the grid's scroll bar per iteration, the pixels read after
// each; at its end the bar is put back to the start outside the measured time.
inline void stepScrollBar(benchmark::State& state, TabulaControl::Tabula& grid, const char* barName)
{
    auto* bar = grid.findChild<QScrollBar*>(barName);
    for (auto _ : state) {
        if (bar->value() >= bar->maximum()) {
            state.PauseTiming();
            bar->setValue(1);
            state.ResumeTiming();
        }
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        benchmark::DoNotOptimize(grid.Picture().constBits());
    }
}

inline bool surfaceIsFullHd(benchmark::State& state, const TabulaControl::Tabula& grid)
{
    if (grid.Picture().size() == QSize(ControlWidth - 5, ControlHeight - 5))
        return true;
    state.SkipWithError("the drawing surface is not 1920 x 1080");
    return false;
}

}  // namespace TabulaBench
