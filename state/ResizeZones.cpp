#include "state/ResizeZones.h"

#include "state/Errors.h"

#include <QScopeGuard>

#include <cmath>

namespace TabulaControl::detail::navigation {

void ResizeZones::place(const Axis& cols, bool rowHeader, int32_t first, int32_t reach)
{
    // A failing size leaves the zones placed before it.
    std::vector<int32_t> borders;
    const auto store = qScopeGuard([&] { revision_.set(columnBorders_, borders); });
    int32_t pos = 0;
    if (rowHeader) {
        pos = cols.size(0);
        borders.push_back(pos);
    }
    for (int32_t c = first; c <= cols.count(); ++c) {
        pos = to32(int64_t{pos} + cols.size(c) + 1);
        if (pos > reach)
            return;
        borders.push_back(pos);
    }
}

bool ResizeZones::findZoneAt(float x)
{
    int32_t found = -1;
    for (size_t i = 0; i < columnBorders_.size(); ++i) {
        if (std::abs(double{x} - columnBorders_[i]) < 2) {
            found = static_cast<int32_t>(i + 1);
            break;
        }
    }
    revision_.set(foundZone_, found);
    return foundZone_ >= 1;
}

int32_t ResizeZones::draggedWidth(int32_t barLeft) const
{
    if (foundZone_ < 2)
        return barLeft;
    const auto previous = static_cast<size_t>(foundZone_ - 1);
    if (previous > columnBorders_.size())
        raise(RuntimeError::Subscript);
    return to32(int64_t{barLeft} - columnBorders_[previous - 1]);
}

void ResizeZones::appendState(std::vector<int64_t>& state) const
{
    state.insert(state.end(), {enabled_, columnDrag_, rowDrag_, foundZone_, -1});
    state.insert(state.end(), columnBorders_.begin(), columnBorders_.end());
}

}  // namespace TabulaControl::detail::navigation
