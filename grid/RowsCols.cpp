#include "grid/Grid.h"

#include <algorithm>

namespace TabulaControl::detail {

namespace {

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

}  // namespace

void Grid::setRows(int32_t n)
{
    setRowsMax(n);
    model.setRowCount(n);
    selection.pullBackRows(model.rows().count());
    redrawIfAuto();
}

void Grid::setCols(int32_t n)
{
    ui.scrHorizontal.setMax(to16(n));
    model.setColumnCount(n);
    selection.pullBackColumns(model.cols().count());
    redrawIfAuto();
}

void Grid::setRow(int32_t n)
{
    const CellIndex last = selection.current();
    const int32_t target = std::min(n, model.rows().count());
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
    const int32_t target = std::min(n, model.cols().count());
    moveFocus([&] { selection.setCol(target); });
    showCellButtons();
    if (selection.current() != last)
        events.RowColChange(last.row, last.col);
}

QString Grid::Text() const { return model.text(selection.row(), selection.col()); }

void Grid::setText(const QString& value) { setTextMatrix(selection.row(), selection.col(), value); }

QString Grid::TextMatrix(int32_t row, int32_t col) const { return model.text(row, col); }

void Grid::setTextMatrix(int32_t row, int32_t col, const QString& value)
{
    const QString stored = Validate(value, col);
    model.setText(row, col, stored);
    redrawIfAuto();
}

void Grid::setAutoRedraw(bool value)
{
    autoRedraw_ = value;
    Refresh();
}

void Grid::setRowHeight(int32_t row, int32_t value)
{
    model.setRowHeight(row, to16(value));
    Refresh();
}

void Grid::setColWidth(int32_t col, int32_t value)
{
    if (col == -1) {
        for (int32_t c = 0; c < model.cols().lastSizedIndex(); ++c)
            model.setColumnWidth(c, to16(value));
    } else {
        model.setColumnWidth(col, to16(value));
    }
    redrawIfAuto();
}

int32_t Grid::ColAlign(int32_t col)
{
    setColAlign(col, model.columns().alignment(col));
    return 0;
}

void Grid::setColAlign(int32_t col, int32_t value)
{
    if (value < 0 || value > 2)
        return;
    model.columns().setAlignment(col, static_cast<int16_t>(value));
    redrawIfAuto();
}

void Grid::setColMask(int32_t col, int32_t value)
{
    if (value < NoMask || value > checkmark)
        return;
    model.columns().setMask(col, static_cast<int16_t>(value));
    // A bound table keeps its own values; only the own cells start unchecked.
    if (value == checkmark && !model.bound()) {
        for (int32_t r = 1; r <= model.rows().count(); ++r)
            model.setText(r, col, QStringLiteral("0"));
    }
    Refresh();
}

void Grid::AddItem(const QString& rowData, const QVariant& backColor, const QVariant& foreColor)
{
    bool cancel = false;
    events.BeforeAddRow(cancel);
    if (cancel)
        return;
    setRowsMax(int64_t{model.rows().count()} + 1);
    model.appendRow(optionalColour(backColor), optionalColour(foreColor));

    // Every field is validated with the current column's mask, not its own
    // column's: rows added while a masked column is current have always been.
    // Fields go to the store without a copy unless a date mask rewrites them.
    int32_t counter = 0;
    auto store = [&](QStringView field) {
        ++counter;
        const int32_t row = model.rows().count();
        if (model.columns().mask(selection.col()) == DateOnly)
            model.setText(row, counter, Validate(field.toString(), selection.col()));
        else
            model.setText(row, counter, field);
    };
    const QStringView data(rowData);
    qsizetype start = 0;
    for (qsizetype at = 0; at < data.size(); ++at) {
        if (data[at] != QLatin1Char('\t'))
            continue;
        store(data.sliced(start, at - start));
        start = at + 1;
    }
    if (start < data.size())
        store(data.sliced(start));

    redrawIfAuto();
    ui.cmdButton.setVisible(false);
    ui.cmdLookup.setVisible(false);
    events.AfterAddRow(model.rows().count());
}

bool Grid::itemFits(const QString& rowData) const
{
    const auto tabs = std::count(rowData.begin(), rowData.end(), QLatin1Char('\t'));
    const bool lastField = !rowData.isEmpty() && !rowData.endsWith(QLatin1Char('\t'));
    const int64_t fields = tabs + (lastField ? 1 : 0);
    return fields <= model.cols().count() && (model.bound() || model.rows().count() < INT16_MAX) && selection.col() >= 0 &&
           selection.col() <= model.cols().count();
}

void Grid::RemoveItem(int32_t row)
{
    if (model.rows().count() == 0)
        return;
    bool cancel = false;
    events.BeforeDeleteRow(row, cancel);
    if (cancel)
        return;
    // Only the cell records move up: row heights and bookmarks stay with
    // their index, as hosts that set them before a removal have always seen.
    model.removeRow(row);
    setRowsMax(model.rows().count());
    selection.clampRows(model.rows().count());
    redrawIfAuto();
    ui.cmdButton.setVisible(false);
    ui.cmdLookup.setVisible(false);
    events.AfterDeleteRow(row);
}

void Grid::Clear() { setRows(0); }

}  // namespace TabulaControl::detail
