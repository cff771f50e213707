#pragma once

#include <cstdint>

namespace TabulaControl::detail {

// Counts the changes to one component's state: a key made of revisions
// matches as long as none of its components changed. Every change takes a
// value that no component of the thread held before, so a component built
// or assigned afresh never matches an older key by chance.
class Revision {
public:
    uint64_t value() const { return value_; }
    void changed() { value_ = next(); }
    // Stores value in field, counting a change only when it differs.
    template <class T, class U>
    void set(T& field, const U& value)
    {
        if (field != value) {
            field = value;
            changed();
        }
    }

private:
    static uint64_t next()
    {
        thread_local uint64_t last = 0;
        return ++last;
    }

    uint64_t value_ = next();
};

}  // namespace TabulaControl::detail
