#pragma once

#include <TabulaControl/Tabula.h>

#include "state/Selection.h"

#include <cstdint>
#include <optional>
#include <vector>

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

// What every cell is drawn from besides its place: the grid's data, the
// appearance, the fonts and shared colours, the surface. While it stays the
// same, a cell a pass drew is right wherever its pixels were moved whole.
struct CellInputs {
    uint64_t modelRevision = 0;
    std::vector<int64_t> values;
    std::optional<StdFont> font;
    std::optional<StdFont> headerFont;
    friend bool operator==(const CellInputs&, const CellInputs&) = default;
};

// The cells the last pass over them drew, and the first row and column it
// drew them from. A pass that leaves the header row alone vouches for it only
// if it was current before.
struct PaintedCells {
    CellInputs inputs;
    int32_t topRow = 0;
    int32_t leftCol = 0;
    bool headerRowCurrent = false;
};

}  // namespace TabulaControl::detail
