#include "state/Viewport.h"

#include "state/Errors.h"

namespace TabulaControl::detail::render {

namespace {

void settleExtent(Revision& revision, int32_t& drawn, bool& needed, int32_t last, int32_t firstShown)
{
    if (drawn >= last) {
        revision.set(needed, true);
        revision.set(drawn, last);
        return;
    }
    revision.set(needed, firstShown >= 2);
}

}  // namespace

bool Viewport::measurePageRows(int32_t stopRow)
{
    if (pageRows_ >= 1)
        return false;
    revision_.set(pageRows_, saturate32(int64_t{stopRow} - topRow_ - 1));
    return pageRows_ > 0;
}

void Viewport::measurePageCols(int32_t stopCol)
{
    if (pageCols_ == 0)
        revision_.set(pageCols_, saturate32(int64_t{stopCol} - leftCol_));
}

void Viewport::settleExtents(int32_t lastX, int32_t lastY)
{
    settleExtent(revision_, drawnBottom_, vScrollNeeded_, lastY, topRow_);
    settleExtent(revision_, drawnRight_, hScrollNeeded_, lastX, leftCol_);
}

void Viewport::appendState(std::vector<int64_t>& state) const
{
    state.insert(state.end(), {topRow_, leftCol_, lineWidth_, pageRows_, pageCols_, drawnBottom_, drawnRight_,
                           vScrollNeeded_, hScrollNeeded_});
}

}  // namespace TabulaControl::detail::render
