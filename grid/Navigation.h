#pragma once

#include "grid/Grid.h"

#include <cstdint>

// Steps that scrolling, the mouse and the keyboard share.
namespace TabulaControl::detail::navigation {

inline constexpr int16_t PointerDefault = 0;
inline constexpr int16_t PointerSizeNS = 7;
inline constexpr int16_t PointerSizeWE = 9;

inline constexpr int16_t VkEnter = 13;
inline constexpr int16_t VkEscape = 27;
inline constexpr int16_t VkPageUp = 33;
inline constexpr int16_t VkPageDown = 34;
inline constexpr int16_t VkEnd = 35;
inline constexpr int16_t VkHome = 36;
inline constexpr int16_t VkLeft = 37;
inline constexpr int16_t VkUp = 38;
inline constexpr int16_t VkRight = 39;
inline constexpr int16_t VkDown = 40;
inline constexpr int16_t CharTab = 9;
inline constexpr int16_t CharSpace = 32;

// Hides the editor box; returns whether it was visible.
bool hideEditorBox(Grid& g);

// Hides an open drop-down list and the drop-down button, then places the
// buttons of the current cell again.
void closeDropDown(Grid& g);

// Repaints the current cell with its focus mark.
void redrawCurrentCell(Grid& g);

// Mouse moves with the left button held in free selection mode: one scroll
// step toward a pointer outside the visible area, then the moving corner
// follows the cell under the pointer.
void extendSelectionByDrag(Grid& g, float x, float y);

// Starts dragging the sizer bar when the pointer shows a sizing shape;
// returns whether it did.
bool startSizerDrag(Grid& g, float x, float y);
// Applies the width the sizer bar was dragged to.
void finishColumnDrag(Grid& g);

// Toggles the current check-mark cell ("1" becomes "0", anything else "1")
// when its column allows editing, repaints it, with a line selection lifted
// off when asked, and reports the edit.
void toggleCurrentCheckmark(Grid& g, bool liftLineSelection);

}  // namespace TabulaControl::detail::navigation
