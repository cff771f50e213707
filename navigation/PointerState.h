#pragma once

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::navigation {

// The mouse over one grid's surface: whether the left button is held,
// whether the last press landed on a header, and the cell last under the
// pointer, which MouseRow and MouseCol report.
class PointerState {
public:
    bool buttonDown() const { return buttonDown_; }
    void press() { buttonDown_ = true; }
    void release() { buttonDown_ = false; }

    bool headerPressed() const { return headerPressed_; }
    void setHeaderPressed(bool value) { headerPressed_ = value; }

    int16_t row() const { return row_; }
    int16_t col() const { return col_; }
    void setRow(int16_t row) { row_ = row; }
    void setCol(int16_t col) { col_ = col; }

    // Appends what the pointer adds to a layout's key.
    void appendLayoutKey(std::vector<int64_t>& key) const;

private:
    bool buttonDown_ = false;
    bool headerPressed_ = false;
    int16_t row_ = 0;
    int16_t col_ = 0;
};

}  // namespace TabulaControl::detail::navigation
