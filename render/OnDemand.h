#pragma once

#include <TabulaControl/Tabula.h>

#include "navigation/Selection.h"
#include "render/Viewport.h"

#include <cstdint>

namespace TabulaControl::detail {

// What a deferred full repaint draws with besides the grid state: values
// the host can change without a repaint before the pixels are made.
struct RepaintInputs {
    StdFont font;
    StdFont fontFixed;
    OleColor backColor = 0;
    OleColor foreColor = 0;
    // The selection as the marks are drawn, before the selection mode
    // reshapes it.
    navigation::CellBlock block;
    // Whether both scroll bars were shown before the repaint placed them.
    bool barsShown = false;
};

// What painting one row across the columns leaves in the state; the same
// for every row of one repaint.
struct RowWalk {
    render::Viewport::ColumnsReach reach;
    bool drawsCells = false;
};

}  // namespace TabulaControl::detail
