#include "grid/UndoCommands.h"

#include "grid/Grid.h"
#include "grid/Navigation.h"

#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace TabulaControl::detail {

CellEdits::CellEdits(Grid& grid, std::vector<CellChange> changes, int32_t addedRow)
    : grid_(grid), changes_(std::move(changes)), addedRow_(addedRow)
{
}

void CellEdits::undo()
{
    grid_.runUndoStep([this] { grid_.restoreCells(changes_, true, addedRow_); });
}

void CellEdits::redo()
{
    if (!std::exchange(pushed_, true))
        return;
    grid_.runUndoStep([this] { grid_.restoreCells(changes_, false, addedRow_); });
}

bool CellEdits::mergeWith(const QUndoCommand* other)
{
    const auto* next = static_cast<const CellEdits*>(other);
    const auto inEditedRow = [this](const CellChange& c) { return c.row == addedRow_ - 1; };
    if (addedRow_ == 0 || !changes_.empty() || next->addedRow_ != 0 ||
        !std::all_of(next->changes_.begin(), next->changes_.end(), inEditedRow))
        return false;
    changes_ = next->changes_;
    return true;
}

RowOrder::RowOrder(Grid& grid, std::vector<int32_t> order) : grid_(grid), order_(std::move(order)) {}

void RowOrder::undo()
{
    grid_.runUndoStep([this] { grid_.restoreRowOrder(order_, true); });
}

void RowOrder::redo()
{
    if (!std::exchange(pushed_, true))
        return;
    grid_.runUndoStep([this] { grid_.restoreRowOrder(order_, false); });
}

UserEdit::UserEdit(Grid& grid) : grid_(grid) { ++grid_.userEditDepth_; }

UserEdit::~UserEdit()
{
    if (--grid_.userEditDepth_ == 0)
        grid_.pushUserEdit();
}

void Grid::storeUserText(int32_t row, int32_t col, const QString& text)
{
    const QString before = TextMatrix(row, col);
    model.setText(row, col, text);
    if (restoringCells_)
        return;
    const QString after = TextMatrix(row, col);
    if (after != before)
        pendingChanges_.push_back({row, col, before, after});
    if (userEditDepth_ == 0)
        pushUserEdit();
}

void Grid::noteAddedRow(int32_t row)
{
    pendingAddedRow_ = row;
    if (userEditDepth_ == 0)
        pushUserEdit();
}

void Grid::pushUserEdit()
{
    if (pendingChanges_.empty() && pendingAddedRow_ == 0)
        return;
    std::vector<CellChange> changes = std::exchange(pendingChanges_, {});
    undoStack.push(new CellEdits(*this, std::move(changes), std::exchange(pendingAddedRow_, 0)));
}

// An open editor or list is dropped first: what it holds was never stored.
// Cells the host has since removed are left out.
void Grid::restoreCells(const std::vector<CellChange>& changes, bool undo, int32_t addedRow)
{
    cancelEdit();
    hideList();
    restoringCells_ = true;
    const auto restoring = qScopeGuard([this] { restoringCells_ = false; });
    {
        const RedrawDeferred deferred(*this);
        if (!undo && addedRow > 0 && model.rows().count() == addedRow - 1)
            setRows(addedRow);
        const auto restore = [&](const CellChange& c) {
            if (!model.hasCell(c.row, c.col))
                return;
            model.setText(c.row, c.col, undo ? c.before : c.after);
            events.AfterEdit(c.row, c.col, TextMatrix(c.row, c.col));
        };
        if (undo)
            std::for_each(changes.rbegin(), changes.rend(), restore);
        else
            std::for_each(changes.begin(), changes.end(), restore);
        // Rows alone pulls back only a current cell past the end; a block
        // that reached into the removed row must leave it too.
        if (undo && addedRow > 0 && model.rows().count() == addedRow) {
            setRows(addedRow - 1);
            selection.clampRows(addedRow - 1);
        }
    }
    redrawIfAuto();
}

}  // namespace TabulaControl::detail
