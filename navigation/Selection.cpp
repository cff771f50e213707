#include "navigation/Selection.h"

#include <algorithm>

namespace TabulaControl::detail::navigation {

void Selection::moveToAnchor()
{
    if (block_.col1 > 0)
        current_.col = block_.col1;
    if (block_.row1 > 0)
        current_.row = block_.row1;
}

void Selection::startAtFirstCell()
{
    current_ = {1, 1};
    block_ = {1, 1, 1, 1};
}

void Selection::selectWholeRow(int32_t row, int32_t lastCol)
{
    block_ = {row, 0, row, lastCol};
    rowsSelected_ = true;
}

void Selection::selectWholeColumn(int32_t col, int32_t lastRow)
{
    block_ = {0, col, lastRow, col};
    columnsSelected_ = true;
}

void Selection::selectAll(int32_t lastRow, int32_t lastCol)
{
    block_ = {1, 1, lastRow, lastCol};
    rowsSelected_ = columnsSelected_ = true;
}

void Selection::pullBackRows(int32_t lastRow)
{
    if (current_.row > lastRow)
        current_.row = block_.row1 = block_.row2 = lastRow;
}

void Selection::pullBackColumns(int32_t lastCol)
{
    if (current_.col > lastCol)
        current_.col = block_.col1 = block_.col2 = lastCol;
}

void Selection::clampRows(int32_t lastRow)
{
    current_.row = std::min(current_.row, lastRow);
    block_.row1 = std::min(block_.row1, lastRow);
    block_.row2 = std::min(block_.row2, lastRow);
}

void Selection::appendLayoutKey(std::vector<int64_t>& key) const
{
    key.insert(key.end(), {current_.row, current_.col, block_.row1, block_.col1, block_.row2, block_.col2,
                           rowsSelected_, columnsSelected_, allowed_, mode_});
}

}  // namespace TabulaControl::detail::navigation
