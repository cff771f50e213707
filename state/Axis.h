#pragma once

#include "state/VbArray.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace TabulaControl::detail {

// Where a walk over the scrollable rows or columns starts: rows and columns
// before the first that exists take no space.
inline int32_t firstWalked(int32_t first) { return first < 0 ? 0 : first; }

// The rows or the columns of one grid: how many lines follow the header
// line 0, and the size of each line in surface pixels. The sizes are resized
// on their own, before the count follows, so their range may differ from
// 0..count(); every access to a size is bounds-checked and fails with the
// subscript error.
class Axis {
public:
    // The lines past the header, which is also the index of the last line.
    int32_t count() const { return count_; }
    void setCount(int32_t count)
    {
        count_ = count;
        boundChanged();
    }

    int16_t size(int64_t index) const { return sparse_ ? sparseSize(index) : sizes_(index); }
    void setSize(int64_t index, int16_t size);
    // The last index that has a size; -1 when none has.
    int32_t lastSizedIndex() const { return sparse_ ? count_ : sizes_.upper(); }
    // Gives sizes to the indexes 0..index, keeping those that remain.
    void setLastSizedIndex(int64_t index)
    {
        if (!sparse_)
            sizes_.redimPreserve(index);
        boundChanged();
    }
    void clearSizes()
    {
        sizes_.erase();
        sparse_.reset();
        shown_.reset();
    }
    // From now on every line 0..count() has defaultSize until given its own,
    // and only the lines given their own cost memory: for tables of millions
    // of lines.
    void makeSparse(int16_t defaultSize);

    // Appends the header line's size and the sizes of the lines from first
    // on that start within room pixels; returns the index past the last one
    // appended.
    int64_t appendShownSizes(std::vector<int64_t>& key, int32_t first, int32_t room) const;

private:
    // The last walk of appendShownSizes, kept until a change could alter it:
    // a layout asks again after every change to a cell, and the walk is most
    // of what it reads. Lines past a walk that filled its room do not count.
    struct ShownSizes {
        int32_t first = 0;
        int32_t room = 0;
        int64_t end = 0;
        bool header = false;
        bool filled = false;
        std::vector<int64_t> sizes;
    };
    ShownSizes walkShownSizes(int32_t first, int32_t room) const;
    void sizeChanged(int64_t index);
    int16_t sparseSize(int64_t index) const;

    struct SparseSizes {
        int16_t defaultSize = 0;
        std::unordered_map<int64_t, int16_t> own;
    };
    void boundChanged();

    int32_t count_ = 0;
    VbArray<int16_t> sizes_;
    std::optional<SparseSizes> sparse_;
    mutable std::optional<ShownSizes> shown_;
};

}  // namespace TabulaControl::detail
