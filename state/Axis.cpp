#include "state/Axis.h"

#include "state/Check.h"
#include "state/Errors.h"

#include <algorithm>

namespace TabulaControl::detail {

Axis::ShownSizes Axis::walkShownSizes(int32_t first, int32_t room) const
{
    ShownSizes walk{first, room, 0, lastSizedIndex() >= 0, false, {}};
    if (walk.header)
        walk.sizes.push_back(size(0));
    // As far as the painters could reach: past a header that takes room
    // only when its size is negative, and by each line's size alone, as
    // when no grid lines are drawn.
    int64_t reach = walk.header ? std::min<int64_t>(0, size(0)) : 0;
    int32_t i = firstWalked(first);
    for (; i <= std::min(count_, lastSizedIndex()) && reach <= room; ++i) {
        const int64_t lineSize = size(i);
        walk.sizes.push_back(lineSize);
        reach += lineSize;
    }
    walk.end = i;
    walk.filled = reach > room;
    return walk;
}

int64_t Axis::appendShownSizes(std::vector<int64_t>& key, int32_t first, int32_t room) const
{
    if (!shown_ || shown_->first != first || shown_->room != room)
        shown_ = walkShownSizes(first, room);
#ifdef TABULA_CACHE_CHECKS
    const ShownSizes fresh = walkShownSizes(first, room);
    TABULA_CHECK(fresh.sizes == shown_->sizes && fresh.end == shown_->end);
#endif
    key.insert(key.end(), shown_->sizes.begin(), shown_->sizes.end());
    return shown_->end;
}

void Axis::setSize(int64_t index, int16_t size)
{
    if (!sparse_) {
        sizes_(index) = size;
    } else {
        sparseSize(index);
        if (size == sparse_->defaultSize)
            sparse_->own.erase(index);
        else
            sparse_->own[index] = size;
    }
    sizeChanged(index);
}

void Axis::makeSparse(int16_t defaultSize)
{
    sizes_.erase();
    sparse_ = SparseSizes{defaultSize, {}};
    shown_.reset();
}

int16_t Axis::sparseSize(int64_t index) const
{
    if (index < 0 || index > count_)
        raise(RuntimeError::Subscript);
    const auto own = sparse_->own.find(index);
    return own == sparse_->own.end() ? sparse_->defaultSize : own->second;
}

void Axis::sizeChanged(int64_t index)
{
    if (shown_ && (index == 0 || (index >= firstWalked(shown_->first) && index < shown_->end)))
        shown_.reset();
}

// A walk that filled its room ends where it did however many lines follow,
// as long as the lines it walked and the header still exist.
void Axis::boundChanged()
{
    if (!shown_)
        return;
    const bool header = lastSizedIndex() >= 0;
    if (!shown_->filled || header != shown_->header || std::min(count_, lastSizedIndex()) < shown_->end - 1)
        shown_.reset();
}

}  // namespace TabulaControl::detail
