#pragma once

#include <cstdint>

namespace TabulaControl::detail::lookups {

// The host's settings for the drop-down list of a lookup column: how many
// rows it makes room for at the least, and whether a picked item puts its
// item data in the cell instead of its text.
class DropDownSettings {
public:
    int16_t minimumRows() const { return minimumRows_; }
    void setMinimumRows(int16_t rows) { minimumRows_ = rows; }
    // The rows a list of itemCount items makes room for.
    int32_t rowsFor(int32_t itemCount) const { return itemCount > minimumRows_ ? itemCount : minimumRows_; }

    bool picksItemData() const { return picksItemData_; }
    void setPicksItemData(bool value) { picksItemData_ = value; }

    void restoreDefaults() { *this = DropDownSettings(); }

private:
    int16_t minimumRows_ = 6;
    bool picksItemData_ = false;
};

}  // namespace TabulaControl::detail::lookups
