#pragma once

#include "state/Axis.h"

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::layout {

// A run of lines first..last, past the header line; empty when last < first.
struct LineRun {
    int32_t first = 1;
    int32_t last = 0;
    friend bool operator==(const LineRun&, const LineRun&) = default;
};

// The rows and columns one printed page shows besides the headers.
struct PrintedPage {
    LineRun rows;
    LineRun cols;
    friend bool operator==(const PrintedPage&, const PrintedPage&) = default;
};

// Splits the lines 1..count of axis into runs that fit in room pixels each,
// after the header line when it is repeated; every line is followed by
// lineWidth pixels of grid line. A line longer than the room gets a run of
// its own. Always at least one run.
std::vector<LineRun> splitLines(const Axis& axis, bool header, int32_t room, int32_t lineWidth);

// The pages of a printout: every row run of the first column run, then
// every row run of the next, and so on.
std::vector<PrintedPage> planPages(const std::vector<LineRun>& rows, const std::vector<LineRun>& cols);

}  // namespace TabulaControl::detail::layout
