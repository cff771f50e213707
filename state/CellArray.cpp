#include "state/CellArray.h"

#include "state/Errors.h"

#include <QHash>

#include <algorithm>

namespace TabulaControl::detail {

namespace {

constexpr uint32_t PlainFormat = 0;
constexpr uint32_t HeaderFormat = 1;
// The first allocation of a row's texts or attributes covers this many
// cells, or the whole row when it is narrower.
constexpr size_t FirstRowCapacity = 16;

template <class F>
auto guarded(const char* accessor, F&& body, std::source_location where = std::source_location::current())
{
    return trap("clsCellArray", accessor, where.line(), std::forward<F>(body));
}

// Makes room for cell col in a row of cells 0..lastCol: capacity doubles but
// never passes the row's width.
template <class T>
void reserveCell(std::vector<T>& cells, size_t col, int16_t lastCol)
{
    if (col < cells.capacity())
        return;
    const size_t width = static_cast<size_t>(lastCol) + 1;
    cells.reserve(std::min(std::max({col + 1, cells.capacity() * 2, FirstRowCapacity}), width));
}

}  // namespace

size_t CellArray::FormatHash::operator()(const CellFormat& f) const
{
    return qHashMulti(0, f.FontName, f.FontSize, f.FontBold, f.FontItalic, f.FontUnderline, f.FontStrikethru,
                      f.BackColor, f.ForeColor, f.Tag);
}

CellArray::CellArray()
{
    CellFormat header;
    header.FontBold = true;
    intern(CellFormat{});
    intern(header);
    rows_.push_back(Row{{}, {}, 1});
}

uint32_t CellArray::intern(const CellFormat& format)
{
    auto found = formatIndex_.find(format);
    if (found != formatIndex_.end())
        return found->second;
    auto index = static_cast<uint32_t>(formats_.size());
    formats_.push_back(format);
    formatIndex_.emplace(format, index);
    return index;
}

const CellArray::Row& CellArray::rowAt(int16_t row, int16_t col) const
{
    if (row < 0 || row > rowCount_ || col < 0 || col > colCount_)
        raise(RuntimeError::Subscript);
    return rows_[static_cast<size_t>(row)];
}

CellArray::Row& CellArray::rowAt(int16_t row, int16_t col)
{
    return const_cast<Row&>(static_cast<const CellArray*>(this)->rowAt(row, col));
}

CellArray::Attributes CellArray::defaults(const Row& row, size_t col)
{
    return {isHeaderCell(row, col) ? HeaderFormat : PlainFormat};
}

CellArray::Attributes CellArray::ownAttributes(int16_t row, int16_t col) const
{
    const Row& cells = rowAt(row, col);
    const auto c = static_cast<size_t>(col);
    return c < cells.attributes.size() ? cells.attributes[c] : defaults(cells, c);
}

const CellFormat& CellArray::format(int16_t row, int16_t col) const { return formats_[ownAttributes(row, col).format]; }

uint8_t CellArray::ownOrDefault(int16_t row, int16_t col, uint16_t Attributes::*own, uint8_t header,
                                uint8_t data) const
{
    const uint16_t value = ownAttributes(row, col).*own;
    if (value != OwnNone)
        return static_cast<uint8_t>(value);
    return isHeaderCell(rows_[static_cast<size_t>(row)], static_cast<size_t>(col)) ? header : data;
}

template <class F>
void CellArray::editAttributes(int16_t row, int16_t col, F&& change)
{
    Row& cells = rowAt(row, col);
    const auto c = static_cast<size_t>(col);
    Attributes edited = ownAttributes(row, col);
    change(edited);
    if (c >= cells.attributes.size()) {
        if (edited == defaults(cells, c))
            return;
        reserveCell(cells.attributes, c, colCount_);
        while (cells.attributes.size() <= c)
            cells.attributes.push_back(defaults(cells, cells.attributes.size()));
    }
    cells.attributes[c] = edited;
}

template <class F>
void CellArray::editFormat(int16_t row, int16_t col, F&& change)
{
    editAttributes(row, col, [&](Attributes& a) {
        CellFormat format = formats_[a.format];
        change(format);
        a.format = intern(format);
    });
}

void CellArray::setRows(int16_t n)
{
    guarded("Rows", [&] {
        if (n == rowCount_)
            return;
        if (n < 0)
            raise(RuntimeError::Subscript);
        rows_.resize(static_cast<size_t>(n) + 1);
        rowCount_ = n;
    });
}

void CellArray::permuteRows(const std::vector<int32_t>& order)
{
    guarded("permuteRows", [&] {
        const auto outside = [this](int32_t from) { return from < 1 || from > rowCount_; };
        if (order.size() != static_cast<size_t>(rowCount_) || std::any_of(order.begin(), order.end(), outside))
            raise(RuntimeError::Subscript);
        std::vector<Row> moved;
        moved.reserve(order.size());
        for (int32_t from : order)
            moved.push_back(std::move(rows_[static_cast<size_t>(from)]));
        std::move(moved.begin(), moved.end(), rows_.begin() + 1);
    });
}

void CellArray::setCols(int16_t n)
{
    guarded("Cols", [&] {
        if (n == colCount_)
            return;
        if (n < 0)
            raise(RuntimeError::Subscript);
        if (n > colCount_) {
            size_t& headerFrom = rows_.front().headerFrom;
            headerFrom = std::min(headerFrom, static_cast<size_t>(colCount_) + 1);
        }
        const size_t width = static_cast<size_t>(n) + 1;
        for (Row& row : rows_) {
            row.texts.resize(std::min(row.texts.size(), width));
            row.attributes.resize(std::min(row.attributes.size(), width));
        }
        colCount_ = n;
    });
}

void CellArray::Remove(int16_t row)
{
    guarded("Remove", [&] {
        if (rowCount_ < 1 || row >= rowCount_)
            return;
        rowAt(row, 0);
        Row last = rows_[static_cast<size_t>(rowCount_)];
        const auto first = rows_.begin() + row;
        std::move(first + 1, rows_.begin() + rowCount_, first);
        rows_[static_cast<size_t>(rowCount_) - 1] = std::move(last);
    });
}

const CellFormat& CellArray::Format(int16_t row, int16_t col) const
{
    return *guarded("Format", [&] { return &format(row, col); });
}

QString CellArray::Text(int16_t row, int16_t col) const
{
    return guarded("Text", [&] {
        const Row& cells = rowAt(row, col);
        const auto c = static_cast<size_t>(col);
        return c < cells.texts.size() ? cells.texts[c].toString() : QString();
    });
}
QAnyStringView CellArray::textView(int16_t row, int16_t col) const
{
    return guarded("Text", [&] {
        const Row& cells = rowAt(row, col);
        const auto c = static_cast<size_t>(col);
        return c < cells.texts.size() ? cells.texts[c].view() : QAnyStringView();
    });
}

void CellArray::setText(int16_t row, int16_t col, QStringView value)
{
    guarded("Text", [&] {
        Row& cells = rowAt(row, col);
        const auto c = static_cast<size_t>(col);
        if (c < cells.texts.size()) {
            cells.texts[c] = value;
            return;
        }
        if (value.isEmpty())
            return;
        reserveCell(cells.texts, c, colCount_);
        cells.texts.resize(c);
        cells.texts.emplace_back(value);
    });
}

uint8_t CellArray::TextAlignVertical(int16_t row, int16_t col) const
{
    return guarded("TextAlignVertical", [&] {
        return ownOrDefault(row, col, &Attributes::alignVertical, defaultStyles_.headerAlignVertical, 0);
    });
}
void CellArray::setTextAlignVertical(int16_t row, int16_t col, uint8_t value)
{
    guarded("TextAlignVertical", [&] { editAttributes(row, col, [&](Attributes& a) { a.alignVertical = value; }); });
}

void CellArray::setBackColor(int16_t row, int16_t col, int32_t value)
{
    guarded("BackColor", [&] { editFormat(row, col, [&](CellFormat& f) { f.BackColor = value; }); });
}

void CellArray::setForeColor(int16_t row, int16_t col, int32_t value)
{
    guarded("ForeColor", [&] { editFormat(row, col, [&](CellFormat& f) { f.ForeColor = value; }); });
}

uint8_t CellArray::Style(int16_t row, int16_t col) const
{
    return guarded("Style", [&] {
        return ownOrDefault(row, col, &Attributes::style, defaultStyles_.headerStyle, defaultStyles_.dataStyle);
    });
}
void CellArray::setStyle(int16_t row, int16_t col, uint8_t value)
{
    guarded("Style", [&] { editAttributes(row, col, [&](Attributes& a) { a.style = value; }); });
}

int16_t CellArray::Value(int16_t row, int16_t col) const
{
    return guarded("Value", [&]() -> int16_t {
        if (row > rowCount_ || col > colCount_)
            return 0;
        return ownAttributes(row, col).value;
    });
}
void CellArray::setValue(int16_t row, int16_t col, int16_t value)
{
    guarded("Value", [&] { editAttributes(row, col, [&](Attributes& a) { a.value = value; }); });
}

QString CellArray::Tag(int16_t row, int16_t col) const
{
    return guarded("Tag", [&]() -> QString {
        if (row > rowCount_ || col > colCount_)
            return {};
        return format(row, col).Tag;
    });
}
void CellArray::setTag(int16_t row, int16_t col, const QString& value)
{
    guarded("Tag", [&] { editFormat(row, col, [&](CellFormat& f) { f.Tag = value; }); });
}

}  // namespace TabulaControl::detail
