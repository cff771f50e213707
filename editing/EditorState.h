#pragma once

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::editing {

// The cell editor of one grid: whether an edit is open, whether the last
// BeforeEdit of a commit cancelled it, and the host's settings for opening
// an edit.
class EditorState {
public:
    bool isOpen() const { return open_; }
    void open() { open_ = true; }
    void close() { open_ = false; }

    // Clears the cancel flag and hands it to ask, which may set it; returns
    // whether it did. The flag is the one ask writes to, so it is set for
    // the rest of the call as soon as ask sets it.
    template <class Ask>
    bool cancelledBy(Ask&& ask)
    {
        cancelled_ = false;
        ask(cancelled_);
        return cancelled_;
    }

    // Whether the editor opens with all its text selected.
    bool selectsTextOnOpen() const { return selectTextOnOpen_; }
    void setSelectsTextOnOpen(bool value) { selectTextOnOpen_ = value; }
    // Whether editing the empty last row adds a row first.
    bool addsRowOnEdit() const { return addRowOnEdit_; }
    void setAddsRowOnEdit(bool value) { addRowOnEdit_ = value; }
    void restoreDefaultSettings() { selectTextOnOpen_ = addRowOnEdit_ = false; }

    // Appends what the editor adds to a layout's key.
    void appendLayoutKey(std::vector<int64_t>& key) const;

private:
    bool open_ = false;
    bool cancelled_ = false;
    bool selectTextOnOpen_ = false;
    bool addRowOnEdit_ = false;
};

}  // namespace TabulaControl::detail::editing
