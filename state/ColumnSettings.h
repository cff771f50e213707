#pragma once

#include "state/Revision.h"

#include <cstdint>
#include <vector>

namespace TabulaControl::detail {

// The settings of each column: alignment, whether its cells may be edited,
// its input mask and the width its editor allows. Every column holds one
// record. The edit permissions can be cleared on their own (a grid that shuts
// down forgets them), so their range may be shorter than the other settings';
// every access is bounds-checked against its own range and fails with the
// subscript error.
class ColumnSettings {
public:
    int16_t alignment(int64_t col) const { return record(col).alignment; }
    void setAlignment(int64_t col, int16_t alignment) { record(col).alignment = alignment; }
    bool editAllowed(int64_t col) const { return permittedRecord(col).editAllowed; }
    void setEditAllowed(int64_t col, bool allowed) { permittedRecord(col).editAllowed = allowed; }
    int16_t mask(int64_t col) const { return record(col).mask; }
    void setMask(int64_t col, int16_t mask) { record(col).mask = mask; }
    int16_t editWidth(int64_t col) const { return record(col).editWidth; }
    void setEditWidth(int64_t col, int16_t width) { record(col).editWidth = width; }

    // Gives settings to the columns 0..col, keeping those that remain; the
    // columns that gain them start with none set, and not editable.
    void resize(int64_t lastCol);
    // Gives col the settings of a new column.
    void resetToDefaults(int64_t col);
    // Forgets every column's edit permission, keeping the other settings.
    void clearEditAllowed();

    // Changes with every write to the settings.
    uint64_t revision() const { return revision_.value(); }

private:
    struct Record {
        int16_t alignment = 0;
        bool editAllowed = false;
        int16_t mask = 0;
        int16_t editWidth = 0;
    };

    const Record& record(int64_t col) const;
    Record& record(int64_t col);
    const Record& permittedRecord(int64_t col) const;
    Record& permittedRecord(int64_t col);

    std::vector<Record> records_;
    int32_t editAllowedCount_ = 0;
    Revision revision_;
};

}  // namespace TabulaControl::detail
