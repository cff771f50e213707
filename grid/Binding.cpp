#include "grid/Grid.h"

namespace TabulaControl::detail {

namespace {

// Where a line index goes when count lines come in before first (count
// negative: go from first on).
int32_t shifted(int32_t line, int32_t first, int32_t count)
{
    if (line < first)
        return line;
    if (count < 0 && line < first - count)
        return first;
    return line + count;
}

}  // namespace

void Grid::bindCells(std::unique_ptr<CellSource> source)
{
    // The old cells' pixels are made before the swap: the scroll bars that
    // follow the new counts would flush them against the new cells.
    Refresh();
    flushPaint();
    if (!ownCells_)
        ownCells_.emplace(std::move(model));
    model = GridModel();
    source_ = std::move(source);
    model.bind(*source_);
    // The undo history was made in the old cells: undone in the new ones it
    // would put texts and row orders into rows they never had.
    undoStack.clear();
    scrollBarsHome();
    followCounts();
}

// The view and its scroll bars start over at the first cell: a bar left at
// the old position would scroll the new cells there.
void Grid::scrollBarsHome()
{
    viewport.scrollHome();
    ui.scrVertical.setValue(1);
    ui.scrHorizontal.setValue(1);
}

void Grid::unbindCells()
{
    if (!ownCells_)
        return;
    Refresh();
    flushPaint();
    model = std::move(*ownCells_);
    ownCells_.reset();
    source_.reset();
    undoStack.clear();
    scrollBarsHome();
    followCounts();
}

void Grid::sourceRowsInserted(int32_t first, int32_t last)
{
    const int32_t count = last - first + 1;
    const navigation::CellBlock block = selection.block();
    selection.setRow(shifted(selection.row(), first, count));
    selection.setBlock({shifted(block.row1, first, count), block.col1, shifted(block.row2, first, count), block.col2});
    followCounts();
}

void Grid::sourceRowsRemoved(int32_t first, int32_t last)
{
    const int32_t count = first - last - 1;
    const navigation::CellBlock block = selection.block();
    selection.setRow(shifted(selection.row(), first, count));
    selection.setBlock({shifted(block.row1, first, count), block.col1, shifted(block.row2, first, count), block.col2});
    followCounts();
}

void Grid::sourceChanged() { followCounts(); }

void Grid::followCounts()
{
    if (model.bound())
        model.followSource();
    if (model.writingSource())
        return;
    setRowsMax(model.rows().count());
    ui.scrHorizontal.setMax(to16(model.cols().count()));
    selection.clampRows(model.rows().count());
    selection.pullBackColumns(model.cols().count());
    Refresh();
}

// Callers set the bar before the model: a count the cells cannot hold fails
// here, before either changes.
void Grid::setRowsMax(int64_t rows)
{
    ui.scrVertical.setMax(model.checkedRowCount(rows));
}

}  // namespace TabulaControl::detail
