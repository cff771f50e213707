#include "grid/Grid.h"
#include "state/DateMask.h"

namespace TabulaControl::detail {

namespace {

constexpr int16_t VkEnter = 13;
constexpr int16_t VkEscape = 27;
constexpr int16_t VkUp = 38;
constexpr int16_t VkDown = 40;

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
    addRowBeforeEditing();
    editorState.open();
    if (ColHasLookup(selection.col())) {
        editorState.close();
        openList(keyAscii);
        return;
    }
    openEditor(keyAscii);
}

// A grid that already has the most rows a count can hold gets no new one.
void Grid::addRowBeforeEditing()
{
    if (selection.row() != model.rows().count() || !RowEmpty(selection.row()) || !editorState.addsRowOnEdit() ||
        model.rows().count() >= INT16_MAX)
        return;
    bool cancel = false;
    events.BeforeAddRow(cancel);
    if (cancel)
        return;
    setRows(to32(int64_t{model.rows().count()} + 1));
    events.AfterAddRow(model.rows().count());
}

void Grid::openEditor(int16_t keyAscii)
{
    const QString text = model.cells().Text(to16(selection.row()), to16(selection.col()));
    ui.txtEdit.setText(text);
    ui.txtEdit.setSelection(static_cast<int32_t>(text.size()), 0);
    ui.txtEdit.setFont(*appearance.editorFont());
    ui.txtEdit.setColors(0xFFFFFF, 0);
    ui.txtEdit.setVisible(true);
    const int16_t maxLength = model.columns().editWidth(selection.col());
    ui.txtEdit.setMaxLength(maxLength >= 0 ? maxLength : 0);
    if (editorState.selectsTextOnOpen())
        ui.txtEdit.setSelection(0, static_cast<int32_t>(text.size()));
    ui.txtEdit.ZOrderFront();
    ui.txtEdit.SetFocus();
    if (keyAscii > 32)
        ui.txtEdit.typeKey(keyAscii);
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
    model.cells().setText(to16(selection.row()), to16(col), Validate(ui.txtEdit.Text(), col));
}

void Grid::closeEditor()
{
    const bool hadFocus = ui.txtEdit.HasFocus();
    editorState.close();
    ui.txtEdit.setVisible(false);
    ui.txtEdit.ZOrderBack();
    if (hadFocus)
        ui.picGrid.SetFocus();
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
    closeEditor();
    repaintEditedCell(true);
    ui.picGrid.postKey(keyCode);
    raiseAfterEdit();
}

void Grid::endEdit()
{
    storeEditorText();
    closeEditor();
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
    switch (keyCode) {
    case VkEnter:
    case VkUp:
    case VkDown:
        commitAndReport(keyCode);
        return;
    case VkEscape:
        closeEditor();
        repaintEditedCell(true);
        return;
    default:
        return;
    }
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
        const QString text = DateMask().Mask(keyAscii, ui.txtEdit.Text());
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

}  // namespace TabulaControl::detail
