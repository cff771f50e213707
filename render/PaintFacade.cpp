#include "core/Facade.h"

namespace TabulaControl {

void Tabula::Refresh()
{
    call("Refresh", [&] { grid_->Refresh(); });
}

}  // namespace TabulaControl
