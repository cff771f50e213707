#pragma once

#include "state/Errors.h"

#include <cstdint>
#include <vector>

namespace TabulaControl::detail {

// A 0-based array whose upper bound is set explicitly and whose every access
// is bounds-checked, failing with the subscript error.
template <class T>
class VbArray {
public:
    // -1 while the array has no elements.
    int32_t upper() const { return static_cast<int32_t>(items_.size()) - 1; }

    // Gives the array the index range 0..upperBound, keeping the contents of
    // the indexes that remain.
    void redimPreserve(int64_t upperBound)
    {
        if (upperBound < 0 || upperBound > INT32_MAX - 1)
            raise(RuntimeError::Subscript);
        items_.resize(static_cast<size_t>(upperBound) + 1);
    }
    void erase() { items_.clear(); }

    T& operator()(int64_t index) { return items_[checked(index)]; }
    const T& operator()(int64_t index) const { return items_[checked(index)]; }

private:
    size_t checked(int64_t index) const
    {
        if (index < 0 || index >= static_cast<int64_t>(items_.size()))
            raise(RuntimeError::Subscript);
        return static_cast<size_t>(index);
    }

    std::vector<T> items_;
};

}  // namespace TabulaControl::detail
