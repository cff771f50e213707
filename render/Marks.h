#pragma once

#include "pixels/Surface.h"

#include <QRegion>

#include <cstdint>

namespace TabulaControl::detail::render {

// The marks shown over the grid's cells: the dotted focus rectangle of the
// current cell, the inverted selection block and its anchor cell, and
// whatever part of an earlier mark is still on the screen. Every mark is an
// exclusive-or of the pixels beneath it, so showing a mark where the same
// mark shows takes it away again. What the painters draw goes beneath the
// marks and takes away the marks on the pixels it covers; a scroll carries
// the marks with the pixels it moves. The surface applies the marks over
// its pixels when they are read.
class Marks {
public:
    explicit Marks(platform::Surface& surface) : surface_(surface) {}

    // Flips the dotted outline of rect: the pixels of its edges whose x + y
    // is even.
    void toggleFocusRect(platform::Rect rect);
    // Flips every pixel of rect.
    void toggleInversion(platform::Rect rect);

    // The painters covered area.
    void covered(platform::Rect area);
    // The painters drew a horizontal or vertical line, (x2, y2) excluded, in
    // dots (three on, three off) or solid.
    void coveredByLine(int32_t x1, int32_t y1, int32_t x2, int32_t y2, bool dotted);
    // The painters filled the whole surface.
    void cleared();
    // The surface moved the pixels of scroll by (dx, dy), writing only
    // inside clip.
    void scrolled(int32_t dx, int32_t dy, platform::Rect scroll, platform::Rect clip);
    // The surface changed size from oldWidth x oldHeight, keeping the pixels
    // of the area both sizes share.
    void resized(int oldWidth, int oldHeight);

    // The pixels flipped whole, and those flipped where x + y is even.
    const QRegion& inverted() const { return inverted_; }
    const QRegion& dotted() const { return dotted_; }

private:
    // Whether the surface draws now; makes a render it owes first, as
    // drawing on it would.
    bool drawsNow();
    void take(const QRegion& area);
    void publish();
    // The part of {left, top, right, bottom} on the surface.
    QRegion clipped(int64_t left, int64_t top, int64_t right, int64_t bottom) const;

    platform::Surface& surface_;
    QRegion inverted_;
    QRegion dotted_;
};

// Where the painters draw: the surface beneath the marks.
struct Canvas {
    platform::Surface& surface;
    Marks& marks;
};

}  // namespace TabulaControl::detail::render
