#pragma once

#include "pixels/Box.h"

#include <QRgb>

#include <optional>
#include <vector>

namespace TabulaControl::platform {

// Boxes of an image known to hold one colour each, so that filling one again
// can leave its pixels alone. Drawing over part of a box keeps the largest
// parts it does not reach.
class SolidAreas {
public:
    // Forgets what a drawing over box reaches, unless it fills it with the
    // colour a box holds.
    void drawnOver(const Box& box, std::optional<QRgb> fillColour);
    void remember(const Box& box, QRgb colour);
    void clear() { areas_.clear(); }

    // The parts of box known to hold colour, and the parts left over; they
    // may overlap among themselves.
    std::vector<Box> heldParts(const Box& box, QRgb colour) const;
    std::vector<Box> partsNotHeld(const Box& box, QRgb colour) const;

private:
    struct Area {
        Box box;
        QRgb colour = 0;
    };
    std::vector<Area> areas_;
};

}  // namespace TabulaControl::platform
