#include "core/CellArray.h"

#include "core/Errors.h"

#include <QHash>

#include <algorithm>

namespace TabulaControl::detail {

namespace {

constexpr uint32_t PlainFormat = 0;

// The most cells the store takes on: beyond it a resize fails as memory
// exhaustion instead of driving the process out of memory.
constexpr int64_t MaxCells = 100'000'000;

void ensureRoomFor(int64_t rows, int64_t cols)
{
    if ((rows + 1) * (cols + 1) > MaxCells)
        raise(RuntimeError::OutOfMemory);
}
constexpr uint32_t HeaderFormat = 1;

template <class F>
auto guarded(const char* accessor, F&& body, std::source_location where = std::source_location::current())
{
    return trap("clsCellArray", accessor, where.line(), std::forward<F>(body));
}

bool isHeader(int16_t row, int16_t col) { return row == 0 || col == 0; }

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
    rows_.push_back(newRow(0, 0));
}

std::vector<CellArray::Cell> CellArray::newRow(int16_t row, int16_t cols)
{
    std::vector<Cell> cells(static_cast<size_t>(cols) + 1);
    for (size_t c = 0; c < cells.size(); ++c)
        cells[c].format = isHeader(row, static_cast<int16_t>(c)) ? HeaderFormat : PlainFormat;
    return cells;
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

uint32_t CellArray::defaultFormat(int16_t row, int16_t col, const QString& tag)
{
    if (tag.isEmpty())
        return isHeader(row, col) ? HeaderFormat : PlainFormat;
    CellFormat format;
    format.FontBold = isHeader(row, col);
    format.Tag = tag;
    return intern(format);
}

const CellArray::Cell& CellArray::at(int16_t row, int16_t col) const
{
    if (row < 0 || row > rowCount_ || col < 0 || col > colCount_)
        raise(RuntimeError::Subscript);
    return rows_[static_cast<size_t>(row)][static_cast<size_t>(col)];
}

CellArray::Cell& CellArray::at(int16_t row, int16_t col)
{
    return const_cast<Cell&>(static_cast<const CellArray*>(this)->at(row, col));
}

template <class F>
void CellArray::editFormat(int16_t row, int16_t col, F&& change)
{
    Cell& cell = at(row, col);
    CellFormat format = formats_[cell.format];
    change(format);
    cell.format = intern(format);
}

void CellArray::setRows(int16_t n)
{
    guarded("Rows", [&] {
        if (n == rowCount_)
            return;
        if (n < 0)
            raise(RuntimeError::Subscript);
        ensureRoomFor(n, colCount_);
        rows_.resize(static_cast<size_t>(n) + 1);
        for (int32_t r = rowCount_ + 1; r <= n; ++r)
            rows_[static_cast<size_t>(r)] = newRow(static_cast<int16_t>(r), colCount_);
        rowCount_ = n;
    });
}

void CellArray::setCols(int16_t n)
{
    guarded("Cols", [&] {
        if (n == colCount_)
            return;
        if (n < 0)
            raise(RuntimeError::Subscript);
        ensureRoomFor(rowCount_, n);
        for (size_t r = 0; r < rows_.size(); ++r) {
            auto& cells = rows_[r];
            cells.resize(static_cast<size_t>(n) + 1);
            for (int32_t c = colCount_ + 1; c <= n; ++c)
                cells[static_cast<size_t>(c)] = Cell{{}, isHeader(static_cast<int16_t>(r), static_cast<int16_t>(c)) ? HeaderFormat : PlainFormat};
        }
        colCount_ = n;
    });
}

void CellArray::InitializeCell(int16_t row, int16_t col)
{
    guarded("InitializeCell", [&] {
        Cell& cell = at(row, col);
        cell.format = defaultFormat(row, col, formats_[cell.format].Tag);
    });
}

void CellArray::Remove(int16_t row)
{
    guarded("Remove", [&] {
        if (rowCount_ < 1 || row > rowCount_)
            return;
        for (int32_t r = row; r < rowCount_; ++r) {
            at(static_cast<int16_t>(r), 0);
            rows_[static_cast<size_t>(r)] = rows_[static_cast<size_t>(r) + 1];
        }
    });
}

const CellFormat& CellArray::Format(int16_t row, int16_t col) const
{
    return *guarded("Format", [&] { return &formats_[at(row, col).format]; });
}

QString CellArray::Text(int16_t row, int16_t col) const
{
    return guarded("Text", [&] { return at(row, col).text; });
}
void CellArray::setText(int16_t row, int16_t col, const QString& value)
{
    guarded("Text", [&] { at(row, col).text = value; });
}

QString CellArray::FontName(int16_t row, int16_t col) const
{
    return guarded("FontName", [&] { return formats_[at(row, col).format].FontName; });
}
void CellArray::setFontName(int16_t row, int16_t col, const QString& value)
{
    guarded("FontName", [&] { editFormat(row, col, [&](CellFormat& f) { f.FontName = value; }); });
}

int16_t CellArray::FontSize(int16_t row, int16_t col) const
{
    return guarded("FontSize", [&] { return formats_[at(row, col).format].FontSize; });
}
void CellArray::setFontSize(int16_t row, int16_t col, int16_t value)
{
    guarded("FontSize", [&] { editFormat(row, col, [&](CellFormat& f) { f.FontSize = value; }); });
}

bool CellArray::FontBold(int16_t row, int16_t col) const
{
    return guarded("FontBold", [&] { return formats_[at(row, col).format].FontBold; });
}
void CellArray::setFontBold(int16_t row, int16_t col, bool value)
{
    guarded("FontBold", [&] { editFormat(row, col, [&](CellFormat& f) { f.FontBold = value; }); });
}

bool CellArray::FontItalic(int16_t row, int16_t col) const
{
    return guarded("FontItalic", [&] { return formats_[at(row, col).format].FontItalic; });
}
void CellArray::setFontItalic(int16_t row, int16_t col, bool value)
{
    guarded("FontItalic", [&] { editFormat(row, col, [&](CellFormat& f) { f.FontItalic = value; }); });
}

bool CellArray::FontUnderline(int16_t row, int16_t col) const
{
    return guarded("FontUnderline", [&] { return formats_[at(row, col).format].FontUnderline; });
}
void CellArray::setFontUnderline(int16_t row, int16_t col, bool value)
{
    guarded("FontUnderline", [&] { editFormat(row, col, [&](CellFormat& f) { f.FontUnderline = value; }); });
}

bool CellArray::FontStrikethru(int16_t row, int16_t col) const
{
    return guarded("FontStrikethru", [&] { return formats_[at(row, col).format].FontStrikethru; });
}
void CellArray::setFontStrikethru(int16_t row, int16_t col, bool value)
{
    guarded("FontStrikethru", [&] { editFormat(row, col, [&](CellFormat& f) { f.FontStrikethru = value; }); });
}

uint8_t CellArray::TextAlignVertical(int16_t row, int16_t col) const
{
    return guarded("TextAlignVertical", [&] { return at(row, col).alignVertical; });
}
void CellArray::setTextAlignVertical(int16_t row, int16_t col, uint8_t value)
{
    guarded("TextAlignVertical", [&] { at(row, col).alignVertical = value; });
}

int32_t CellArray::BackColor(int16_t row, int16_t col) const
{
    return guarded("BackColor", [&] { return formats_[at(row, col).format].BackColor; });
}
void CellArray::setBackColor(int16_t row, int16_t col, int32_t value)
{
    guarded("BackColor", [&] { editFormat(row, col, [&](CellFormat& f) { f.BackColor = value; }); });
}

int32_t CellArray::ForeColor(int16_t row, int16_t col) const
{
    return guarded("ForeColor", [&] { return formats_[at(row, col).format].ForeColor; });
}
void CellArray::setForeColor(int16_t row, int16_t col, int32_t value)
{
    guarded("ForeColor", [&] { editFormat(row, col, [&](CellFormat& f) { f.ForeColor = value; }); });
}

uint8_t CellArray::Style(int16_t row, int16_t col) const
{
    return guarded("Style", [&] { return at(row, col).style; });
}
void CellArray::setStyle(int16_t row, int16_t col, uint8_t value)
{
    guarded("Style", [&] { at(row, col).style = value; });
}

int16_t CellArray::Value(int16_t row, int16_t col) const
{
    return guarded("Value", [&]() -> int16_t {
        if (row > rowCount_ || col > colCount_)
            return 0;
        return at(row, col).value;
    });
}
void CellArray::setValue(int16_t row, int16_t col, int16_t value)
{
    guarded("Value", [&] { at(row, col).value = value; });
}

QString CellArray::Tag(int16_t row, int16_t col) const
{
    return guarded("Tag", [&]() -> QString {
        if (row > rowCount_ || col > colCount_)
            return {};
        return formats_[at(row, col).format].Tag;
    });
}
void CellArray::setTag(int16_t row, int16_t col, const QString& value)
{
    guarded("Tag", [&] { editFormat(row, col, [&](CellFormat& f) { f.Tag = value; }); });
}

}  // namespace TabulaControl::detail
