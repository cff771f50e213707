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
    const navigation::CellBlock block = selection.block();
    std::vector<int32_t> followed{selection.row(), block.row1, block.row2};
    model.sortSource(col, descending, followed);
    selection.setRow(followed[0]);
    selection.setRow1(followed[1]);
    selection.setRow2(followed[2]);
    appearance.setSortIndicator(col, descending);
    Refresh();
}

void Grid::reorderRows(const std::vector<int32_t>& order)
{
    model.permuteRows(order);
    const std::vector<int32_t> moved = newIndexes(order);
    const auto follow = [&moved](int32_t row) {
        return row >= 1 && static_cast<size_t>(row) < moved.size() ? moved[static_cast<size_t>(row)] : row;
    };
    selection.setRow(follow(selection.row()));
    selection.setRow1(follow(selection.block().row1));
    selection.setRow2(follow(selection.block().row2));
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
