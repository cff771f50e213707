#include "state/EditorState.h"

namespace TabulaControl::detail::editing {

void EditorState::appendState(std::vector<int64_t>& state) const { state.insert(state.end(), {open_, cancelled_}); }

}  // namespace TabulaControl::detail::editing
