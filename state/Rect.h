#pragma once

#include <cstdint>

namespace TabulaControl::platform {

// A colour value as hosts pass it: 0x00BBGGRR, or 0x80000000 + index for a
// system colour.
using OleColor = uint32_t;

// A rectangle whose right and bottom edges are exclusive.
struct Rect {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Right = 0;
    int32_t Bottom = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace TabulaControl::platform
