#include "state/GridModel.h"

#include <TabulaControl/Tabula.h>

#include <algorithm>
#include <stdexcept>

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

// A bound grid's source refused a change; the text says which.
[[noreturn]] void refused(const std::string& change)
{
    throw std::runtime_error("the bound model refused to " + change);
}

bool isBlankText(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch == QLatin1Char(' '); });
}

}  // namespace

void GridModel::setRowCount(int32_t n, std::optional<int32_t> backColor, std::optional<int32_t> foreColor)
{
    if (source_) {
        resizeSource(n, source_->rowCount(), &CellSource::insertRows, &CellSource::removeRows, "rows");
        followSource();
        return;
    }
    resizeRows(n, backColor, foreColor);
    if (listener_)
        listener_->everythingChanged();
}

void GridModel::resizeSource(int32_t n, int32_t count, SourceWrite insert, SourceWrite remove, const char* lines)
{
    if (n < 0)
        raise(RuntimeError::Subscript);
    if (n > count && !writeSource([&] { return (source_->*insert)(count + 1, n - count); }))
        refused(std::string("add ") + lines);
    if (n < count && !writeSource([&] { return (source_->*remove)(n + 1, count - n); }))
        refused(std::string("remove ") + lines);
}

void GridModel::appendRow(std::optional<int32_t> backColor, std::optional<int32_t> foreColor)
{
    if (source_) {
        if (!writeSource([&] { return source_->insertRows(source_->rowCount() + 1, 1); }))
            refused("add a row");
        followSource();
        return;
    }
    const int32_t row = to32(int64_t{rows_.count()} + 1);
    resizeRows(row, backColor, foreColor);
    if (listener_)
        listener_->rowsAppended(row, row);
}

void GridModel::removeRow(int32_t row)
{
    if (source_) {
        if (row < 1 || row > rows_.count() || !writeSource([&] { return source_->removeRows(row, 1); }))
            refused("remove the row");
        followSource();
        return;
    }
    const int16_t storeIndex = to16(row);
    const int32_t removed = std::min(row, rows_.count());
    if (listener_ && removed >= 1)
        listener_->rowAboutToBeRemoved(removed);
    changed(cells_).Remove(storeIndex);
    resizeRows(rows_.count() - 1, {}, {});
    if (listener_)
        listener_->rowRemoved(removed);
}

void GridModel::setText(int32_t row, int32_t col, QStringView text)
{
    if (source_) {
        storeRow(row);
        cells_.Text(0, to16(col));
        if (!writeSource([&] { return source_->setText(row, col, text.toString()); }))
            refused("store the text");
        revision_.changed();
        return;
    }
    changed(cells_).setText(to16(row), to16(col), text);
    if (listener_)
        listener_->cellChanged(row, col);
}

void GridModel::resizeRows(int32_t n, std::optional<int32_t> backColor, std::optional<int32_t> foreColor)
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
    if (source_ && n != source_->columnCount()) {
        resizeSource(n, source_->columnCount(), &CellSource::insertColumns, &CellSource::removeColumns, "columns");
        n = source_->columnCount();
    }
    revision_.changed();
    columnsRevision_ = revision_;
    initializeColumns(n);
    cols_.setCount(n);
    if (listener_)
        listener_->everythingChanged();
}

void GridModel::bind(CellSource& source)
{
    source_ = &source;
    rows_.makeSparse(15);
    setColumnCount(source.columnCount());
    cells_.setRows(1);
    initializeGridCell(cells_, 1, 0);
    followSource();
}

void GridModel::followSource()
{
    revision_.changed();
    if (source_->columnCount() != cols_.count())
        setColumnCount(source_->columnCount());
    rows_.setCount(source_->rowCount());
}

int16_t GridModel::storeRow(int32_t row) const
{
    if (!source_)
        return to16(row);
    if (row < 0 || row > rows_.count())
        raise(RuntimeError::Subscript);
    return row == 0 ? 0 : 1;
}

QString GridModel::text(int32_t row, int32_t col) const
{
    if (!source_)
        return cells_.Text(to16(row), to16(col));
    cells_.Text(storeRow(row), to16(col));
    return source_->text(row, col);
}

QAnyStringView GridModel::textView(int32_t row, int32_t col) const
{
    if (!source_)
        return cells_.textView(to16(row), to16(col));
    lastText_ = text(row, col);
    return lastText_;
}

const QVariant& GridModel::bookmark(int64_t row) const
{
    if (!source_)
        return bookmarks_(row);
    static const QVariant none;
    storeRow(to32(row));
    const auto found = boundBookmarks_.find(row);
    return found == boundBookmarks_.end() ? none : found->second;
}

void GridModel::setBookmark(int64_t row, const QVariant& value)
{
    if (!source_) {
        bookmarks_(row) = value;
        return;
    }
    storeRow(to32(row));
    boundBookmarks_[row] = value;
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
    if (listener_)
        listener_->everythingChanged();
}

void GridModel::sortSource(int32_t col, bool descending, std::vector<int32_t>& followed)
{
    if (!writeSource([&] { return source_->sortRows(col, descending, followed); }))
        refused("sort its rows");
}

bool GridModel::rowEmpty(int32_t row) const
{
    for (int32_t c = 1; c <= cols_.count(); ++c) {
        if (!isBlankText(text(row, c)))
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
    if (listener_)
        listener_->everythingChanged();
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
    if (!source_) {
        for (int32_t r = 0; r <= rows_.count(); ++r)
            rows_.setSize(r, 15);
    }
    const int32_t storeRows = source_ ? cells_.Rows() : rows_.count();
    for (int32_t c = firstNew; c <= std::min<int32_t>(n, oldStoreCols); ++c) {
        for (int32_t r = 0; r <= storeRows; ++r)
            initializeGridCell(cells_, to16(r), to16(c));
    }
}

}  // namespace TabulaControl::detail
