// The same host work on Tabula and on QTableWidget, in one process. Every
// iteration ends with the event loop's turn (or a grab), so each side is
// charged for painting what the work changed, and every iteration shows
// texts never drawn before (made outside the measured time), except in the
// figure named for repeated texts.

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

using TabulaBench::distinctText;
using TabulaBench::newGeneration;

// The texts of FillRows x FillCols cells, row by row, of a new generation.
QStringList fillTexts()
{
    const int generation = newGeneration();
    QStringList texts;
    for (int r = 1; r <= FillRows; ++r)
        for (int c = 1; c <= FillCols; ++c)
            texts.append(distinctText(generation, r, c));
    return texts;
}

void fillCellsTabula(benchmark::State& state)
{
    auto grid = shown<Tabula>(HdWidth + 5, HdHeight + 5);
    grid->setCols(FillCols);
    grid->setRows(FillRows);
    QApplication::processEvents();
    for (auto _ : state) {
        state.PauseTiming();
        const QStringList texts = fillTexts();
        state.ResumeTiming();
        for (int r = 1; r <= FillRows; ++r)
            for (int c = 1; c <= FillCols; ++c)
                grid->setTextMatrix(r, c, texts[(r - 1) * FillCols + c - 1]);
        QApplication::processEvents();
    }
}

void fillCellsTableWidget(benchmark::State& state)
{
    auto table = shown<QTableWidget>(HdWidth, HdHeight);
    table->setColumnCount(FillCols);
    table->setRowCount(FillRows);
    QApplication::processEvents();
    for (auto _ : state) {
        state.PauseTiming();
        const QStringList texts = fillTexts();
        state.ResumeTiming();
        for (int r = 0; r < FillRows; ++r)
            for (int c = 0; c < FillCols; ++c)
                table->setItem(r, c, new QTableWidgetItem(texts[r * FillCols + c]));
        QApplication::processEvents();
    }
}

// The fields of the appended rows, of a new generation.
constexpr int AppendedCols = 5;

QStringList appendedFields()
{
    const int generation = newGeneration();
    QStringList fields;
    for (int r = 0; r < AppendedRows; ++r)
        for (int c = 0; c < AppendedCols; ++c)
            fields.append(distinctText(generation, r, c));
    return fields;
}

// Both sides turn the event loop until it is idle, so each has painted its
// rows and its scroll bar. The host's texts are made and freed outside the
// measured time on both sides: QTableWidget shares them with its items until
// the table goes, while the grid copies them into its store and would
// otherwise be charged here for the host freeing its own list.
void appendRowsTabula(benchmark::State& state)
{
    QStringList items;
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = shown<Tabula>(HdWidth + 5, HdHeight + 5);
        {
            const QStringList fields = appendedFields();
            for (int r = 0; r < AppendedRows; ++r)
                items.append(fields.mid(r * AppendedCols, AppendedCols).join(QLatin1Char('\t')));
        }
        state.ResumeTiming();
        for (const QString& item : std::as_const(items))
            grid->AddItem(item);
        TabulaBench::runUntilIdle();
        state.PauseTiming();
        grid.reset();
        items.clear();
        state.ResumeTiming();
    }
}

void appendRowsTableWidget(benchmark::State& state)
{
    QStringList fields;
    for (auto _ : state) {
        state.PauseTiming();
        auto table = shown<QTableWidget>(HdWidth, HdHeight);
        table->setColumnCount(AppendedCols);
        fields = appendedFields();
        state.ResumeTiming();
        for (int r = 0; r < AppendedRows; ++r) {
            table->insertRow(r);
            for (int c = 0; c < AppendedCols; ++c)
                table->setItem(r, c, new QTableWidgetItem(fields[r * AppendedCols + c]));
        }
        TabulaBench::runUntilIdle();
        state.PauseTiming();
        table.reset();
        fields.clear();
        state.ResumeTiming();
    }
}

QStringList captions()
{
    const int generation = newGeneration();
    QStringList list;
    for (int c = 1; c <= Captions; ++c)
        list.append(QStringLiteral("Caption %1.%2").arg(c).arg(generation));
    return list;
}

void formatStringTabula(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = shown<Tabula>(HdWidth + 5, HdHeight + 5);
        const QString format = captions().join('|');
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
    for (auto _ : state) {
        state.PauseTiming();
        auto table = shown<QTableWidget>(HdWidth, HdHeight);
        const QStringList list = captions();
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

// A QTableWidget of the size and shape of the full-HD grid, every cell
// holding a text of its own.
std::unique_ptr<QTableWidget> fullHdTable(const Tabula& grid)
{
    auto table = shown<QTableWidget>(TabulaBench::ControlWidth - 5, TabulaBench::ControlHeight - 5);
    table->setRowCount(grid.Rows());
    table->setColumnCount(grid.Cols());
    const int generation = newGeneration();
    for (int r = 0; r < grid.Rows(); ++r)
        for (int c = 0; c < grid.Cols(); ++c)
            table->setItem(r, c, new QTableWidgetItem(distinctText(generation, r, c)));
    QApplication::processEvents();
    return table;
}

// New texts in the table's first rows.
void writeNewTexts(QTableWidget& table, int rows)
{
    const int generation = newGeneration();
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < table.columnCount(); ++c)
            table.item(r, c)->setText(distinctText(generation, r, c));
}

constexpr int32_t HdRows = 2000, HdCols = 60;

// Every iteration draws the texts the one before drew.
void fullRepaintRepeatedTextsTabula(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    if (!TabulaBench::surfaceIsFullHd(state, *grid))
        return;
    for (auto _ : state) {
        grid->Refresh();
        benchmark::DoNotOptimize(grid->Picture().constBits());
    }
}

// Every shown cell holds a text never drawn before: the cost of a first paint.
void fullRepaintNewTextsTabula(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
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

void fullRepaintRepeatedTextsTableWidget(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    auto table = fullHdTable(*grid);
    grid.reset();
    for (auto _ : state) {
        table->viewport()->update();
        benchmark::DoNotOptimize(table->grab().cacheKey());
    }
}

void fullRepaintNewTextsTableWidget(benchmark::State& state)
{
    auto grid = TabulaBench::fullHdGrid(HdRows, HdCols);
    auto table = fullHdTable(*grid);
    grid.reset();
    for (auto _ : state) {
        state.PauseTiming();
        writeNewTexts(*table, TabulaBench::ShownRows);
        state.ResumeTiming();
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
            writeNewTexts(*table, 150 + TabulaBench::ShownRows);
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
BENCHMARK(fullRepaintRepeatedTextsTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(fullRepaintRepeatedTextsTableWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(fullRepaintNewTextsTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(fullRepaintNewTextsTableWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollOneRowTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollOneRowTableWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(moveCurrentCellTabula)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(moveCurrentCellTableWidget)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
