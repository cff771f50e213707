#include "state/ColumnSettings.h"

#include "state/Errors.h"

namespace TabulaControl::detail {

namespace {

size_t checkedIndex(int64_t index, int64_t count)
{
    if (index < 0 || index >= count)
        raise(RuntimeError::Subscript);
    return static_cast<size_t>(index);
}

}  // namespace

const ColumnSettings::Record& ColumnSettings::record(int64_t col) const
{
    return records_[checkedIndex(col, static_cast<int64_t>(records_.size()))];
}

ColumnSettings::Record& ColumnSettings::record(int64_t col)
{
    revision_.changed();
    return records_[checkedIndex(col, static_cast<int64_t>(records_.size()))];
}

const ColumnSettings::Record& ColumnSettings::permittedRecord(int64_t col) const
{
    return records_[checkedIndex(col, editAllowedCount_)];
}

ColumnSettings::Record& ColumnSettings::permittedRecord(int64_t col)
{
    revision_.changed();
    return records_[checkedIndex(col, editAllowedCount_)];
}

void ColumnSettings::resize(int64_t lastCol)
{
    if (lastCol < 0 || lastCol > INT32_MAX - 1)
        raise(RuntimeError::Subscript);
    revision_.changed();
    records_.resize(static_cast<size_t>(lastCol) + 1);
    editAllowedCount_ = static_cast<int32_t>(lastCol) + 1;
}

void ColumnSettings::resetToDefaults(int64_t col)
{
    record(col) = Record{.alignment = 0, .editAllowed = true, .mask = 0, .editWidth = 50};
}

void ColumnSettings::clearEditAllowed()
{
    revision_.changed();
    for (Record& r : records_)
        r.editAllowed = false;
    editAllowedCount_ = 0;
}

}  // namespace TabulaControl::detail
