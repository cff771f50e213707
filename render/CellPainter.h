#pragma once

#include "core/GridState.h"
#include "platform/Surface.h"

#include <cstdint>

namespace TabulaControl::detail::render {

// Light grey of button faces and of the square between the scroll bars.
inline constexpr OleColor ButtonFace = 0xC0C0C0;

// Fills {x, y, x + width, y + height} with colour.
void DrawBox(platform::Surface& surface, int32_t x, int32_t y, int32_t width, int32_t height, OleColor colour);

// One line from (r.Left, r.Top) to (r.Right, r.Bottom) in colour and the
// surface's pen style; the end point is not drawn.
void DrawLine(platform::Surface& surface, platform::Rect r, OleColor colour);

// Outline by four lines, top, bottom, left and right; (right, bottom) stays
// undrawn.
void DrawRect(platform::Surface& surface, int32_t left, int32_t top, int32_t right, int32_t bottom,
              OleColor colour);

// A grey button face: raised for 0, pressed for -1, without edges otherwise.
void DrawButton(platform::Surface& surface, int32_t x, int32_t y, int32_t width, int32_t height, int16_t pressed);

// Paints cell (row, col) completely into the rectangle at (x, y): background
// or button face, check box, then text.
void DrawCell(const GridState& s, platform::Surface& surface, int32_t row, int32_t col, int32_t x, int32_t y,
              int32_t width, int32_t height);

}  // namespace TabulaControl::detail::render
