#include "grid/Navigation.h"

namespace TabulaControl::detail::navigation {

bool hideEditorBox(Grid& g)
{
    if (!g.ui.txtEdit.Visible())
        return false;
    g.withLineSelectionLifted([&g] { g.ui.txtEdit.setVisible(false); });
    return true;
}

void closeDropDown(Grid& g)
{
    g.hideList();
    g.ui.cmdLookup.setVisible(false);
    g.showCellButtons();
}

void redrawCurrentCell(Grid& g)
{
    g.redrawCell(g.selection.row(), g.selection.col());
    g.drawGridBorder();
    g.showFocus();
}

void toggleCurrentCheckmark(Grid& g, bool liftLineSelection)
{
    GridModel& model = g.model;
    const bool editable = model.columns().editAllowed(g.selection.col());
    if (editable) {
        const int32_t row = g.selection.row(), col = g.selection.col();
        const bool checked = model.text(row, col) == QLatin1String("1");
        g.storeUserText(row, col, checked ? QStringLiteral("0") : QStringLiteral("1"));
    }
    if (liftLineSelection)
        g.withLineSelectionLifted([&g] { redrawCurrentCell(g); });
    else
        redrawCurrentCell(g);
    if (editable)
        g.raiseAfterEdit();
}

}  // namespace TabulaControl::detail::navigation
