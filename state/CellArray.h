#pragma once

#include "state/CellText.h"

#include <QString>

#include <cstdint>
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

// The style and vertical alignment of cells that were never given their
// own: header cells (made in row 0 or in column 0) and data cells.
struct DefaultStyles {
    uint8_t headerStyle = 0;
    uint8_t headerAlignVertical = 0;
    uint8_t dataStyle = 0;
};

// Every cell of the grid, header row and column included: a table of rows
// 0..Rows, each with the cells 0..Cols. Indexes outside the table fail with
// the component error of the accessor.
//
// A cell costs memory only once it differs from the defaults of its kind: a
// row keeps its texts and attributes up to its last such cell, so a full
// grid of default cells holds nothing per cell.
class CellArray {
public:
    CellArray();

    // Applies to every cell that was not given its own style or alignment.
    void setDefaultStyles(const DefaultStyles& styles) { defaultStyles_ = styles; }

    int16_t Rows() const { return rowCount_; }
    void setRows(int16_t n);
    int16_t Cols() const { return colCount_; }
    void setCols(int16_t n);

    // Shifts the rows below row up by one; the last row keeps its contents.
    void Remove(int16_t row);
    // Puts the data rows in a new order: row i + 1 takes everything of row
    // order[i]. order holds each of 1..Rows() once.
    void permuteRows(const std::vector<int32_t>& order);

    QString Text(int16_t row, int16_t col) const;
    // The text without a copy: valid until the cell's text changes.
    QAnyStringView textView(int16_t row, int16_t col) const;
    void setText(int16_t row, int16_t col, QStringView value);
    uint8_t TextAlignVertical(int16_t row, int16_t col) const;
    void setTextAlignVertical(int16_t row, int16_t col, uint8_t value);
    void setBackColor(int16_t row, int16_t col, int32_t value);
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
    // Style and alignVertical hold OwnNone until the cell is given its own.
    static constexpr uint16_t OwnNone = 0xFFFF;
    struct Attributes {
        uint32_t format = 0;
        int16_t value = 0;
        uint16_t style = OwnNone;
        uint16_t alignVertical = OwnNone;

        friend bool operator==(const Attributes&, const Attributes&) = default;
    };

    struct Row {
        std::vector<CellText> texts;         // the cells past its end hold ""
        std::vector<Attributes> attributes;  // the cells past its end hold their kind's defaults
        // Columns from here on hold header cells, as in the row made as row 0
        // (from column 1) and in cells added to a row moved up to row 0.
        size_t headerFrom = SIZE_MAX;
    };

    struct FormatHash {
        size_t operator()(const CellFormat& f) const;
    };

    const Row& rowAt(int16_t row, int16_t col) const;
    Row& rowAt(int16_t row, int16_t col);
    static bool isHeaderCell(const Row& row, size_t col) { return col == 0 || col >= row.headerFrom; }
    static Attributes defaults(const Row& row, size_t col);
    Attributes ownAttributes(int16_t row, int16_t col) const;
    uint8_t ownOrDefault(int16_t row, int16_t col, uint16_t Attributes::*own, uint8_t header, uint8_t data) const;
    const CellFormat& format(int16_t row, int16_t col) const;
    template <class F>
    void editAttributes(int16_t row, int16_t col, F&& change);
    template <class F>
    void editFormat(int16_t row, int16_t col, F&& change);
    uint32_t intern(const CellFormat& format);

    std::vector<Row> rows_;
    int16_t rowCount_ = 0;
    int16_t colCount_ = 0;
    DefaultStyles defaultStyles_;
    std::vector<CellFormat> formats_;
    std::unordered_map<CellFormat, uint32_t, FormatHash> formatIndex_;
};

}  // namespace TabulaControl::detail
