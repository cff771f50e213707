#pragma once

#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

namespace TabulaBench {

// The control keeps 5 pixels for its border and margins, so its drawing
// surface is 1920 x 1080.
inline constexpr int ControlWidth = 1925;
inline constexpr int ControlHeight = 1085;

// A number no call returned before. The text masks are kept per thread,
// across grids, so a benchmark of new texts puts one into every text it makes.
inline int newGeneration()
{
    static int generation = 0;
    return ++generation;
}

// A text no other cell and no other generation holds; short enough to sit
// inside its cell.
inline QString distinctText(int generation, int32_t row, int32_t col)
{
    return QStringLiteral("%1.%2:%3").arg(generation).arg(row).arg(col);
}

// Gives the data cells of rows 1..rows and columns 1..cols texts of a new
// generation, with AutoRedraw off for the writing. Setting AutoRedraw
// repaints, so a grid that has it off is left alone and nothing draws the
// new texts here.
inline void writeNewTexts(TabulaControl::Tabula& grid, int32_t rows, int32_t cols)
{
    const bool autoRedraw = grid.AutoRedraw();
    if (autoRedraw)
        grid.setAutoRedraw(false);
    const int generation = newGeneration();
    for (int32_t r = 1; r <= rows; ++r)
        for (int32_t c = 1; c <= cols; ++c)
            grid.setTextMatrix(r, c, distinctText(generation, r, c));
    if (autoRedraw)
        grid.setAutoRedraw(true);
}

// Turns the event loop until a turn delivers no event. QAbstractItemView lays
// out inserted rows from a zero timer and paints the scroll bar that layout
// shows one turn later, so a single turn would leave part of its work undone.
inline void runUntilIdle()
{
    struct DeliveryCounter : QObject {
        int delivered = 0;
        bool eventFilter(QObject*, QEvent*) override
        {
            ++delivered;
            return false;
        }
    } counter;
    qApp->installEventFilter(&counter);
    for (int turn = 0; turn < 8; ++turn) {
        counter.delivered = 0;
        QApplication::processEvents();
        if (counter.delivered == 0)
            break;
    }
    qApp->removeEventFilter(&counter);
}

// More rows and columns than a 1920 x 1080 surface shows at the top left.
inline constexpr int32_t ShownRows = 80;
inline constexpr int32_t ShownCols = 32;

// New texts in every cell that can show at the top left.
inline void writeNewShownTexts(TabulaControl::Tabula& grid)
{
    writeNewTexts(grid, std::min(grid.Rows() - 1, ShownRows), std::min(grid.Cols() - 1, ShownCols));
}

// A shown 1920 x 1080 grid of rows x cols cells, every cell holding a text
// of its own, never drawn before. AutoRedraw is left off.
inline std::unique_ptr<TabulaControl::Tabula> fullHdGrid(int32_t rows, int32_t cols)
{
    auto grid = std::make_unique<TabulaControl::Tabula>();
    grid->resize(ControlWidth, ControlHeight);
    grid->show();
    QApplication::processEvents();
    grid->setAutoRedraw(false);
    grid->setCols(cols);
    grid->setRows(rows);
    for (int32_t c = 1; c <= cols; ++c)
        grid->setTextMatrix(0, c, QStringLiteral("Column %1").arg(c));
    for (int32_t r = 1; r <= rows; ++r)
        grid->setTextMatrix(r, 0, QString::number(r));
    writeNewTexts(*grid, rows, cols);
    return grid;
}

// One step of the grid's scroll bar per iteration, the pixels read after
// each. At its end, outside the measured time, the cells the bar passed get
// new texts and the bar is put back to the start, so every step shows texts
// never drawn before.
inline void stepScrollBar(benchmark::State& state, TabulaControl::Tabula& grid, const char* barName)
{
    auto* bar = grid.findChild<QScrollBar*>(barName);
    const bool vertical = bar->orientation() == Qt::Vertical;
    for (auto _ : state) {
        if (bar->value() >= bar->maximum()) {
            state.PauseTiming();
            writeNewTexts(grid, vertical ? grid.Rows() - 1 : std::min(grid.Rows() - 1, ShownRows), grid.Cols() - 1);
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
