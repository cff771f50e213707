#include "state/GridModel.h"

#include <TabulaControl/Tabula.h>

#include <algorithm>

namespace TabulaControl::detail {

namespace {

// New cells of the store come in with these; cells that were already there
// are given them by initializeGridCell.
constexpr DefaultStyles gridCellStyles = {.headerStyle = 1, .headerAlignVertical = 1, .dataStyle = 2};

void initializeGridCell(CellArray& cells, int16_t row, int16_t col)
{
    if (row >= 1 && col >= 1) {
        cells.setStyle(row, col, 2);
        return;
    }
    cells.setTextAlignVertical(row, col, 1);
    cells.setStyle(row, col, 1);
    if (col == 0 && row >= 1)
        cells.setValue(row, col, 0);
}

bool isBlankText(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch == QLatin1Char(' '); });
}

}  // namespace

void GridModel::setRowCount(int32_t n, std::optional<int32_t> backColor, std::optional<int32_t> foreColor)
{
    revision_.changed();
    // A grid without columns gets its first with its rows.
    if (cols_.count() == 0)
        columnsRevision_ = revision_;
    initializeRows(n, backColor, foreColor);
    rows_.setCount(n);
}

void GridModel::setColumnCount(int32_t n)
{
    revision_.changed();
    columnsRevision_ = revision_;
    initializeColumns(n);
    cols_.setCount(n);
}

void GridModel::permuteRows(const std::vector<int32_t>& order)
{
    changed(cells_).permuteRows(order);
    std::vector<QVariant> moved;
    moved.reserve(order.size());
    for (int32_t from : order)
        moved.push_back(bookmarks_(from));
    for (size_t i = 0; i < moved.size(); ++i)
        bookmarks_(static_cast<int64_t>(i) + 1) = std::move(moved[i]);
}

bool GridModel::rowEmpty(int32_t row) const
{
    for (int32_t c = 1; c <= cols_.count(); ++c) {
        if (!isBlankText(cells_.Text(to16(row), to16(c))))
            return false;
    }
    return true;
}

void GridModel::release()
{
    revision_.changed();
    columnsRevision_ = revision_;
    cells_ = CellArray();
    rows_.clearSizes();
    cols_.clearSizes();
    columns_.clearEditAllowed();
}

void GridModel::initializeRows(int32_t n, std::optional<int32_t> backColor, std::optional<int32_t> foreColor)
{
    if (cols_.count() == 0) {
        cols_.setLastSizedIndex(1);
        columns_.resize(1);
    }
    rows_.setLastSizedIndex(n);
    bookmarks_.redimPreserve(n);
    const int32_t firstNew = rows_.count() == 0 ? 0 : rows_.count() + 1;
    cells_.setDefaultStyles(gridCellStyles);
    cells_.setRows(to16(n));
    for (int32_t r = firstNew; r <= n; ++r)
        rows_.setSize(r, 15);
    if (firstNew == 0) {
        for (int32_t c = 0; c <= cols_.count(); ++c)
            initializeGridCell(cells_, 0, to16(c));
    }
    const int32_t firstNewDataRow = std::max(firstNew, 1);
    for (int32_t c = 1; c <= cols_.count(); ++c) {
        const bool checkmarkColumn = columns_.mask(c) == checkmark;
        if (!backColor && !foreColor && !checkmarkColumn)
            continue;
        for (int32_t r = firstNewDataRow; r <= n; ++r) {
            const int16_t row = to16(r), col = to16(c);
            if (backColor)
                cells_.setBackColor(row, col, *backColor);
            if (foreColor)
                cells_.setForeColor(row, col, *foreColor);
            if (checkmarkColumn)
                cells_.setText(row, col, QStringLiteral("0"));
        }
    }
}

void GridModel::initializeColumns(int32_t n)
{
    cols_.setLastSizedIndex(n);
    columns_.resize(n);
    if (rows_.count() == 0) {
        rows_.setLastSizedIndex(1);
        bookmarks_.redimPreserve(1);
    }
    const int16_t oldStoreCols = cells_.Cols();
    cells_.setDefaultStyles(gridCellStyles);
    cells_.setCols(to16(n == 0 ? 1 : n));
    const int32_t firstNew = cols_.count() == 0 ? 0 : cols_.count() + 1;
    for (int32_t c = firstNew; c <= n; ++c) {
        cols_.setSize(c, c == 0 ? 32 : 64);
        columns_.resetToDefaults(c);
    }
    if (firstNew > n)
        return;
    for (int32_t r = 0; r <= rows_.count(); ++r)
        rows_.setSize(r, 15);
    for (int32_t c = firstNew; c <= std::min<int32_t>(n, oldStoreCols); ++c) {
        for (int32_t r = 0; r <= rows_.count(); ++r)
            initializeGridCell(cells_, to16(r), to16(c));
    }
}

}  // namespace TabulaControl::detail
