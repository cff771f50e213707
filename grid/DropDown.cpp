#include "grid/Grid.h"

namespace TabulaControl::detail {

namespace {

// A list longer than ListBoxRows gets room for all its items; a shorter one
// gets ListBoxRows rows. A row takes 5/3 pixel per point of the font and the
// frame 2 pixels; the sum is rounded to fifteenths of a pixel, then cut.
int32_t listHeight(const Grid& g)
{
    const int32_t rows = g.dropDownSettings.rowsFor(g.ui.listForm.ListCount());
    return roundTo32(rows * (g.ui.listForm.FontSize() * 25) + 30) / 15;
}

// Selects the first item whose first length characters (all of it when
// length is negative) equal text, ignoring case.
void selectListItem(platform::ListForm& form, const QString& text, int32_t length)
{
    const QString wanted = text.toUpper();
    for (int32_t i = 0; i < form.ListCount(); ++i) {
        const QString item = form.List(i).toUpper();
        if ((length < 0 ? item : item.left(length)) == wanted) {
            form.setListIndex(i);
            return;
        }
    }
}

}  // namespace

void Grid::hideList()
{
    if (ui.listForm.Visible())
        ui.listForm.Hide();
}

void Grid::openList(int16_t keyAscii)
{
    editorState.close();
    if (!ui.cmdLookup.Visible())
        return;
    fillList(selection.col());
    auto& form = ui.listForm;
    if (form.Visible()) {
        form.Hide();
        ui.picGrid.SetFocus();
        return;
    }
    ui.cmdLookup.SetFocus();
    const QRect button = platform::screenRect(ui.cmdLookup.widget());
    const int32_t colWidth = model.cols().size(selection.col());
    form.setListSize(colWidth - 1, listHeight(*this));
    const int32_t height = form.ListHeight();
    form.setListIndex(0);
    selectListItem(form, Text(), -1);
    if (keyAscii >= 33 && keyAscii <= 126)
        selectListItem(form, QString(QChar(static_cast<char16_t>(keyAscii))), 1);
    form.Place(QRect(button.left() - colWidth + button.width() + 1, button.top() + button.height(), colWidth, height));
    form.Show();
    form.setTimer(1, true);
    form.FocusList();
}

void Grid::pickListValue()
{
    editorState.close();
    const int32_t index = ui.listForm.ListIndex();
    QString text = Text();
    if (index >= 0) {
        const QString item = ui.listForm.List(index);
        text = dropDownSettings.picksItemData() ? LookupItemData(selection.col(), item).toString() : item;
    }
    storeUserText(selection.row(), selection.col(), Validate(text, selection.col()));
    redrawIfAuto();
    onListFocusLost();
    raiseAfterEdit();
}

void Grid::onListKeyDown(int16_t keyCode, int16_t)
{
    if (keyCode == 13)
        return pickListValue();
    if (keyCode != 27)
        return;
    editorState.close();
    hideList();
    ui.picGrid.SetFocus();
}

void Grid::onListMouseRelease(int16_t button, int16_t, float, float)
{
    if (button == 1)
        pickListValue();
}

void Grid::onListFocusLost()
{
    hideList();
    ui.picGrid.SetFocus();
    repaintEditedCell(true);
}

// Closes the list once its focus has come and gone elsewhere: quietly when another
// window took it, with the grid's repaint when it went back to the grid.
void Grid::closeListIfFocusLeft()
{
    auto& form = ui.listForm;
    if (!form.focusHasLeft())
        return;
    const bool backToGrid = form.GridWindowActive();
    if (backToGrid)
        form.RaiseGridWindow();
    form.Hide();
    form.setTimer(0, false);
    if (backToGrid)
        onListFocusLost();
}

// Places the drop-down button and the column button at the right end of the
// current cell. Only cells scrolled off to the left or above lose them; a
// cell past the right or bottom edge keeps its buttons where the surface
// clips them.
void Grid::showCellButtons()
{
    const CellIndex cell = selection.current();
    int32_t x = 0, y = 0;
    cellCoordinates(cell.row, cell.col, x, y);
    const bool inView = cell.col > 0 && cell.row > 0 && !viewport.isScrolledOff(cell.row, cell.col) &&
                        model.hasCell(cell.row, cell.col);
    const int32_t w = ui.cmdLookup.Width();
    const auto place = [&](platform::Child& button, bool shown) {
        if (shown) {
            const int32_t right = to32(int64_t{x} + model.cols().size(cell.col) - w + 1);
            button.Move(right, to32(int64_t{y} + 3), w, model.rows().size(cell.row) - 2);
        }
        button.setVisible(shown);
    };
    place(ui.cmdLookup, inView && ColHasLookup(cell.col));
    place(ui.cmdButton, inView && ColHasButton(cell.col));
}

}  // namespace TabulaControl::detail
