#include "layout/PagePlan.h"

namespace TabulaControl::detail::layout {

std::vector<LineRun> splitLines(const Axis& axis, bool header, int32_t room, int32_t lineWidth)
{
    const int64_t available = room - (header ? int64_t{axis.size(0)} + lineWidth : 0);
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

std::vector<PrintedPage> planPages(const std::vector<LineRun>& rows, const std::vector<LineRun>& cols)
{
    std::vector<PrintedPage> pages;
    pages.reserve(rows.size() * cols.size());
    for (const LineRun& c : cols) {
        for (const LineRun& r : rows)
            pages.push_back({r, c});
    }
    return pages;
}

}  // namespace TabulaControl::detail::layout
