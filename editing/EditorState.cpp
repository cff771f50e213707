#include "editing/EditorState.h"

namespace TabulaControl::detail::editing {

void EditorState::appendLayoutKey(std::vector<int64_t>& key) const { key.insert(key.end(), {open_, cancelled_}); }

}  // namespace TabulaControl::detail::editing
