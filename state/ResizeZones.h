#pragma once

#include "state/Axis.h"
#include "state/Revision.h"

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::navigation {

// The places on the header row where a press starts resizing a column: one
// at the right border of the header column and of each column shown, and the
// drag in progress. Zones count from 1.
class ResizeZones {
public:
    // Places the zones from the column widths: the header column's when
    // rowHeader, then the columns from first on, until a border lies past reach.
    void place(const Axis& cols, bool rowHeader, int32_t first, int32_t reach);
    void clear() { revision_.set(columnBorders_, std::vector<int32_t>()); }
    // AllowUserResizing: while it is off, the zones stay as last placed.
    bool enabled() const { return enabled_; }
    void setEnabled(bool value) { revision_.set(enabled_, value); }
    // Takes back the zones of earlier, keeping the drag and the zone found.
    void restoreZones(const ResizeZones& earlier) { revision_.set(columnBorders_, earlier.columnBorders_); }

    // Finds the leftmost zone within reach of x as the one a drag sizes;
    // returns whether there is one.
    bool findZoneAt(float x);
    // The zone found last: -1 when none was within reach, 0 before any search.
    int32_t foundZone() const { return foundZone_; }
    // Whether the zone found is not past the zones placed since.
    bool foundZonePlaced() const { return foundZone_ <= static_cast<int64_t>(columnBorders_.size()); }
    // The width of the found zone's column when its border is dropped at
    // barLeft: from the zone before it, or from the left edge for the first
    // two zones.
    int32_t draggedWidth(int32_t barLeft) const;

    void startColumnDrag() { revision_.set(columnDrag_, true); }
    // Row drags exist only as a state, under a pointer shape the host sets:
    // no row zone is ever placed and a dropped row border resizes nothing,
    // so users cannot resize rows, as they never could.
    void startRowDrag() { revision_.set(rowDrag_, true); }
    bool columnDragging() const { return columnDrag_; }
    bool rowDragging() const { return rowDrag_; }
    bool dragging() const { return columnDrag_ || rowDrag_; }
    void endDrag()
    {
        revision_.set(columnDrag_, false);
        revision_.set(rowDrag_, false);
    }

    // Changes with every change above.
    uint64_t revision() const { return revision_.value(); }
    // Appends the values above, which the cache checks compare.
    void appendState(std::vector<int64_t>& state) const;

private:
    std::vector<int32_t> columnBorders_;
    int32_t foundZone_ = 0;
    bool columnDrag_ = false;
    bool rowDrag_ = false;
    bool enabled_ = true;
    Revision revision_;
};

}  // namespace TabulaControl::detail::navigation
