#pragma once

#include "state/Axis.h"
#include "state/CellArray.h"
#include "state/CellSource.h"
#include "state/ColumnSettings.h"
#include "state/Errors.h"
#include "state/GridListener.h"
#include "state/Revision.h"
#include "state/VbArray.h"

#include <QVariant>

#include <cstdint>
#include <optional>
#include <unordered_map>
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

    // Reads and writes the texts through source from now on, whose counts
    // the grid takes; only the header row keeps cells of its own, and every
    // data cell the attributes of data cells by default. For a model built
    // afresh.
    void bind(CellSource& source);
    bool bound() const { return source_ != nullptr; }
    // n as a row count, failing with the overflow error past what the cells
    // can hold: the own store numbers its rows in 16 bits.
    int32_t checkedRowCount(int64_t n) const { return source_ ? to32(n) : to16(n); }
    // Takes the source's counts after it changed them itself.
    void followSource();
    // Something a bound grid shows changed in its source.
    void sourceChanged() { revision_.changed(); }
    // Whether the grid is writing to its source: what the source reports
    // meanwhile is the grid's own change, which the writer repaints.
    bool writingSource() const { return writingSource_; }

    // The row of the cell store that keeps row's attributes: the row itself,
    // or for a bound grid the header row or the one data row.
    int16_t storeRow(int32_t row) const;
    QString text(int32_t row, int32_t col) const;
    // The text without a copy: valid until the next read or change.
    QAnyStringView textView(int32_t row, int32_t col) const;

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
    // Adds one row at the end, as setRowCount does.
    void appendRow(std::optional<int32_t> backColor, std::optional<int32_t> foreColor);
    // Moves the cells of the rows below row up by one and drops the last row.
    void removeRow(int32_t row);

    // Stores the text of one cell; every text written goes through here, so
    // that the listener hears of it.
    void setText(int32_t row, int32_t col, QStringView text);
    // The one listener told of every change to the cells and the counts.
    void setListener(GridListener* listener) { listener_ = listener; }

    // Puts the data rows' cells and bookmarks in a new order: row i + 1
    // takes those of row order[i]. Row heights stay by index.
    void permuteRows(const std::vector<int32_t>& order);
    // Asks a bound grid's table to order its rows by col.
    void sortSource(int32_t col, bool descending, std::vector<int32_t>& followed);

    void setRowHeight(int64_t row, int16_t height) { changed(rows_).setSize(row, height); }
    void setColumnWidth(int64_t col, int16_t width) { changedColumns(cols_).setSize(col, width); }

    // Whether every data cell of row holds nothing but spaces.
    bool rowEmpty(int32_t row) const;

    const QVariant& bookmark(int64_t row) const;
    void setBookmark(int64_t row, const QVariant& value);

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
    void resizeRows(int32_t n, std::optional<int32_t> backColor, std::optional<int32_t> foreColor);
    // Asks the source to take one of its counts from count to n, adding or
    // removing lines at the end; lines names them when it refuses.
    using SourceWrite = bool (CellSource::*)(int32_t first, int32_t count);
    void resizeSource(int32_t n, int32_t count, SourceWrite insert, SourceWrite remove, const char* lines);
    // Runs a write to the source with writingSource() true.
    template <class F>
    bool writeSource(F&& write)
    {
        struct Writing {
            bool& flag;
            ~Writing() { flag = false; }
        } writing{writingSource_ = true};
        return write();
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
    GridListener* listener_ = nullptr;
    CellSource* source_ = nullptr;
    // A bound grid's bookmarks, by row: only those set cost memory.
    std::unordered_map<int64_t, QVariant> boundBookmarks_;
    mutable QString lastText_;
    bool writingSource_ = false;
};

}  // namespace TabulaControl::detail
