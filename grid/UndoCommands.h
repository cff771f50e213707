#pragma once

#include <QString>
#include <QUndoCommand>

#include <cstdint>
#include <vector>

namespace TabulaControl::detail {

class Grid;

// One cell a user changed, with its text before and after.
struct CellChange {
    int32_t row = 0;
    int32_t col = 0;
    QString before;
    QString after;
};

// The cells one user action changed, and the row AutoNewRow added for it (0
// when none). The change is made before the command is pushed, so the push
// applies nothing.
class CellEdits : public QUndoCommand {
public:
    CellEdits(Grid& grid, std::vector<CellChange> changes, int32_t addedRow);

    void undo() override;
    void redo() override;
    int id() const override { return 1; }
    // A row AutoNewRow added takes the edit of the row above it that made
    // it, so one undo takes back the typing and the row together.
    bool mergeWith(const QUndoCommand* other) override;

private:
    Grid& grid_;
    std::vector<CellChange> changes_;
    int32_t addedRow_;
    bool pushed_ = false;
};

// A sort: the rows' new order, row i + 1 being old row order[i]. Recorded
// so that the edits before it are undone in the rows they were made in.
class RowOrder : public QUndoCommand {
public:
    RowOrder(Grid& grid, std::vector<int32_t> order);

    void undo() override;
    void redo() override;

private:
    Grid& grid_;
    std::vector<int32_t> order_;
    bool pushed_ = false;
};

// Gathers the user's changes made in its scope into one command, pushed when
// the outermost scope ends.
class UserEdit {
public:
    explicit UserEdit(Grid& grid);
    ~UserEdit();
    UserEdit(const UserEdit&) = delete;
    UserEdit& operator=(const UserEdit&) = delete;

private:
    Grid& grid_;
};

}  // namespace TabulaControl::detail
