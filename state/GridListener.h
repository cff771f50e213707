#pragma once

#include <cstdint>

namespace TabulaControl::detail {

// Told by GridModel after each change a view of its cells could show.
// Rows and columns are the grid's, header line 0 included.
class GridListener {
public:
    virtual void cellChanged(int32_t row, int32_t col) = 0;
    // Rows first..last were added at the end.
    virtual void rowsAppended(int32_t first, int32_t last) = 0;
    // Row is about to go, the rows below it to move up; rowRemoved follows.
    virtual void rowAboutToBeRemoved(int32_t row) = 0;
    virtual void rowRemoved(int32_t row) = 0;
    // The counts or any number of cells changed at once.
    virtual void everythingChanged() = 0;

protected:
    ~GridListener() = default;
};

}  // namespace TabulaControl::detail
