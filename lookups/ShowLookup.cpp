#include "core/Grid.h"

namespace TabulaControl::detail {

// Places the drop-down button and the column button at the right end of the
// current cell. No column carries a lookup list or a button yet, so both stay
// hidden; the lookup and button collections plug in here.
void Grid::ShowLookup()
{
    ui.cmdLookup.setVisible(false);
    ui.cmdButton.setVisible(false);
}

}  // namespace TabulaControl::detail
