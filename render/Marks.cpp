#include "render/Marks.h"

#include "pixels/Box.h"

#include <QRect>

#include <algorithm>
#include <cassert>
#include <vector>

namespace TabulaControl::detail::render {

namespace {

using platform::axisSpan;
using platform::Box;
using platform::intersect;
using platform::Rect;
using Mark = platform::Surface::Mark;

constexpr int64_t DotPeriod = 6;
constexpr int64_t DotLength = 3;

QRegion regionOf(const Box& b)
{
    if (b.empty())
        return {};
    return QRegion(static_cast<int>(b.left), static_cast<int>(b.top), static_cast<int>(b.right - b.left),
                   static_cast<int>(b.bottom - b.top));
}

Box boxOf(const QRect& r) { return {r.left(), r.top(), int64_t{r.left()} + r.width(), int64_t{r.top()} + r.height()}; }

Rect rectOf(const QRect& r) { return {r.left(), r.top(), r.left() + r.width(), r.top() + r.height()}; }

QRegion translated(const QRegion& region, int64_t dx, int64_t dy, const Box& within)
{
    QRegion moved;
    for (const QRect& r : region) {
        const Box b = boxOf(r);
        moved += regionOf(intersect(platform::translated(b, dx, dy), within));
    }
    return moved;
}

// The dots of a horizontal (vertical) line that lie inside bounds: steps i
// from the start point with i % 6 < 3, the end point excluded.
QRegion dots(int64_t start, int64_t end, int64_t across, bool horizontal, const Box& bounds)
{
    const int64_t acrossLow = horizontal ? bounds.top : bounds.left;
    const int64_t acrossHigh = horizontal ? bounds.bottom : bounds.right;
    if (across < acrossLow || across >= acrossHigh || start == end)
        return {};
    const int64_t low = horizontal ? bounds.left : bounds.top;
    const int64_t high = horizontal ? bounds.right : bounds.bottom;
    const bool forward = end > start;
    const int64_t steps = forward ? end - start : start - end;
    const int64_t first = std::max<int64_t>(0, forward ? low - start : start - high + 1);
    const int64_t last = std::min(steps, forward ? high - start : start - low + 1);
    std::vector<QRect> runs;
    for (int64_t run = first - first % DotPeriod; run < last; run += DotPeriod) {
        const int64_t from = std::max(run, first);
        const int64_t to = std::min(run + DotLength, last);
        if (from >= to)
            continue;
        const int64_t lowest = forward ? start + from : start - to + 1;
        const int length = static_cast<int>(to - from);
        const int along = static_cast<int>(lowest);
        runs.push_back(horizontal ? QRect(along, static_cast<int>(across), length, 1)
                                  : QRect(static_cast<int>(across), along, 1, length));
    }
    if (!forward)
        std::reverse(runs.begin(), runs.end());
    QRegion region;
    region.setRects(runs.data(), static_cast<int>(runs.size()));
    return region;
}

// A FocusRect mark of a rectangle one pixel high or wide flips the pixels
// of that strip whose x + y is even.
void appendDottedStrips(std::vector<Mark>& marks, const QRect& r)
{
    if (r.width() == 1 || r.height() == 1) {
        marks.push_back({Mark::Kind::FocusRect, rectOf(r)});
        return;
    }
    for (int y = r.top(); y <= r.bottom(); ++y)
        marks.push_back({Mark::Kind::FocusRect, rectOf(QRect(r.left(), y, r.width(), 1))});
}

}  // namespace

void Marks::toggleFocusRect(Rect rect)
{
    if (!drawsNow())
        return;
    const Box b{rect.Left, rect.Top, rect.Right, rect.Bottom};
    if (b.empty())
        return;
    QRegion outline = clipped(b.left, b.top, b.right, b.top + 1);
    if (b.bottom - b.top > 1)
        outline += clipped(b.left, b.bottom - 1, b.right, b.bottom);
    outline += clipped(b.left, b.top + 1, b.left + 1, b.bottom - 1);
    if (b.right - b.left > 1)
        outline += clipped(b.right - 1, b.top + 1, b.right, b.bottom - 1);
    dotted_ ^= outline;
    publish();
}

void Marks::toggleInversion(Rect rect)
{
    if (!drawsNow())
        return;
    inverted_ ^= clipped(rect.Left, rect.Top, rect.Right, rect.Bottom);
    publish();
}

void Marks::covered(Rect area)
{
    if ((inverted_.isEmpty() && dotted_.isEmpty()))
        return;
    const QRect marked = inverted_.boundingRect().united(dotted_.boundingRect());
    if (area.Right <= marked.left() || area.Left > marked.right() || area.Bottom <= marked.top() ||
        area.Top > marked.bottom())
        return;
    take(clipped(area.Left, area.Top, area.Right, area.Bottom));
}

void Marks::coveredByLine(int32_t x1, int32_t y1, int32_t x2, int32_t y2, bool dotted)
{
    assert(x1 == x2 || y1 == y2);
    if ((inverted_.isEmpty() && dotted_.isEmpty()))
        return;
    if (!dotted) {
        if (x1 == x2 && y1 == y2)
            return;
        const auto [left, right] = axisSpan(x1, x2);
        const auto [top, bottom] = axisSpan(y1, y2);
        take(clipped(left, top, right, bottom));
        return;
    }
    const Box marked = boxOf(inverted_.boundingRect().united(dotted_.boundingRect()));
    if (y1 == y2)
        take(dots(x1, x2, y1, true, marked));
    else
        take(dots(y1, y2, x1, false, marked));
}

void Marks::cleared()
{
    if ((inverted_.isEmpty() && dotted_.isEmpty()))
        return;
    inverted_ = QRegion();
    dotted_ = QRegion();
    publish();
}

void Marks::scrolled(int32_t dx, int32_t dy, Rect scroll, Rect clip)
{
    if ((inverted_.isEmpty() && dotted_.isEmpty()))
        return;
    const Box image{0, 0, surface_.width(), surface_.height()};
    const Box shiftedSource{int64_t{scroll.Left} + dx, int64_t{scroll.Top} + dy, int64_t{scroll.Right} + dx,
                            int64_t{scroll.Bottom} + dy};
    const Box shiftedImage{dx, dy, image.right + dx, image.bottom + dy};
    const Box target = intersect({clip.Left, clip.Top, clip.Right, clip.Bottom}, image);
    const Box moved = intersect(intersect(shiftedSource, target), shiftedImage);
    if (moved.empty())
        return;
    const QRegion movedRegion = regionOf(moved);
    const QRegion dottedIn = translated(dotted_, dx, dy, moved);
    QRegion invertedIn = translated(inverted_, dx, dy, moved);
    // An odd shift carries dots onto pixels whose x + y is odd: those are
    // the strip inverted whole with its even pixels flipped back.
    if ((int64_t{dx} + dy) % 2 != 0)
        invertedIn ^= dottedIn;
    inverted_ = inverted_.subtracted(movedRegion) + invertedIn;
    dotted_ = dotted_.subtracted(movedRegion) + dottedIn;
    publish();
}

void Marks::resized(int oldWidth, int oldHeight)
{
    const int keptWidth = std::min(oldWidth, surface_.width());
    const int keptHeight = keptWidth > 0 ? std::min(oldHeight, surface_.height()) : 0;
    const QRegion kept = regionOf({0, 0, keptWidth, keptHeight});
    if (inverted_.subtracted(kept).isEmpty() && dotted_.subtracted(kept).isEmpty())
        return;
    inverted_ &= kept;
    dotted_ &= kept;
    publish();
}

bool Marks::drawsNow()
{
    if (surface_.renderPending())
        static_cast<void>(surface_.image());
    return true;
}

void Marks::take(const QRegion& area)
{
    if (!inverted_.intersects(area) && !dotted_.intersects(area))
        return;
    inverted_ -= area;
    dotted_ -= area;
    publish();
}

void Marks::publish()
{
    std::vector<Mark> marks;
    marks.reserve(static_cast<size_t>(inverted_.rectCount() + dotted_.rectCount()));
    for (const QRect& r : inverted_)
        marks.push_back({Mark::Kind::Inversion, rectOf(r)});
    for (const QRect& r : dotted_)
        appendDottedStrips(marks, r);
    surface_.setMarks(std::move(marks));
}

QRegion Marks::clipped(int64_t left, int64_t top, int64_t right, int64_t bottom) const
{
    return regionOf(intersect({left, top, right, bottom}, {0, 0, surface_.width(), surface_.height()}));
}

}  // namespace TabulaControl::detail::render
