#pragma once

#include <TabulaControl/Tabula.h>

#include "state/Revision.h"

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::navigation {

// A cell by its row and column.
struct CellIndex {
    int32_t row = 0;
    int32_t col = 0;
    bool operator==(const CellIndex&) const = default;
};

// The selected block as stored: (row1, col1) is the anchor, where the
// selection started, and (row2, col2) the corner that moves. Either corner
// may lie before the other.
struct CellBlock {
    int32_t row1 = 0, col1 = 0, row2 = 0, col2 = 0;
    bool operator==(const CellBlock&) const = default;
};

// The current cell and the selection of one grid. Positions are kept as
// they are given: a host may place them outside the grid, and they stay
// there until something moves them.
class Selection {
public:
    int32_t row() const { return current_.row; }
    int32_t col() const { return current_.col; }
    CellIndex current() const { return current_; }
    void setRow(int32_t row) { revision_.set(current_.row, row); }
    void setCol(int32_t col) { revision_.set(current_.col, col); }
    void setCurrent(CellIndex cell) { revision_.set(current_, cell); }

    const CellBlock& block() const { return block_; }
    void setBlock(const CellBlock& block) { revision_.set(block_, block); }
    void setRow1(int32_t row) { revision_.set(block_.row1, row); }
    void setCol1(int32_t col) { revision_.set(block_.col1, col); }
    void setRow2(int32_t row) { revision_.set(block_.row2, row); }
    void setCol2(int32_t col) { revision_.set(block_.col2, col); }
    // Whether the block holds more than its anchor cell.
    bool isBlock() const { return block_.row1 != block_.row2 || block_.col1 != block_.col2; }
    // Makes cell both corners of the block.
    void anchorAt(CellIndex cell) { setBlock({cell.row, cell.col, cell.row, cell.col}); }
    void setCorner(CellIndex cell)
    {
        setRow2(cell.row);
        setCol2(cell.col);
    }
    // Moves the current cell to the anchor, on each axis where the anchor
    // lies past the header.
    void moveToAnchor();
    // Makes the current cell and both corners of the block the first data
    // cell; whole-line selections stay as they were.
    void startAtFirstCell();

    // Whole lines selected by a press on a header: the block becomes one row
    // with the header column up to lastCol, one column with the header row
    // up to lastRow, or every data cell.
    void selectWholeRow(int32_t row, int32_t lastCol);
    void selectWholeColumn(int32_t col, int32_t lastRow);
    void selectAll(int32_t lastRow, int32_t lastCol);
    void selectCurrentRow(int32_t lastCol) { selectWholeRow(current_.row, lastCol); }
    void selectCurrentColumn(int32_t lastRow) { selectWholeColumn(current_.col, lastRow); }
    bool rowsSelected() const { return rowsSelected_; }
    bool columnsSelected() const { return columnsSelected_; }
    bool linesSelected() const { return rowsSelected_ || columnsSelected_; }
    void clearLineSelection()
    {
        revision_.set(rowsSelected_, false);
        revision_.set(columnsSelected_, false);
    }

    // When the current row lies past lastRow, it moves onto lastRow and both
    // rows of the block with it, wherever they were; likewise for columns.
    void pullBackRows(int32_t lastRow);
    void pullBackColumns(int32_t lastCol);
    // Moves the current row and each row of the block that lies past lastRow
    // back onto it.
    void clampRows(int32_t lastRow);

    // AllowSelection, and SelectionMode as the host stored it.
    bool allowed() const { return allowed_; }
    void setAllowed(bool value) { revision_.set(allowed_, value); }
    int16_t mode() const { return mode_; }
    void setMode(int16_t mode) { revision_.set(mode_, mode); }
    void restoreDefaultSettings()
    {
        setAllowed(true);
        setMode(SelectionFree);
    }
    // Whether users select whole rows, whole columns, either, or free blocks.
    bool selectsRows() const { return allowed_ && mode_ == SelectionByRow; }
    bool selectsColumns() const { return allowed_ && mode_ == SelectionByCol; }
    bool selectsLines() const { return allowed_ && mode_ >= SelectionByRow; }
    bool selectsFreely() const { return allowed_ && mode_ == SelectionFree; }

    // Changes with every change above.
    uint64_t revision() const { return revision_.value(); }
    // Appends the values above, which the cache checks compare.
    void appendState(std::vector<int64_t>& state) const;

private:
    CellIndex current_;
    CellBlock block_;
    bool rowsSelected_ = false;
    bool columnsSelected_ = false;
    bool allowed_ = true;
    int16_t mode_ = SelectionFree;
    Revision revision_;
};

}  // namespace TabulaControl::detail::navigation
