#pragma once

#include "state/Axis.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TabulaControl::detail::layout {

// A run of lines first..last, past the header line; empty when last < first.
struct LineRun {
    int32_t first = 1;
    int32_t last = 0;
};

// One line of a printed page: its index and its first pixel.
struct PlacedLine {
    int32_t index = 0;
    int32_t start = 0;
};

// The lines a printed page shows along one axis, the header line first when
// it is repeated, each after the one before and its grid line; the first
// starts one grid line in. extent is where the last grid line ends, at
// least 1.
struct PageLines {
    std::vector<PlacedLine> lines;
    int32_t extent = 1;
};

struct PrintedPage {
    PageLines rows;
    PageLines cols;
};

// One axis of a printout: its lines, whether the header line is repeated on
// every page, and the room a page has for them.
struct PrintedAxis {
    const Axis& axis;
    bool header = false;
    int32_t room = 0;
};

// The pages of a printout. Each axis is split into runs of lines that fit
// in its room after the header line when it is repeated, every line followed
// by lineWidth pixels of grid line; a line longer than the room gets a run
// of its own, and an axis without lines one empty run. The pages are every
// row run of the first column run, then every row run of the next, and so
// on. Each page is placed when asked for, from the axes, which must outlive
// the plan.
class PagePlan {
public:
    PagePlan(PrintedAxis rows, PrintedAxis cols, int32_t lineWidth);
    size_t pageCount() const { return rowRuns_.size() * colRuns_.size(); }
    PrintedPage page(size_t index) const;

private:
    PrintedAxis rows_;
    PrintedAxis cols_;
    int32_t lineWidth_;
    std::vector<LineRun> rowRuns_;
    std::vector<LineRun> colRuns_;
};

}  // namespace TabulaControl::detail::layout
