#include "pixels/DirtyTiles.h"

#include <algorithm>
#include <utility>

namespace TabulaControl::platform {

namespace {

int64_t tilesOver(int64_t extent) { return (extent + DirtyTiles::TileSize - 1) / DirtyTiles::TileSize; }

}  // namespace

void DirtyTiles::resize(int64_t width, int64_t height)
{
    width_ = std::max<int64_t>(width, 0);
    height_ = std::max<int64_t>(height, 0);
    columns_ = tilesOver(width_);
    rows_ = tilesOver(height_);
    tiles_.assign(static_cast<size_t>(columns_ * rows_), 1);
    clean_ = tiles_.empty();
}

bool DirtyTiles::mark(const Box& box)
{
    const Box visible = intersect(box, {0, 0, width_, height_});
    if (visible.empty())
        return false;
    const int64_t right = tilesOver(visible.right);
    for (int64_t row = visible.top / TileSize; row < tilesOver(visible.bottom); ++row)
        std::fill(tiles_.begin() + row * columns_ + visible.left / TileSize, tiles_.begin() + row * columns_ + right, 1);
    return touch();
}

QRegion DirtyTiles::take()
{
    if (std::exchange(clean_, true))
        return {};
    QRegion region;
    for (int64_t row = 0; row < rows_; ++row) {
        auto* tiles = tiles_.data() + row * columns_;
        for (int64_t col = 0; col < columns_;) {
            if (!tiles[col]) {
                ++col;
                continue;
            }
            const int64_t start = col;
            while (col < columns_ && tiles[col])
                tiles[col++] = 0;
            const Box run = intersect({start * TileSize, row * TileSize, col * TileSize, (row + 1) * TileSize},
                                      {0, 0, width_, height_});
            region += QRect(static_cast<int>(run.left), static_cast<int>(run.top), static_cast<int>(run.width()),
                            static_cast<int>(run.height()));
        }
    }
    return region;
}

}  // namespace TabulaControl::platform
