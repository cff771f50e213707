#pragma once

#include "pixels/Box.h"

#include <QRegion>

#include <cstdint>
#include <utility>
#include <vector>

namespace TabulaControl::platform {

// The parts of a surface drawn on since they were last taken to be shown,
// kept in square tiles: a drawing marks the tiles its box touches, a paint
// takes the region they make.
class DirtyTiles {
public:
    static constexpr int64_t TileSize = 32;

    // A new extent: every tile is dirty.
    void resize(int64_t width, int64_t height);
    // Returns true when the tiles were all clean before.
    bool mark(const Box& box);
    bool clean() const { return clean_; }
    // The dirty tiles, clipped to the extent; every tile is clean afterwards.
    QRegion take();

private:
    bool touch() { return std::exchange(clean_, false); }

    int64_t width_ = 0;
    int64_t height_ = 0;
    int64_t columns_ = 0;
    int64_t rows_ = 0;
    std::vector<uint8_t> tiles_;
    bool clean_ = true;
};

}  // namespace TabulaControl::platform
