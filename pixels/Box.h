#pragma once

#include "state/Rect.h"

#include <QRect>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace TabulaControl::platform {

// A rectangle with right and bottom exclusive, wide enough that offsets and
// deflations of any 32-bit rectangle cannot overflow.
struct Box {
    int64_t left = 0;
    int64_t top = 0;
    int64_t right = 0;
    int64_t bottom = 0;

    bool empty() const { return right <= left || bottom <= top; }
    int64_t width() const { return right - left; }
    int64_t height() const { return bottom - top; }
};

inline Box toBox(Rect r) { return {r.Left, r.Top, r.Right, r.Bottom}; }

inline Rect toRect(const Box& b)
{
    return {static_cast<int32_t>(b.left), static_cast<int32_t>(b.top), static_cast<int32_t>(b.right),
            static_cast<int32_t>(b.bottom)};
}

inline QRect toQRect(const Box& b)
{
    return QRect(static_cast<int>(b.left), static_cast<int>(b.top), static_cast<int>(b.width()),
                 static_cast<int>(b.height()));
}

inline Box intersect(const Box& a, const Box& b)
{
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

inline bool contains(const Box& outer, const Box& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

inline Box translated(const Box& b, int64_t dx, int64_t dy)
{
    return {b.left + dx, b.top + dy, b.right + dx, b.bottom + dy};
}

// The parts of box outside inner, which lies within it: the bands above and
// below inner, and the parts left and right of it between them.
inline std::array<Box, 4> partsAround(const Box& box, const Box& inner)
{
    return {{{box.left, box.top, box.right, inner.top},
             {box.left, inner.bottom, box.right, box.bottom},
             {box.left, inner.top, inner.left, inner.bottom},
             {inner.right, inner.top, box.right, inner.bottom}}};
}

// The pixels a line visits along one axis, from `from` towards `to` with
// `to` itself excluded, as a half-open range; one pixel when they are equal.
inline std::pair<int64_t, int64_t> axisSpan(int64_t from, int64_t to)
{
    if (to > from)
        return {from, to};
    if (to < from)
        return {to + 1, from + 1};
    return {from, from + 1};
}

}  // namespace TabulaControl::platform
