#include "grid/Navigation.h"

#include <algorithm>

namespace TabulaControl::detail {

using namespace navigation;

namespace {

// The text a user typing value into the column's editor would get: the
// key rule of the column's mask, then the editor's maximum length.
QString typedText(const GridModel& model, int32_t col, const QString& value)
{
    QString typed;
    for (QChar c : value) {
        if (model.columns().mask(col) == Uppercase)
            c = c.toUpper();
        const bool numeric = (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('-') || c == QLatin1Char('.');
        if (model.columns().mask(col) == NumericOnly && !numeric)
            continue;
        typed += c;
    }
    const int16_t maxLength = model.columns().editWidth(col);
    return maxLength > 0 ? typed.left(maxLength) : typed;
}

bool lineShown(int32_t line, int32_t first, int32_t page) { return line >= first && line < first + std::max(page, 1); }

}  // namespace

void Grid::storeAsTyped(int32_t row, int32_t col, const QString& value)
{
    if (!model.columns().editAllowed(col))
        return;
    bool cancel = false;
    events.BeforeEdit(row, col, cancel);
    if (cancel)
        return;
    storeUserText(row, col, Validate(typedText(model, col, value), col));
    events.AfterEdit(row, col, TextMatrix(row, col));
}

void Grid::clearCells(const QRect& block)
{
    if (editorState.isOpen())
        endEdit();
    {
        const UserEdit edit(*this);
        for (int32_t row = block.top(); row <= block.bottom(); ++row)
            for (int32_t col = block.left(); col <= block.right(); ++col)
                storeAsTyped(row, col, QString());
    }
    if (autoRedraw())
        Refresh();
}

void Grid::editAtEnd()
{
    if (model.columns().mask(selection.col()) == checkmark)
        return;
    startEdit(0);
    if (!ui.txtEdit.Visible())
        return;
    const int32_t end = static_cast<int32_t>(ui.txtEdit.Text().size());
    ui.txtEdit.setSelection(end, 0);
}

// Like the paging keys, the new current cell's mark comes with the repaint;
// a line out of view becomes the first one shown.
void Grid::goToCell(int32_t row, int32_t col)
{
    const CellIndex old = selection.current();
    hideEditorBox(*this);
    closeDropDown(*this);
    hideFocus();
    selection.setCurrent({row, col});
    redrawAllCells(true);
    if (!lineShown(row, viewport.topRow(), viewport.pageRows()))
        ui.scrVertical.setValue(row);
    if (!lineShown(col, viewport.leftCol(), viewport.pageCols()))
        ui.scrHorizontal.setValue(to16(col));
    showCellButtons();
    fitSelectionToMode();
    if (selection.current() != old)
        events.RowColChange(old.row, old.col);
}

void Grid::goToCorner(bool last)
{
    const int32_t rows = model.rows().count(), cols = model.cols().count();
    if (rows > 0 && cols > 0)
        goToCell(last ? rows : 1, last ? cols : 1);
}

// Tab past the last column goes on at the first of the next row, Shift+Tab
// before the first at the last of the previous row; at the grid's ends the
// cell stays.
void Grid::commitAndTab(bool back)
{
    if (!editorState.isOpen())
        return;
    commitAndReport(0);
    const int32_t rows = model.rows().count(), cols = model.cols().count();
    int32_t row = selection.row(), col = selection.col() + (back ? -1 : 1);
    if (col < 1 || col > cols) {
        row += back ? -1 : 1;
        col = back ? cols : 1;
    }
    if (row >= 1 && row <= rows)
        goToCell(row, col);
}

void Grid::commitAndGoDown()
{
    if (editorState.isOpen())
        commitAndReport(VkDown);
}

}  // namespace TabulaControl::detail
