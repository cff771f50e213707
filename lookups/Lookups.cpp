#include "core/Grid.h"

#include <algorithm>

namespace TabulaControl::detail {

void Grid::ClearAllLookups() { s.mLookups.clear(); }

bool Grid::ColHasLookup(int32_t col) const
{
    return std::any_of(s.mLookups.begin(), s.mLookups.end(), [col](const Lookup& l) { return l.Column == col; });
}

}  // namespace TabulaControl::detail
