#include "grid/Navigation.h"
#include "state/DateMask.h"
#include "state/DateText.h"

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// A grid that already has the most rows a count can hold gets no new one.
void addRowBeforeEditing(Grid& g)
{
    const int32_t rows = g.model.rows().count();
    if (g.selection.row() != rows || !g.model.rowEmpty(rows) || !g.editorState.addsRowOnEdit() || rows >= INT16_MAX)
        return;
    bool cancel = false;
    g.events.BeforeAddRow(cancel);
    if (cancel)
        return;
    g.setRows(to32(int64_t{g.model.rows().count()} + 1));
    g.noteAddedRow(g.model.rows().count());
    g.events.AfterAddRow(g.model.rows().count());
}

void openEditor(Grid& g, int16_t keyAscii)
{
    platform::Editor& edit = g.ui.txtEdit;
    const QString text = g.model.text(g.selection.row(), g.selection.col());
    edit.setText(text);
    edit.setSelection(static_cast<int32_t>(text.size()), 0);
    edit.setFont(*g.appearance.editorFont());
    edit.setColors(0xFFFFFF, 0);
    edit.setVisible(true);
    const int16_t maxLength = g.model.columns().editWidth(g.selection.col());
    edit.setMaxLength(maxLength >= 0 ? maxLength : 0);
    if (g.editorState.selectsTextOnOpen())
        edit.setSelection(0, static_cast<int32_t>(text.size()));
    edit.ZOrderFront();
    edit.SetFocus();
    if (keyAscii > 32)
        edit.typeKey(keyAscii);
}

void closeEditor(Grid& g)
{
    const bool hadFocus = g.ui.txtEdit.HasFocus();
    g.editorState.close();
    g.ui.txtEdit.setVisible(false);
    g.ui.txtEdit.ZOrderBack();
    if (hadFocus)
        g.ui.picGrid.SetFocus();
}

}  // namespace

void Grid::startEdit(int16_t keyAscii)
{
    // A current cell the host moved out of the grid cannot be edited.
    const CellIndex cell = selection.current();
    if (cell.row < 1 || cell.col < 1 || !model.hasCell(cell.row, cell.col))
        return;
    bool cancel = false;
    events.BeforeEdit(cell.row, cell.col, cancel);
    if (cancel || !model.columns().editAllowed(selection.col()) || editorState.isOpen())
        return;
    hideFocus();
    addRowBeforeEditing(*this);
    editorState.open();
    if (ColHasLookup(selection.col())) {
        editorState.close();
        openList(keyAscii);
        return;
    }
    openEditor(*this, keyAscii);
}

void Grid::raiseAfterEdit()
{
    const CellIndex cell = selection.current();
    if (model.hasCell(cell.row, cell.col))
        events.AfterEdit(cell.row, cell.col, Text());
}

void Grid::storeEditorText()
{
    const CellIndex cell = selection.current();
    if (!model.hasCell(cell.row, cell.col))
        return;
    if (editorState.cancelledBy([&](bool& cancel) { events.BeforeEdit(cell.row, cell.col, cancel); }))
        return;
    const int32_t col = selection.col();
    storeUserText(selection.row(), col, Validate(ui.txtEdit.Text(), col));
}

void Grid::repaintEditedCell(bool highlight)
{
    withLineSelectionLifted([this] { redrawCell(selection.row(), selection.col()); });
    drawGridBorder();
    if (highlight)
        showFocus();
}

void Grid::commitAndReport(int16_t keyCode)
{
    storeEditorText();
    closeEditor(*this);
    repaintEditedCell(true);
    ui.picGrid.postKey(keyCode);
    raiseAfterEdit();
}

void Grid::endEdit()
{
    storeEditorText();
    closeEditor(*this);
    raiseAfterEdit();
}

void Grid::hideEditor()
{
    if (!ColHasLookup(selection.col()))
        storeEditorText();
    if (ui.txtEdit.Visible()) {
        ui.txtEdit.setVisible(false);
        if (editorState.isOpen())
            raiseAfterEdit();
    }
    ui.txtEdit.ZOrderBack();
    editorState.close();
    repaintEditedCell(false);
}

void Grid::onEditorKeyDown(int16_t keyCode, int16_t)
{
    if (!editorState.isOpen())
        return;
    if (keyCode == VkEnter || keyCode == VkUp || keyCode == VkDown) {
        commitAndReport(keyCode);
    } else if (keyCode == VkEscape) {
        cancelEdit();
    }
}

void Grid::cancelEdit()
{
    if (!editorState.isOpen())
        return;
    closeEditor(*this);
    repaintEditedCell(true);
}

void Grid::onEditorCharacter(int16_t& keyAscii)
{
    switch (model.columns().mask(selection.col())) {
    case Uppercase:
        keyAscii = static_cast<int16_t>(QChar(static_cast<char16_t>(keyAscii)).toUpper().unicode());
        return;
    case NumericOnly: {
        const bool accepted = (keyAscii >= '0' && keyAscii <= '9') || keyAscii == '-' || keyAscii == '.' || keyAscii == 8;
        if (!accepted)
            keyAscii = 0;
        return;
    }
    case DateOnly: {
        const QString text = dateMasked(keyAscii, ui.txtEdit.Text());
        ui.txtEdit.setText(text);
        ui.txtEdit.setSelection(static_cast<int32_t>(text.size()), 0);
        return;
    }
    default:
        return;
    }
}

void Grid::onEditorFocusLost()
{
    if (editorState.isOpen())
        commitAndReport(0);
}

void Grid::setColEditWidth(int32_t col, int32_t value)
{
    if (col < 0 || col > model.cols().count() || value < 0)
        return;
    model.columns().setEditWidth(col, to16(value));
    Refresh();
}

QString Grid::Validate(const QString& text, int32_t col) const
{
    if (model.columns().mask(col) != DateOnly)
        return text;
    const QDate date = parseDateText(text);
    return date.isValid() ? date.toString(QStringLiteral("MM/dd/yyyy")) : QString();
}

}  // namespace TabulaControl::detail
