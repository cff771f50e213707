#include "layout/PagePlan.h"

#include "layout/Positions.h"

#include <algorithm>

namespace TabulaControl::detail::layout {

namespace {

std::vector<LineRun> splitLines(const PrintedAxis& printed, int32_t lineWidth)
{
    const Axis& axis = printed.axis;
    const int64_t available = printed.room - (printed.header ? int64_t{axis.size(0)} + lineWidth : 0);
    std::vector<LineRun> runs{LineRun{1, 0}};
    int64_t used = 0;
    for (int32_t i = 1; i <= axis.count(); ++i) {
        const int64_t size = int64_t{axis.size(i)} + lineWidth;
        LineRun& run = runs.back();
        if (run.last >= run.first && used + size > available) {
            runs.push_back({i, i});
            used = size;
            continue;
        }
        run.last = i;
        used += size;
    }
    return runs;
}

// Places the header line, when repeated, and the run with the walk the
// painters make on screen.
PageLines placeLines(const PrintedAxis& printed, LineRun run, int32_t lineWidth)
{
    PageLines placed;
    int32_t at = lineWidth;
    const auto place = [&](int32_t index) {
        placed.lines.push_back({index, at});
        at = advance(at, printed.axis.size(index), lineWidth);
    };
    if (printed.header)
        place(0);
    for (int32_t i = run.first; i <= run.last; ++i)
        place(i);
    placed.extent = std::max(at, 1);
    return placed;
}

}  // namespace

PagePlan::PagePlan(PrintedAxis rows, PrintedAxis cols, int32_t lineWidth)
    : rows_(rows),
      cols_(cols),
      lineWidth_(lineWidth),
      rowRuns_(splitLines(rows, lineWidth)),
      colRuns_(splitLines(cols, lineWidth))
{
}

PrintedPage PagePlan::page(size_t index) const
{
    return {placeLines(rows_, rowRuns_[index % rowRuns_.size()], lineWidth_),
            placeLines(cols_, colRuns_[index / rowRuns_.size()], lineWidth_)};
}

}  // namespace TabulaControl::detail::layout
