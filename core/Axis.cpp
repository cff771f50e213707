#include "core/Axis.h"

#include <algorithm>

namespace TabulaControl::detail {

int64_t Axis::appendShownSizes(std::vector<int64_t>& key, int32_t first, int32_t room) const
{
    const int32_t lastSized = lastSizedIndex();
    if (lastSized >= 0)
        key.push_back(size(0));
    int64_t reach = 0;
    int32_t i = firstWalked(first);
    for (; i <= std::min(count_, lastSized) && reach <= room; ++i) {
        const int64_t lineSize = size(i);
        key.push_back(lineSize);
        reach += lineSize + 1;
    }
    return i;
}

}  // namespace TabulaControl::detail
