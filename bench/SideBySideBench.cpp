// The same host work on Tabula and on QTableWidget, in one process. Every
// iteration ends with the event loop's turn (or a grab), so each side is
// charged for painting what the work changed.

#include "bench/FullHdGrid.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTableWidget>

namespace {

using TabulaControl::Tabula;

constexpr int HdWidth = 1280, HdHeight = 720;
constexpr int FillRows = 100, FillCols = 20;
constexpr int AppendedRows = 1000;
constexpr int Captions = 300;

template <class Widget>
std::unique_ptr<Widget> shown(int width, int height)
{
    auto widget = std::make_unique<Widget>();
    widget->resize(width, height);
    widget->show();
    QApplication::processEvents();
    return widget;
}

QString cellText(int row, int col, int round) { return QStringLiteral("%1:%2.%3").arg(row).arg(col).arg(round & 1); }

void fillCellsTabula(benchmark::State& state)
{
    auto grid = shown<Tabula>(HdWidth + 5, HdHeight + 5);
    grid->setCols(FillCols);
    grid->setRows(FillRows);
    QApplication::processEvents();
    int round = 0;
    for (auto _ : state) {
        for (int r = 1; r <= FillRows; ++r)
            for (int c = 1; c <= FillCols; ++c)
                grid->setTextMatrix(r, c, cellText(r, c, round));
        QApplication::processEvents();
        ++round;
    }
}

void fillCellsTableWidget(benchmark::State& state)
{
    auto table = shown<QTableWidget>(HdWidth, HdHeight);
    table->setColumnCount(FillCols);
    table->setRowCount(FillRows);
    QApplication::processEvents();
    int round = 0;
    for (auto _ : state) {
        for (int r = 0; r < FillRows; ++r)
            for (int c = 0; c < FillCols; ++c)
                table->setItem(r, c, new QTableWidgetItem(cellText(r, c, round)));
        QApplication::processEvents();
        ++round;
    }
}

void appendRowsTabula(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = shown<Tabula>(HdWidth + 5, HdHeight + 5);
        state.ResumeTiming();
        for (int r = 0; r < AppendedRows; ++r)
            grid->AddItem(QStringLiteral("Alpha\t12.50\tBravo\t%1\tx").arg(r));
        QApplication::processEvents();
        state.PauseTiming();
        grid.reset();
        state.ResumeTiming();
    }
}

void appendRowsTableWidget(benchmark::State& state)
{
    const QStringList fields = {"Alpha", "12.50", "Bravo", "", "x"};
    for (auto _ : state) {
        state.PauseTiming();
        auto table = shown<QTableWidget>(HdWidth, HdHeight);
        table->setColumnCount(static_cast<int>(fields.size()));
        state.ResumeTiming();
        for (int r = 0; r < AppendedRows; ++r) {
            table->insertRow(r);
            for (int c = 0; c < fields.size(); ++c)
                table->setItem(r, c, new QTableWidgetItem(c == 3 ? QString::number(r) : fields[c]));
        }
        QApplication::processEvents();
        state.PauseTiming();
        table.reset();
        state.ResumeTiming();
    }
}

QStringList captions()
{
    QStringList list;
    for (int c = 1; c <= Captions; ++c)
        list.append(QStringLiteral("Caption %1").arg(c));
    return list;
}

void formatStringTabula(benchmark::State& state)
{
    const QString format = captions().join('|');
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = shown<Tabula>(HdWidth + 5, HdHeight + 5);
        state.ResumeTiming();
        grid->setFormatString(format);
        QApplication::processEvents();
        state.PauseTiming();
        grid.reset();
        state.ResumeTiming();
    }
}

void headerItemsTableWidget(benchmark::State& state)
{
    const QStringList list = captions();
    for (auto _ : state) {
        state.PauseTiming();
        auto table = shown<QTableWidget>(HdWidth, HdHeight);
        state.ResumeTiming();
        table->setColumnCount(Captions);
        for (int c = 0; c < Captions; ++c)
            table->setHorizontalHeaderItem(c, new QTableWidgetItem(list[c]));
        // The format string sizes every column to its caption.
        table->resizeColumnsToContents();
        QApplication::processEvents();
        state.PauseTiming();
        table.reset();
        state.ResumeTiming();
    }
}

// The full-HD grid of the other benchmarks and a QTableWidget of the same
// size and content.
std::unique_ptr<QTableWidget> fullHdTable(const Tabula& grid)
{
    auto table = shown<QTableWidget>(TabulaBench::ControlWidth - 5, TabulaBench::ControlHeight - 5);
    table->setRowCount(grid.Rows());
    table->setColumnCount(grid.Cols());
    for (int r = 1; r <= std::min(grid.Rows(), 200); ++r)
        for (int c = 1; c <= grid.Cols(); ++c)
            table->setItem(r - 1, c - 1, new QTableWidgetItem(grid.TextMatrix(r, c)));
    QApplication::processEvents();
    return table;
}

constexpr int32_t HdRows = 2000, HdCols = 60;

void fullRepaintTabula(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    if (!TabulaBench::surfaceIsFullHd(state, *grid))
        return;
    for (auto _ : state) {
        grid->Refresh();
        benchmark::DoNotOptimize(grid->Picture().constBits());
    }
}

// Every shown cell holds a text never drawn before, so each repaint lays
// out all of its texts: the cost of a first paint.
void fullRepaintNewTextsTabula(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    if (!TabulaBench::surfaceIsFullHd(state, *grid))
        return;
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        for (int32_t r = 1; r <= 70; ++r)
            for (int32_t c = 1; c <= 32; ++c)
                grid->setTextMatrix(r, c, QStringLiteral("%1 r%2c%3").arg(round).arg(r).arg(c));
        ++round;
        state.ResumeTiming();
        grid->Refresh();
        benchmark::DoNotOptimize(grid->Picture().constBits());
    }
}

void fullRepaintTableWidget(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    auto table = fullHdTable(*grid);
    grid.reset();
    for (auto _ : state) {
        table->viewport()->update();
        benchmark::DoNotOptimize(table->grab().cacheKey());
    }
}

void scrollOneRowTabula(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    grid->setAutoRedraw(true);
    if (TabulaBench::surfaceIsFullHd(state, *grid))
        TabulaBench::stepScrollBar(state, *grid, "scrVertical");
}

void scrollOneRowTableWidget(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    auto table = fullHdTable(*grid);
    grid.reset();
    QScrollBar* bar = table->verticalScrollBar();
    for (auto _ : state) {
        if (bar->value() >= 150) {
            state.PauseTiming();
            bar->setValue(0);
            state.ResumeTiming();
        }
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        benchmark::DoNotOptimize(table->grab().cacheKey());
    }
}

// The current cell steps between two columns on screen and the pixels are
// read; with a block of 40 x 20 cells selected when the argument is 1.
constexpr int BlockRows = 40, BlockCols = 20;

void moveCurrentCellTabula(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    if (!TabulaBench::surfaceIsFullHd(state, *grid))
        return;
    if (state.range(0) == 1) {
        grid->setRow1(1);
        grid->setCol1(1);
        grid->setRow2(BlockRows);
        grid->setCol2(BlockCols);
        grid->Refresh();
    }
    int32_t col = 2;
    for (auto _ : state) {
        col = col == 2 ? 3 : 2;
        grid->setCol(col);
        benchmark::DoNotOptimize(grid->Picture().constBits());
    }
}

void moveCurrentCellTableWidget(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    auto table = fullHdTable(*grid);
    grid.reset();
    if (state.range(0) == 1)
        table->setRangeSelected(QTableWidgetSelectionRange(0, 0, BlockRows - 1, BlockCols - 1), true);
    int col = 1;
    for (auto _ : state) {
        col = col == 1 ? 2 : 1;
        table->selectionModel()->setCurrentIndex(table->model()->index(0, col), QItemSelectionModel::NoUpdate);
        benchmark::DoNotOptimize(table->grab().cacheKey());
    }
}

}  // namespace

BENCHMARK(fillCellsTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(fillCellsTableWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(appendRowsTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(appendRowsTableWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(formatStringTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(headerItemsTableWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(fullRepaintTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(fullRepaintNewTextsTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(fullRepaintTableWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollOneRowTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollOneRowTableWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(moveCurrentCellTabula)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(moveCurrentCellTableWidget)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
