#include "navigation/PointerState.h"

namespace TabulaControl::detail::navigation {

void PointerState::appendLayoutKey(std::vector<int64_t>& key) const
{
    key.insert(key.end(), {buttonDown_, headerPressed_});
}

}  // namespace TabulaControl::detail::navigation
