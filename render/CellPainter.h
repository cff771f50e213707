#pragma once

#include "state/GridModel.h"
#include "pixels/Surface.h"
#include "state/AppearanceSettings.h"
#include "render/Marks.h"

#include <cstdint>
#include <optional>

namespace TabulaControl::detail::render {

// Light grey of button faces and of the square between the scroll bars.
inline constexpr OleColor ButtonFace = 0xC0C0C0;

// Fills {x, y, x + width, y + height} with colour.
void DrawBox(Canvas canvas, int32_t x, int32_t y, int32_t width, int32_t height, OleColor colour);

// One line from (r.Left, r.Top) to (r.Right, r.Bottom) in colour and the
// surface's pen style; the end point is not drawn. Lines are horizontal or
// vertical.
void DrawLine(Canvas canvas, platform::Rect r, OleColor colour);

// A grey button face: raised for 0, pressed for -1, without edges otherwise.
void DrawButton(Canvas canvas, int32_t x, int32_t y, int32_t width, int32_t height, int16_t pressed);

// Paints cell (row, col) completely into the rectangle at (x, y): background
// or button face, check box, then text.
void drawCell(const GridModel& model, const Appearance& look, Canvas canvas, int32_t row, int32_t col, int32_t x, int32_t y,
              int32_t width, int32_t height);

// The boxes that drawing cell (row, col) at (x, y) covers: the box of its
// first fill, which holds everything the cell draws and is where the surface
// remembers it, and the check box's square, which may reach past a narrow
// cell.
struct CellCover {
    platform::Rect bounds;
    std::optional<platform::Rect> checkBox;
};
CellCover cellCover(const GridModel& model, const Appearance& look, int32_t row, int32_t col, int32_t x, int32_t y,
                    int32_t width, int32_t height);

}  // namespace TabulaControl::detail::render
