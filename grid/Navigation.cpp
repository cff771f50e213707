#include "grid/Navigation.h"

namespace TabulaControl::detail::navigation {

void hideEditorBox(Grid& g)
{
    g.withLineSelectionLifted([&g] { g.ui.txtEdit.setVisible(false); });
}

void closeDropDown(Grid& g)
{
    if (g.ui.listForm.Visible())
        g.ui.listForm.Hide();
    g.ui.cmdLookup.setVisible(false);
    g.showCellButtons();
}

void redrawCurrentCell(Grid& g)
{
    g.redrawCell(g.selection.row(), g.selection.col());
    g.drawGridBorder();
    g.showFocus();
}

QString toggledCheckmark(const QString& text)
{
    return text == QLatin1String("1") ? QStringLiteral("0") : QStringLiteral("1");
}

}  // namespace TabulaControl::detail::navigation
