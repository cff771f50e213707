#include "core/Grid.h"

#include <algorithm>

namespace TabulaControl::detail {

namespace {

bool isBlankText(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch == QLatin1Char(' '); });
}

std::optional<int32_t> optionalColour(const QVariant& value)
{
    if (!value.isValid())
        return std::nullopt;
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok)
        raise(RuntimeError::TypeMismatch);
    return roundTo32(number);
}

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

}  // namespace

void Grid::setRows(int32_t n)
{
    ui.scrVertical.setMax(to16(n));
    initializeRows(n);
    s.rows.setCount(n);
    selection.pullBackRows(s.rows.count());
    redrawIfAuto();
}

void Grid::setCols(int32_t n)
{
    ui.scrHorizontal.setMax(to16(n));
    initializeColumns(n);
    s.cols.setCount(n);
    selection.pullBackColumns(s.cols.count());
    redrawIfAuto();
}

void Grid::initializeRows(int32_t n, std::optional<int32_t> backColor, std::optional<int32_t> foreColor)
{
    if (s.cols.count() == 0) {
        s.cols.setLastSizedIndex(1);
        s.columns.resize(1);
    }
    s.rows.setLastSizedIndex(n);
    s.mRowBookmark.redimPreserve(n);
    const int32_t firstNew = s.rows.count() == 0 ? 0 : s.rows.count() + 1;
    s.mCells.setDefaultStyles(gridCellStyles);
    s.mCells.setRows(to16(n));
    for (int32_t r = firstNew; r <= n; ++r)
        s.rows.setSize(r, 15);
    if (firstNew == 0) {
        for (int32_t c = 0; c <= s.cols.count(); ++c)
            initializeGridCell(s.mCells, 0, to16(c));
    }
    const int32_t firstNewDataRow = std::max(firstNew, 1);
    for (int32_t c = 1; c <= s.cols.count(); ++c) {
        const bool checkmarkColumn = s.columns.mask(c) == checkmark;
        if (!backColor && !foreColor && !checkmarkColumn)
            continue;
        for (int32_t r = firstNewDataRow; r <= n; ++r) {
            const int16_t row = to16(r), col = to16(c);
            if (backColor)
                s.mCells.setBackColor(row, col, *backColor);
            if (foreColor)
                s.mCells.setForeColor(row, col, *foreColor);
            if (checkmarkColumn)
                s.mCells.setText(row, col, QStringLiteral("0"));
        }
    }
}

void Grid::initializeColumns(int32_t n)
{
    s.cols.setLastSizedIndex(n);
    s.columns.resize(n);
    if (s.rows.count() == 0) {
        s.rows.setLastSizedIndex(1);
        s.mRowBookmark.redimPreserve(1);
    }
    const int16_t oldStoreCols = s.mCells.Cols();
    s.mCells.setDefaultStyles(gridCellStyles);
    s.mCells.setCols(to16(n == 0 ? 1 : n));
    const int32_t firstNew = s.cols.count() == 0 ? 0 : s.cols.count() + 1;
    for (int32_t c = firstNew; c <= n; ++c) {
        s.cols.setSize(c, c == 0 ? 32 : 64);
        s.columns.resetToDefaults(c);
    }
    if (firstNew > n)
        return;
    for (int32_t r = 0; r <= s.rows.count(); ++r)
        s.rows.setSize(r, 15);
    for (int32_t c = firstNew; c <= std::min<int32_t>(n, oldStoreCols); ++c) {
        for (int32_t r = 0; r <= s.rows.count(); ++r)
            initializeGridCell(s.mCells, to16(r), to16(c));
    }
}

void Grid::setRow(int32_t n)
{
    const CellIndex last = selection.current();
    const int32_t target = std::min(n, s.rows.count());
    moveFocus([&] {
        selection.setRow(target);
        ui.scrVertical.setValue(target);
    });
    fitSelectionToMode();
    if (selection.current() != last)
        events.RowColChange(last.row, last.col);
}

void Grid::setCol(int32_t n)
{
    const CellIndex last = selection.current();
    const int32_t target = std::min(n, s.cols.count());
    moveFocus([&] { selection.setCol(target); });
    showCellButtons();
    if (selection.current() != last)
        events.RowColChange(last.row, last.col);
}

QString Grid::Text() const { return s.mCells.Text(to16(selection.row()), to16(selection.col())); }

void Grid::setText(const QString& value)
{
    const QString stored = Validate(value, selection.col());
    s.mCells.setText(to16(selection.row()), to16(selection.col()), stored);
    redrawIfAuto();
}

QString Grid::TextMatrix(int32_t row, int32_t col) const { return s.mCells.Text(to16(row), to16(col)); }

void Grid::setTextMatrix(int32_t row, int32_t col, const QString& value)
{
    const QString stored = Validate(value, col);
    s.mCells.setText(to16(row), to16(col), stored);
    redrawIfAuto();
}

QString Grid::CellTag(int32_t row, int32_t col) const { return s.mCells.Tag(to16(row), to16(col)); }

void Grid::setCellTag(int32_t row, int32_t col, const QString& value)
{
    s.mCells.setTag(to16(row), to16(col), value);
}

void Grid::setAutoRedraw(bool value)
{
    s.mAutoRedraw = value;
    Refresh();
}

void Grid::setRowHeight(int32_t row, int32_t value)
{
    s.rows.setSize(row, to16(value));
    Refresh();
}

void Grid::setRowBookmark(int32_t row, const QVariant& value) { s.mRowBookmark(row) = value; }

void Grid::setColWidth(int32_t col, int32_t value)
{
    if (col == -1) {
        for (int32_t c = 0; c < s.cols.lastSizedIndex(); ++c)
            s.cols.setSize(c, to16(value));
    } else {
        s.cols.setSize(col, to16(value));
    }
    redrawIfAuto();
}

int32_t Grid::ColAlign(int32_t col)
{
    setColAlign(col, s.columns.alignment(col));
    return 0;
}

void Grid::setColAlign(int32_t col, int32_t value)
{
    if (value < 0 || value > 2)
        return;
    s.columns.setAlignment(col, static_cast<int16_t>(value));
    redrawIfAuto();
}

void Grid::setColMask(int32_t col, int32_t value)
{
    if (value < NoMask || value > checkmark)
        return;
    s.columns.setMask(col, static_cast<int16_t>(value));
    if (value == checkmark) {
        for (int32_t r = 1; r <= s.rows.count(); ++r)
            s.mCells.setText(to16(r), to16(col), QStringLiteral("0"));
    }
    Refresh();
}

bool Grid::RowEmpty(int32_t row) const
{
    for (int32_t c = 1; c <= s.cols.count(); ++c) {
        if (!isBlankText(s.mCells.Text(to16(row), to16(c))))
            return false;
    }
    return true;
}

void Grid::AddItem(const QString& rowData, const QVariant& backColor, const QVariant& foreColor)
{
    bool cancel = false;
    events.BeforeAddRow(cancel);
    if (cancel)
        return;
    ui.scrVertical.setMax(to16(int64_t{s.rows.count()} + 1));
    initializeRows(to32(int64_t{s.rows.count()} + 1), optionalColour(backColor), optionalColour(foreColor));
    s.rows.setCount(s.rows.count() + 1);

    // Every field is validated with the current column's mask, not its own
    // column's: rows added while a masked column is current have always been.
    // Fields go to the store without a copy unless a date mask rewrites them.
    int32_t counter = 0;
    auto store = [&](QStringView field) {
        ++counter;
        const int16_t row = to16(s.rows.count());
        if (s.columns.mask(selection.col()) == DateOnly)
            s.mCells.setText(row, to16(counter), Validate(field.toString(), selection.col()));
        else
            s.mCells.setText(row, to16(counter), field);
    };
    const QStringView data(rowData);
    qsizetype start = 0;
    for (qsizetype tab; (tab = data.indexOf(QLatin1Char('\t'), start)) >= 0; start = tab + 1)
        store(data.sliced(start, tab - start));
    if (start < data.size())
        store(data.sliced(start));

    redrawIfAuto();
    ui.cmdButton.setVisible(false);
    ui.cmdLookup.setVisible(false);
    events.AfterAddRow(s.rows.count());
}

bool Grid::itemFits(const QString& rowData) const
{
    const qsizetype tabs = rowData.count(QLatin1Char('\t'));
    const bool lastField = !rowData.isEmpty() && !rowData.endsWith(QLatin1Char('\t'));
    const int64_t fields = tabs + (lastField ? 1 : 0);
    return fields <= s.cols.count() && s.rows.count() < INT16_MAX && selection.col() >= 0 &&
           selection.col() <= s.cols.count();
}

void Grid::RemoveItem(int32_t row)
{
    if (s.rows.count() == 0)
        return;
    bool cancel = false;
    events.BeforeDeleteRow(row, cancel);
    if (cancel)
        return;
    // Only the cell records move up: row heights and bookmarks stay with
    // their index, as hosts that set them before a removal have always seen.
    s.mCells.Remove(to16(row));
    ui.scrVertical.setMax(to16(s.rows.count() - 1));
    initializeRows(s.rows.count() - 1);
    s.rows.setCount(s.rows.count() - 1);
    selection.clampRows(s.rows.count());
    redrawIfAuto();
    ui.cmdButton.setVisible(false);
    ui.cmdLookup.setVisible(false);
    events.AfterDeleteRow(row);
}

void Grid::Clear()
{
    ui.scrVertical.setMax(0);
    initializeRows(0);
    s.rows.setCount(0);
    selection.pullBackRows(s.rows.count());
    redrawIfAuto();
}

}  // namespace TabulaControl::detail
