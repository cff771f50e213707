#include "state/Selection.h"

#include <algorithm>

namespace TabulaControl::detail::navigation {

void Selection::moveToAnchor()
{
    if (block_.col1 > 0)
        setCol(block_.col1);
    if (block_.row1 > 0)
        setRow(block_.row1);
}

void Selection::startAtFirstCell()
{
    setCurrent({1, 1});
    setBlock({1, 1, 1, 1});
}

void Selection::selectWholeRow(int32_t row, int32_t lastCol)
{
    setBlock({row, 0, row, lastCol});
    revision_.set(rowsSelected_, true);
}

void Selection::selectWholeColumn(int32_t col, int32_t lastRow)
{
    setBlock({0, col, lastRow, col});
    revision_.set(columnsSelected_, true);
}

void Selection::selectAll(int32_t lastRow, int32_t lastCol)
{
    setBlock({1, 1, lastRow, lastCol});
    revision_.set(rowsSelected_, true);
    revision_.set(columnsSelected_, true);
}

void Selection::pullBackRows(int32_t lastRow)
{
    if (current_.row > lastRow) {
        setRow(lastRow);
        setRow1(lastRow);
        setRow2(lastRow);
    }
}

void Selection::pullBackColumns(int32_t lastCol)
{
    if (current_.col > lastCol) {
        setCol(lastCol);
        setCol1(lastCol);
        setCol2(lastCol);
    }
}

void Selection::clampRows(int32_t lastRow)
{
    setRow(std::min(current_.row, lastRow));
    setRow1(std::min(block_.row1, lastRow));
    setRow2(std::min(block_.row2, lastRow));
}

void Selection::appendState(std::vector<int64_t>& state) const
{
    state.insert(state.end(), {current_.row, current_.col, block_.row1, block_.col1, block_.row2, block_.col2,
                           rowsSelected_, columnsSelected_, allowed_, mode_});
}

}  // namespace TabulaControl::detail::navigation
