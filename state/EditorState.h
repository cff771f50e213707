#pragma once

#include "state/Revision.h"

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::editing {

// The cell editor of one grid: whether an edit is open, whether the last
// BeforeEdit of a commit cancelled it, and the host's settings for opening
// an edit.
class EditorState {
public:
    bool isOpen() const { return open_; }
    void open() { revision_.set(open_, true); }
    void close() { revision_.set(open_, false); }

    // Clears the cancel flag and hands it to ask, which may set it; returns
    // whether it did. The flag is the one ask writes to, so it is set for
    // the rest of the call as soon as ask sets it.
    template <class Ask>
    bool cancelledBy(Ask&& ask)
    {
        const bool before = cancelled_;
        cancelled_ = false;
        ask(cancelled_);
        if (cancelled_ != before)
            revision_.changed();
        return cancelled_;
    }

    // Whether the editor opens with all its text selected.
    bool selectsTextOnOpen() const { return selectTextOnOpen_; }
    void setSelectsTextOnOpen(bool value) { revision_.set(selectTextOnOpen_, value); }
    // Whether editing the empty last row adds a row first.
    bool addsRowOnEdit() const { return addRowOnEdit_; }
    void setAddsRowOnEdit(bool value) { revision_.set(addRowOnEdit_, value); }
    void restoreDefaultSettings()
    {
        setSelectsTextOnOpen(false);
        setAddsRowOnEdit(false);
    }

    // Changes with every change above.
    uint64_t revision() const { return revision_.value(); }
    // Appends the open and cancel flags, which the cache checks compare.
    void appendState(std::vector<int64_t>& state) const { state.insert(state.end(), {open_, cancelled_}); }

private:
    bool open_ = false;
    bool cancelled_ = false;
    bool selectTextOnOpen_ = false;
    bool addRowOnEdit_ = false;
    Revision revision_;
};

}  // namespace TabulaControl::detail::editing
