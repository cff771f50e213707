#include "state/PointerState.h"

namespace TabulaControl::detail::navigation {

void PointerState::appendState(std::vector<int64_t>& state) const
{
    state.insert(state.end(), {buttonDown_, headerPressed_, row_, col_});
}

}  // namespace TabulaControl::detail::navigation
