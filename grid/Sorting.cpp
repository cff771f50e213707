#include "grid/Navigation.h"
#include "state/SortKeys.h"

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// Where each row of the old order went: the new index of row r is at r.
std::vector<int32_t> newIndexes(const std::vector<int32_t>& order)
{
    std::vector<int32_t> moved(order.size() + 1, 0);
    for (size_t i = 0; i < order.size(); ++i)
        moved[static_cast<size_t>(order[i])] = static_cast<int32_t>(i) + 1;
    return moved;
}

// The rows the current cell and the block sit on, and putting them back
// where their records went.
std::vector<int32_t> selectedRows(const Selection& selection)
{
    return {selection.row(), selection.block().row1, selection.block().row2};
}

void moveSelectedRows(Selection& selection, const std::vector<int32_t>& rows)
{
    selection.setRow(rows[0]);
    selection.setRow1(rows[1]);
    selection.setRow2(rows[2]);
}

}  // namespace

void Grid::sort(int32_t col, Qt::SortOrder order)
{
    if (col < 1 || col > model.cols().count())
        raise(RuntimeError::Subscript);
    if (editorState.isOpen())
        endEdit();
    closeDropDown(*this);
    const bool descending = order == Qt::DescendingOrder;
    if (model.bound()) {
        sortBoundRows(col, descending);
        return;
    }
    const int32_t rows = model.rows().count();
    std::vector<QString> texts;
    texts.reserve(static_cast<size_t>(std::max(rows, 0)));
    for (int32_t row = 1; row <= rows; ++row)
        texts.push_back(model.text(row, col));
    std::vector<int32_t> rowOrder = sortedOrder(texts, sortKindOf(texts, model.columns().mask(col)), descending);
    for (int32_t& row : rowOrder)
        ++row;
    reorderRows(rowOrder);
    appearance.setSortIndicator(col, descending);
    if (!restoringCells_)
        undoStack.push(new RowOrder(*this, std::move(rowOrder)));
    Refresh();
}

void Grid::sortBoundRows(int32_t col, bool descending)
{
    std::vector<int32_t> followed = selectedRows(selection);
    model.sortSource(col, descending, followed);
    moveSelectedRows(selection, followed);
    appearance.setSortIndicator(col, descending);
    Refresh();
}

void Grid::reorderRows(const std::vector<int32_t>& order)
{
    model.permuteRows(order);
    const std::vector<int32_t> moved = newIndexes(order);
    std::vector<int32_t> followed = selectedRows(selection);
    for (int32_t& row : followed) {
        if (row >= 1 && static_cast<size_t>(row) < moved.size())
            row = moved[static_cast<size_t>(row)];
    }
    moveSelectedRows(selection, followed);
}

// The rows are put back as they were only while the grid has as many as
// the sort ordered; a grid whose rows the host changed since keeps them.
void Grid::restoreRowOrder(const std::vector<int32_t>& order, bool undo)
{
    if (static_cast<size_t>(model.rows().count()) != order.size())
        return;
    cancelEdit();
    hideList();
    if (undo) {
        // Old row r is at newIndexes(order)[r]: that row goes back to r.
        std::vector<int32_t> back = newIndexes(order);
        back.erase(back.begin());
        reorderRows(back);
    } else {
        reorderRows(order);
    }
    redrawIfAuto();
}

void Grid::sortByHeader(int32_t col)
{
    const bool again = appearance.sortColumn() == col && !appearance.sortDescending();
    sort(col, again ? Qt::DescendingOrder : Qt::AscendingOrder);
}

}  // namespace TabulaControl::detail
