#pragma once

#include "state/Revision.h"

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::render {

// What the surface shows of one grid and what the last paint left: the
// first scrollable row and column shown, the page sizes, how far the cells
// were drawn, which scroll bars are needed, and the grid line width the
// painters use. The first row and column are kept as they are given: a host
// may store any value, and the painters walk from the first that exists.
class Viewport {
public:
    int32_t topRow() const { return topRow_; }
    int32_t leftCol() const { return leftCol_; }
    void setTopRow(int32_t row) { revision_.set(topRow_, row); }
    void setLeftCol(int32_t col) { revision_.set(leftCol_, col); }
    // Shows the first scrollable row and column.
    void scrollHome()
    {
        setTopRow(1);
        setLeftCol(1);
    }
    // Whether the cell lies above the first row or left of the first column
    // shown.
    bool isScrolledOff(int64_t row, int64_t col) const { return row < topRow_ || col < leftCol_; }

    // The grid line width as ShowGrid was when it was last taken.
    int32_t lineWidth() const { return lineWidth_; }
    void takeLineWidth(bool showGrid) { revision_.set(lineWidth_, showGrid ? 1 : 0); }

    // The rows (columns) one page moves by. Each is measured once, by the
    // first paint whose rows (columns) run past the surface, and kept.
    int32_t pageRows() const { return pageRows_; }
    int32_t pageCols() const { return pageCols_; }
    // Measures the page of rows, unless one is known, from the row at which
    // a paint of the rows stopped. Returns whether it measured a page of at
    // least one row.
    bool measurePageRows(int32_t stopRow);
    // Measures the page of columns, unless one is known, from the column
    // that ran past the surface.
    void measurePageCols(int32_t stopCol);

    // The last pixel row and column the cells were drawn to.
    int32_t drawnBottom() const { return drawnBottom_; }
    int32_t drawnRight() const { return drawnRight_; }
    void setDrawnBottom(int32_t y) { revision_.set(drawnBottom_, y); }
    void setDrawnRight(int32_t x) { revision_.set(drawnRight_, x); }

    bool vScrollNeeded() const { return vScrollNeeded_; }
    bool hScrollNeeded() const { return hScrollNeeded_; }
    // A walk down the rows (across the columns) needs a bar at first only
    // when the view is scrolled past the first row (column).
    void startRowWalk() { revision_.set(vScrollNeeded_, topRow_ > 1); }
    void startColumnWalk() { revision_.set(hScrollNeeded_, leftCol_ > 1); }
    // The rows (columns) run on past the surface.
    void rowsCutOff() { revision_.set(vScrollNeeded_, true); }
    void columnsCutOff() { revision_.set(hScrollNeeded_, true); }
    // After a paint of the rows: an extent that reaches the surface's last
    // pixel (lastX, lastY) stops there and needs its bar; a shorter one needs
    // it only when the view is scrolled past the first line.
    void settleExtents(int32_t lastX, int32_t lastY);

    // How far a walk across the columns reached: the same for every row of
    // one paint.
    struct ColumnsReach {
        int32_t drawnRight = 0;
        bool hScrollNeeded = false;
    };
    ColumnsReach columnsReach() const { return {drawnRight_, hScrollNeeded_}; }
    void setColumnsReach(ColumnsReach reach)
    {
        revision_.set(drawnRight_, reach.drawnRight);
        revision_.set(hScrollNeeded_, reach.hScrollNeeded);
    }

    // Changes with every change above.
    uint64_t revision() const { return revision_.value(); }
    // Appends the values above, which the cache checks compare.
    void appendState(std::vector<int64_t>& state) const;

private:
    int32_t topRow_ = 0;
    int32_t leftCol_ = 0;
    uint8_t lineWidth_ = 0;
    int32_t pageRows_ = 0;
    int32_t pageCols_ = 0;
    int32_t drawnBottom_ = 0;
    int32_t drawnRight_ = 0;
    bool vScrollNeeded_ = false;
    bool hScrollNeeded_ = false;
    Revision revision_;
};

}  // namespace TabulaControl::detail::render
