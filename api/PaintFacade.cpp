#include "api/Facade.h"

namespace TabulaControl {

void Tabula::Refresh()
{
    repaintingCall("Refresh", [&] { grid_->Refresh(); });
}

}  // namespace TabulaControl
