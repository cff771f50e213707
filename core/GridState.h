#pragma once

#include <TabulaControl/Tabula.h>

#include "core/Axis.h"
#include "core/CellArray.h"
#include "core/ColumnSettings.h"
#include "core/VbArray.h"

#include <QVariant>

#include <cstdint>
#include <vector>

namespace TabulaControl::detail {

// The colours every grid of a thread reads and draws with: setting BackColor
// or ForeColor on one grid changes them for all grids of the thread.
inline thread_local OleColor SharedBackColor = 0xFFFFFF;
inline thread_local OleColor SharedForeColor = 0x80000012;

// The whole state of one grid. Rows and columns count from 0, the fixed
// header row and column; every per-row array runs 0..rows.count() and every
// per-column array 0..cols.count(). Sizes and positions are surface pixels.
struct GridState {
    Axis cols;
    Axis rows;
    bool mAutoRedraw = true;
    QString mFormatString;
    CellArray mCells;
    VbArray<QVariant> mRowBookmark;
    // Here rather than in Grid because the painters, the clipboard and the
    // editor read a column's settings from the state alone.
    ColumnSettings columns;
};

// Whether (row, col) is a cell of the grid, header cells included. Positions
// outside it (a host may store any value in the position properties) are
// drawn nowhere and hit by nothing.
inline bool hasCell(const GridState& s, int64_t row, int64_t col)
{
    return row >= 0 && row <= s.rows.count() && col >= 0 && col <= s.cols.count();
}

// Turns AutoRedraw off for a scope, so that a run of changes is painted once
// by the caller afterwards. The host's setting comes back however the scope ends.
class RedrawDeferred {
public:
    explicit RedrawDeferred(GridState& s) : s_(s), autoRedraw_(s.mAutoRedraw) { s.mAutoRedraw = false; }
    ~RedrawDeferred() { s_.mAutoRedraw = autoRedraw_; }
    RedrawDeferred(const RedrawDeferred&) = delete;
    RedrawDeferred& operator=(const RedrawDeferred&) = delete;

private:
    GridState& s_;
    bool autoRedraw_;
};

}  // namespace TabulaControl::detail
