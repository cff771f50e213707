#include "state/TabSeparated.h"
#include "api/Facade.h"

#include <QKeyEvent>

namespace TabulaControl::detail {

namespace {

enum class SheetAction { None, Edit, Clear, First, Last, Ignore, Copy, Cut, Paste, Undo, Redo, Down, Right, Left };

SheetAction surfaceAction(const QKeyEvent& e)
{
    const Qt::KeyboardModifiers mods = e.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    const int key = e.key();
    if (mods == Qt::NoModifier) {
        switch (key) {
        case Qt::Key_F2: return SheetAction::Edit;
        case Qt::Key_Delete: return SheetAction::Clear;
        case Qt::Key_Escape: return SheetAction::Ignore;
        default: return SheetAction::None;
        }
    }
    if (mods == (Qt::ControlModifier | Qt::ShiftModifier))
        return key == Qt::Key_Z ? SheetAction::Redo : SheetAction::None;
    if (mods != Qt::ControlModifier)
        return SheetAction::None;
    switch (key) {
    case Qt::Key_Home: return SheetAction::First;
    case Qt::Key_End: return SheetAction::Last;
    case Qt::Key_C: return SheetAction::Copy;
    case Qt::Key_X: return SheetAction::Cut;
    case Qt::Key_V: return SheetAction::Paste;
    case Qt::Key_Z: return SheetAction::Undo;
    case Qt::Key_Y: return SheetAction::Redo;
    default: return SheetAction::None;
    }
}

SheetAction editorAction(const QKeyEvent& e)
{
    const Qt::KeyboardModifiers mods = e.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    switch (e.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return mods == Qt::NoModifier ? SheetAction::Down : SheetAction::None;
    case Qt::Key_Tab: return mods == Qt::NoModifier ? SheetAction::Right : SheetAction::None;
    case Qt::Key_Backtab: return mods == Qt::ShiftModifier ? SheetAction::Left : SheetAction::None;
    default: return SheetAction::None;
    }
}

// The keys of a spreadsheet on the surface and in the editor, taken before
// the child sees them (and their release with them) while the grid's
// spreadsheetKeys is on.
class SheetKeys : public QObject {
public:
    using Runner = std::function<void(const char*, const std::function<void()>&)>;

    SheetKeys(Tabula& owner, Grid& grid, Runner run) : owner_(owner), grid_(grid), run_(std::move(run))
    {
        for (QWidget* child : {grid.ui.picGrid.widget(), grid.ui.txtEdit.widget()})
            if (child)
                child->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* target, QEvent* event) override
    {
        if (!grid_.spreadsheetKeys)
            return false;
        const bool inEditor = target == grid_.ui.txtEdit.widget();
        switch (event->type()) {
        case QEvent::ShortcutOverride:
            if (actionOf(*static_cast<QKeyEvent*>(event), inEditor) == SheetAction::None)
                return false;
            event->accept();
            return true;
        case QEvent::KeyPress:
            return handlePress(*static_cast<QKeyEvent*>(event), inEditor);
        case QEvent::KeyRelease:
            return swallowRelease(*static_cast<QKeyEvent*>(event));
        default:
            return false;
        }
    }

private:
    static SheetAction actionOf(const QKeyEvent& e, bool inEditor)
    {
        return inEditor ? editorAction(e) : surfaceAction(e);
    }

    bool handlePress(const QKeyEvent& e, bool inEditor)
    {
        const SheetAction action = actionOf(e, inEditor);
        if (action == SheetAction::None)
            return false;
        swallowedKey_ = e.key();
        run_(inEditor ? "txtEdit_KeyDown" : "picGrid_KeyDown", [&] { perform(action); });
        return true;
    }

    void perform(SheetAction action)
    {
        switch (action) {
        case SheetAction::Edit: return grid_.editAtEnd();
        case SheetAction::Clear: return grid_.clearCells(selectedBlock(owner_));
        case SheetAction::First: return grid_.goToCorner(false);
        case SheetAction::Last: return grid_.goToCorner(true);
        case SheetAction::Copy: return owner_.copySelection();
        case SheetAction::Cut: return owner_.cut();
        case SheetAction::Paste: owner_.paste(); return;
        case SheetAction::Undo: return grid_.undoStack.undo();
        case SheetAction::Redo: return grid_.undoStack.redo();
        case SheetAction::Down: return grid_.commitAndGoDown();
        case SheetAction::Right: return grid_.commitAndTab(false);
        case SheetAction::Left: return grid_.commitAndTab(true);
        case SheetAction::None:
        case SheetAction::Ignore: return;
        }
    }

    bool swallowRelease(const QKeyEvent& e)
    {
        if (swallowedKey_ == 0 || e.key() != swallowedKey_)
            return false;
        if (!e.isAutoRepeat())
            swallowedKey_ = 0;
        return true;
    }

    Tabula& owner_;
    Grid& grid_;
    Runner run_;
    int swallowedKey_ = 0;
};

}  // namespace

}  // namespace TabulaControl::detail

namespace TabulaControl {

void Tabula::wireSheetEditing()
{
    auto run = [this](const char* procedure, const std::function<void()>& body) { notify(procedure, body); };
    grid_->runUndoStep = [this](const std::function<void()>& body) { notify("undoStack", body); };
    grid_->sheetKeyFilter = std::make_unique<detail::SheetKeys>(*this, *grid_, run);
}

QUndoStack* Tabula::undoStack() const { return &grid_->undoStack; }

bool Tabula::spreadsheetKeys() const { return grid_->spreadsheetKeys; }

void Tabula::setSpreadsheetKeys(bool value)
{
    changeProperty("SpreadsheetKeys", [&] { grid_->spreadsheetKeys = value; });
}

void Tabula::sort(int32_t col, Qt::SortOrder order)
{
    repaintingCall("sort", [&] { grid_->sort(col, order); });
}

bool Tabula::sortOnHeaderClick() const { return grid_->sortOnHeaderClick; }

void Tabula::setSortOnHeaderClick(bool value)
{
    changeProperty("SortOnHeaderClick", [&] { grid_->sortOnHeaderClick = value; });
}

}  // namespace TabulaControl
