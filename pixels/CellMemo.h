#pragma once

#include "pixels/Box.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace TabulaControl::platform {

// The cells whose pixels are known to be on a surface as their drawing made
// them, each by where its pixels are and a digest of the calls that drew
// them, so that drawing a cell again in the same place can leave its pixels
// alone. Any other drawing over a cell, and any move that does not carry it
// whole, forgets it.
class CellMemo {
public:
    std::optional<size_t> digestAt(const Box& bounds) const;
    // The same, for a cell the last move carried there or drawn since.
    std::optional<size_t> movedDigestAt(const Box& bounds) const;
    void remember(const Box& bounds, size_t digest);
    // Forgets every cell that area touches.
    void forget(const Box& area);
    // A move of pixels begins; it may carry no cell at all.
    void startMove();
    // The pixels of source moved by (dx, dy), written only inside target.
    void moved(const Box& source, const Box& target, int64_t dx, int64_t dy);
    void clear();

private:
    // A cell's top edge is its row's; the surface's coordinates fit 32 bits.
    // A page shows a few hundred cells, so their size is most of the memo's.
    struct Cell {
        int32_t left = 0;
        int32_t right = 0;
        int32_t bottom = 0;
        // The move it was carried by or drawn after.
        uint32_t move = 0;
        size_t digest = 0;
    };
    // The cells whose top edge is top, by left edge, and the lowest bottom
    // edge among them or beyond it: rows that end above an area are passed
    // over whole.
    struct Row {
        int64_t top = 0;
        int64_t bottom = INT64_MIN;
        std::vector<Cell> cells;
    };
    const Cell* cellAt(const Box& bounds) const;
    std::vector<Row>::iterator rowAt(int64_t top);
    static Box boundsOf(const Row& row, const Cell& cell) { return {cell.left, row.top, cell.right, cell.bottom}; }

    // By top edge, each row by left edge; the cells do not overlap. Cells
    // come mostly in reading order, so most land at the end.
    std::vector<Row> rows_;
    uint32_t move_ = 0;
    int64_t tallest_ = 0;
    int64_t widest_ = 0;
};

}  // namespace TabulaControl::platform
