#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace TabulaControl::detail {

// The texts of a grid bound to a table that lives outside it. Rows and
// columns are the grid's: line 0 holds the headers, data starts at 1.
// Writes report whether the table took them.
class CellSource {
public:
    virtual ~CellSource() = default;

    // The data lines past the headers.
    virtual int32_t rowCount() const = 0;
    virtual int32_t columnCount() const = 0;
    virtual QString text(int32_t row, int32_t col) const = 0;
    virtual bool setText(int32_t row, int32_t col, const QString& text) = 0;
    // Changes the counts: count lines from first on (first a data line).
    virtual bool insertRows(int32_t first, int32_t count) = 0;
    virtual bool removeRows(int32_t first, int32_t count) = 0;
    virtual bool insertColumns(int32_t first, int32_t count) = 0;
    virtual bool removeColumns(int32_t first, int32_t count) = 0;
    // Asks the table to order its rows by col; false when it cannot. Each
    // data line in followed becomes the line its record moved to.
    virtual bool sortRows(int32_t col, bool descending, std::vector<int32_t>& followed) = 0;
};

}  // namespace TabulaControl::detail
