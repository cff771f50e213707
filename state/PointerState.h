#pragma once

#include "state/Revision.h"

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::navigation {

// The mouse over one grid's surface: whether the left button is held,
// whether the last press landed on a header, and the cell last under the
// pointer, which MouseRow and MouseCol report.
class PointerState {
public:
    bool buttonDown() const { return buttonDown_; }
    void press() { revision_.set(buttonDown_, true); }
    void release() { revision_.set(buttonDown_, false); }

    bool headerPressed() const { return headerPressed_; }
    void setHeaderPressed(bool value) { revision_.set(headerPressed_, value); }

    int32_t row() const { return row_; }
    int16_t col() const { return col_; }
    void setRow(int32_t row) { revision_.set(row_, row); }
    void setCol(int16_t col) { revision_.set(col_, col); }

    // Changes with every change above.
    uint64_t revision() const { return revision_.value(); }
    // Appends the values above, which the cache checks compare.
    void appendState(std::vector<int64_t>& state) const
    {
        state.insert(state.end(), {buttonDown_, headerPressed_, row_, col_});
    }

private:
    bool buttonDown_ = false;
    bool headerPressed_ = false;
    int32_t row_ = 0;
    int16_t col_ = 0;
    Revision revision_;
};

}  // namespace TabulaControl::detail::navigation
