#include "pixels/SolidAreas.h"

#include <algorithm>
#include <array>

namespace TabulaControl::platform {

namespace {

constexpr size_t MostAreasKept = 8;

int64_t sizeOf(const Box& b) { return b.empty() ? 0 : b.width() * b.height(); }

// The two largest boxes within area that cut does not reach: the band on
// either side of cut across the area.
std::array<Box, 2> largestOutside(const Box& area, const Box& cut)
{
    const Box inner = intersect(area, cut);
    const std::array<Box, 4> sides = {{{area.left, area.top, area.right, inner.top},
                                       {area.left, inner.bottom, area.right, area.bottom},
                                       {area.left, area.top, inner.left, area.bottom},
                                       {inner.right, area.top, area.right, area.bottom}}};
    std::array<Box, 2> largest{};
    for (const Box& side : sides) {
        if (sizeOf(side) > sizeOf(largest[0]))
            largest = {side, largest[0]};
        else if (sizeOf(side) > sizeOf(largest[1]))
            largest[1] = side;
    }
    return largest;
}

}  // namespace

void SolidAreas::drawnOver(const Box& box, std::optional<QRgb> fillColour)
{
    const auto reached = [&](const Area& area) {
        return area.colour != fillColour && !intersect(area.box, box).empty();
    };
    if (box.empty() || std::none_of(areas_.begin(), areas_.end(), reached))
        return;
    std::vector<Area> kept;
    for (const Area& area : areas_) {
        if (!reached(area)) {
            kept.push_back(area);
            continue;
        }
        for (const Box& part : largestOutside(area.box, box))
            if (!part.empty())
                kept.push_back({part, area.colour});
    }
    if (kept.size() > MostAreasKept)
        kept.erase(kept.begin(), kept.end() - MostAreasKept);
    areas_ = std::move(kept);
}

void SolidAreas::remember(const Box& box, QRgb colour)
{
    if (box.empty())
        return;
    std::erase_if(areas_, [&](const Area& area) { return area.colour == colour && contains(box, area.box); });
    if (areas_.size() == MostAreasKept)
        areas_.erase(areas_.begin());
    areas_.push_back({box, colour});
}

std::vector<Box> SolidAreas::heldParts(const Box& box, QRgb colour) const
{
    std::vector<Box> held;
    for (const Area& area : areas_)
        if (const Box part = intersect(area.box, box); area.colour == colour && !part.empty())
            held.push_back(part);
    return held;
}

std::vector<Box> SolidAreas::partsNotHeld(const Box& box, QRgb colour) const
{
    std::vector<Box> left{box};
    for (const Box& held : heldParts(box, colour)) {
        std::vector<Box> next;
        for (const Box& part : left) {
            const Box inner = intersect(part, held);
            if (inner.empty()) {
                next.push_back(part);
                continue;
            }
            for (const Box& outside : partsAround(part, inner))
                if (!outside.empty())
                    next.push_back(outside);
        }
        left = std::move(next);
    }
    return left;
}

}  // namespace TabulaControl::platform
