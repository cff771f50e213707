#include "api/Facade.h"
#include "grid/Printing.h"

namespace TabulaControl {

void Tabula::print(QPagedPaintDevice* device) const
{
    call("print", [&] {
        if (!device)
            detail::raise(detail::RuntimeError::InvalidCall);
        detail::printGrid(*grid_, *device);
    });
}

}  // namespace TabulaControl
