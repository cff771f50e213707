#include "render/Viewport.h"

#include "core/Errors.h"

namespace TabulaControl::detail::render {

namespace {

void settleExtent(int32_t& drawn, bool& needed, int32_t last, int32_t firstShown)
{
    if (drawn >= last) {
        needed = true;
        drawn = last;
        return;
    }
    needed = firstShown >= 2;
}

}  // namespace

bool Viewport::measurePageRows(int32_t stopRow)
{
    if (pageRows_ >= 1)
        return false;
    pageRows_ = saturate32(int64_t{stopRow} - topRow_ - 1);
    return pageRows_ > 0;
}

void Viewport::measurePageCols(int32_t stopCol)
{
    if (pageCols_ == 0)
        pageCols_ = saturate32(int64_t{stopCol} - leftCol_);
}

void Viewport::settleExtents(int32_t lastX, int32_t lastY)
{
    settleExtent(drawnBottom_, vScrollNeeded_, lastY, topRow_);
    settleExtent(drawnRight_, hScrollNeeded_, lastX, leftCol_);
}

void Viewport::appendLayoutKey(std::vector<int64_t>& key) const
{
    key.insert(key.end(), {topRow_, leftCol_, lineWidth_, pageRows_, pageCols_, drawnBottom_, drawnRight_,
                           vScrollNeeded_, hScrollNeeded_});
}

}  // namespace TabulaControl::detail::render
