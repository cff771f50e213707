#pragma once

#include <QString>

#include <cstdint>
#include <source_location>
#include <unordered_map>
#include <vector>

namespace TabulaControl::detail {

// The per-cell settings that most cells share. Records refer to one interned
// copy, so a grid of plain text cells costs one small index per cell.
struct CellFormat {
    QString FontName;
    int16_t FontSize = 9;
    bool FontBold = false;
    bool FontItalic = false;
    bool FontUnderline = false;
    bool FontStrikethru = false;
    int32_t BackColor = -1;
    int32_t ForeColor = -1;
    QString Tag;

    friend bool operator==(const CellFormat&, const CellFormat&) = default;
};

// Every cell of the grid, header row and column included: a table of rows
// 0..Rows, each with the cells 0..Cols. Indexes outside the table fail with
// the component error of the accessor.
class CellArray {
public:
    CellArray();

    int16_t Rows() const { return rowCount_; }
    void setRows(int16_t n);
    int16_t Cols() const { return colCount_; }
    void setCols(int16_t n);

    void InitializeCell(int16_t row, int16_t col);
    // Shifts the rows below row up by one; the last row keeps its contents.
    void Remove(int16_t row);

    QString Text(int16_t row, int16_t col) const;
    void setText(int16_t row, int16_t col, const QString& value);
    QString FontName(int16_t row, int16_t col) const;
    void setFontName(int16_t row, int16_t col, const QString& value);
    int16_t FontSize(int16_t row, int16_t col) const;
    void setFontSize(int16_t row, int16_t col, int16_t value);
    bool FontBold(int16_t row, int16_t col) const;
    void setFontBold(int16_t row, int16_t col, bool value);
    bool FontItalic(int16_t row, int16_t col) const;
    void setFontItalic(int16_t row, int16_t col, bool value);
    bool FontUnderline(int16_t row, int16_t col) const;
    void setFontUnderline(int16_t row, int16_t col, bool value);
    bool FontStrikethru(int16_t row, int16_t col) const;
    void setFontStrikethru(int16_t row, int16_t col, bool value);
    uint8_t TextAlignVertical(int16_t row, int16_t col) const;
    void setTextAlignVertical(int16_t row, int16_t col, uint8_t value);
    int32_t BackColor(int16_t row, int16_t col) const;
    void setBackColor(int16_t row, int16_t col, int32_t value);
    int32_t ForeColor(int16_t row, int16_t col) const;
    void setForeColor(int16_t row, int16_t col, int32_t value);
    uint8_t Style(int16_t row, int16_t col) const;
    void setStyle(int16_t row, int16_t col, uint8_t value);
    int16_t Value(int16_t row, int16_t col) const;
    void setValue(int16_t row, int16_t col, int16_t value);
    QString Tag(int16_t row, int16_t col) const;
    void setTag(int16_t row, int16_t col, const QString& value);

    // All formatting of a cell at once, for the painter.
    const CellFormat& Format(int16_t row, int16_t col) const;

private:
    struct Cell {
        QString text;
        uint32_t format = 0;
        int16_t value = 0;
        uint8_t style = 0;
        uint8_t alignVertical = 0;
    };

    struct FormatHash {
        size_t operator()(const CellFormat& f) const;
    };

    const Cell& at(int16_t row, int16_t col) const;
    Cell& at(int16_t row, int16_t col);
    uint32_t intern(const CellFormat& format);
    uint32_t defaultFormat(int16_t row, int16_t col, const QString& tag);
    template <class F>
    void editFormat(int16_t row, int16_t col, F&& change);
    static std::vector<Cell> newRow(int16_t row, int16_t cols);

    std::vector<std::vector<Cell>> rows_;
    int16_t rowCount_ = 0;
    int16_t colCount_ = 0;
    std::vector<CellFormat> formats_;
    std::unordered_map<CellFormat, uint32_t, FormatHash> formatIndex_;
};

}  // namespace TabulaControl::detail
