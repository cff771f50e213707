#pragma once

#include "state/Axis.h"
#include "state/CellArray.h"
#include "state/ColumnSettings.h"
#include "state/Revision.h"
#include "state/VbArray.h"

#include <QVariant>

#include <cstdint>
#include <optional>
#include <vector>

namespace TabulaControl::detail {

// The data of one grid: the rows and columns with their sizes, the cells,
// each column's settings, each row's bookmark and the header format string.
// Rows and columns count from 0, the fixed header row and column; sizes are
// surface pixels. Counts change only through setRowCount and setColumnCount,
// which keep the sizes, the cells, the settings and the bookmarks in step.
class GridModel {
public:
    const Axis& rows() const { return rows_; }
    const Axis& cols() const { return cols_; }
    const CellArray& cells() const { return cells_; }
    CellArray& cells() { return changed(cells_); }
    const ColumnSettings& columns() const { return columns_; }
    ColumnSettings& columns() { return changed(columns_); }

    // Changes with everything a cell is drawn from: every write, and every
    // access that could write, gives a value never given before.
    uint64_t revision() const { return revision_.value(); }
    // Changes with every write to the columns' count and widths; their
    // settings have a revision of their own.
    uint64_t columnsRevision() const { return columnsRevision_.value(); }

    // Whether (row, col) is a cell of the grid, header cells included.
    // Positions outside it (a host may store any value in the position
    // properties) are drawn nowhere and hit by nothing.
    bool hasCell(int64_t row, int64_t col) const
    {
        return row >= 0 && row <= rows_.count() && col >= 0 && col <= cols_.count();
    }

    // Gives the grid n rows past the header. Rows that come in get the
    // default height and style, the given colours, and "0" in check-mark
    // columns; rows past n are dropped from the store.
    void setRowCount(int32_t n, std::optional<int32_t> backColor = {}, std::optional<int32_t> foreColor = {});
    // Gives the grid n columns past the header; columns that come in get the
    // default width, style and settings.
    void setColumnCount(int32_t n);
    // Moves the cells of the rows below row up by one; the row count stays.
    void removeRowCells(int32_t row) { changed(cells_).Remove(to16(row)); }

    // Puts the data rows' cells and bookmarks in a new order: row i + 1
    // takes those of row order[i]. Row heights stay by index.
    void permuteRows(const std::vector<int32_t>& order);

    void setRowHeight(int64_t row, int16_t height) { changed(rows_).setSize(row, height); }
    void setColumnWidth(int64_t col, int16_t width) { changedColumns(cols_).setSize(col, width); }

    // Whether every data cell of row holds nothing but spaces.
    bool rowEmpty(int32_t row) const;

    const QVariant& bookmark(int64_t row) const { return bookmarks_(row); }
    void setBookmark(int64_t row, const QVariant& value) { bookmarks_(row) = value; }

    const QString& formatString() const { return formatString_; }
    void setFormatString(const QString& value) { formatString_ = value; }

    // Drops the cells and the line sizes and forgets the columns' edit
    // permissions, as a grid that shuts down does; the counts stay.
    void release();

private:
    template <class Part>
    Part& changed(Part& part)
    {
        revision_.changed();
        return part;
    }
    template <class Part>
    Part& changedColumns(Part& part)
    {
        columnsRevision_.changed();
        return changed(part);
    }
    void initializeRows(int32_t n, std::optional<int32_t> backColor, std::optional<int32_t> foreColor);
    void initializeColumns(int32_t n);

    Axis cols_;
    Axis rows_;
    CellArray cells_;
    ColumnSettings columns_;
    VbArray<QVariant> bookmarks_;
    QString formatString_;
    Revision revision_;
    Revision columnsRevision_;
};

}  // namespace TabulaControl::detail
