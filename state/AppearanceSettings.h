#pragma once

#include <TabulaControl/Tabula.h>

#include "state/Revision.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace TabulaControl::detail {

// The colours every grid of a thread reads and draws with: setting BackColor
// or ForeColor on one grid changes them for all grids of the thread.
inline thread_local OleColor SharedBackColor = 0xFFFFFF;
inline thread_local OleColor SharedForeColor = 0x80000012;

}  // namespace TabulaControl::detail

namespace TabulaControl::detail::render {

// How one grid looks: its border, headers, grid lines, colours and fonts.
// The header row and column are the fixed cells; the background is the
// area past the last row and column.
class Appearance {
public:
    int16_t borderStyle() const { return borderStyle_; }
    void setBorderStyle(int16_t style) { revision_.set(borderStyle_, style); }
    // The surface's pixel row 0 and column 0 belong to the border, if any.
    int32_t borderInset() const { return borderStyle_ == 0 ? 0 : 1; }
    // The colour of the area around the drawing surface.
    OleColor surroundColor() const;

    bool showsColumnHeader() const { return columnHeader_; }
    void setShowsColumnHeader(bool value) { revision_.set(columnHeader_, value); }
    bool showsRowHeader() const { return rowHeader_; }
    void setShowsRowHeader(bool value) { revision_.set(rowHeader_, value); }

    bool showsGridLines() const { return gridLines_; }
    void setShowsGridLines(bool value) { revision_.set(gridLines_, value); }
    // Solid lines, or dotted ones.
    bool gridLinesSolid() const { return gridLinesSolid_; }
    void setGridLinesSolid(bool value) { revision_.set(gridLinesSolid_, value); }
    OleColor gridLineColor() const { return gridLineColor_; }
    void setGridLineColor(OleColor colour) { revision_.set(gridLineColor_, colour); }

    // FixedStyle: 0 draws the headers flat.
    int16_t headerStyle() const { return headerStyle_; }
    void setHeaderStyle(int16_t style) { revision_.set(headerStyle_, style); }
    bool flatHeaders() const { return headerStyle_ == 0; }
    OleColor headerBackColor() const { return headerBackColor_; }
    void setHeaderBackColor(OleColor colour) { revision_.set(headerBackColor_, colour); }
    OleColor headerForeColor() const { return headerForeColor_; }
    void setHeaderForeColor(OleColor colour) { revision_.set(headerForeColor_, colour); }

    OleColor backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(OleColor colour) { revision_.set(backgroundColor_, colour); }

    // Odd rows take the alternate colour while alternating is on.
    bool alternatesRowColors() const { return alternateRows_; }
    void setAlternatesRowColors(bool value) { revision_.set(alternateRows_, value); }
    OleColor alternateRowColor() const { return alternateRowColor_; }
    void setAlternateRowColor(OleColor colour) { revision_.set(alternateRowColor_, colour); }
    // The colour of a data cell of row that sets none of its own: the
    // thread's shared BackColor, or the alternate colour.
    OleColor cellBackColor(int32_t row) const;

    // The fonts are shared with the host: changes made through them show at
    // the next repaint.
    const FontRef& font() const { return font_; }
    void setFont(FontRef font) { revision_.set(font_, font); }
    const FontRef& headerFont() const { return headerFont_; }
    void setHeaderFont(FontRef font) { revision_.set(headerFont_, font); }
    const FontRef& editorFont() const { return editorFont_; }
    void setEditorFont(FontRef font) { revision_.set(editorFont_, font); }

    // The fonts cells are drawn with, as a deferred repaint saves and puts
    // them back.
    struct CellFonts {
        FontRef font;
        FontRef headerFont;
    };
    CellFonts cellFonts() const { return {font_, headerFont_}; }
    void setCellFonts(CellFonts fonts);

    // A new grid's settings, with each font a copy of ambient and the
    // header font bold.
    void restoreDefaults(const StdFont& ambient);

    // The column the last sort ordered the rows by (0 when none), whose
    // header shows an arrow pointing up, or down when descending.
    int32_t sortColumn() const { return sortColumn_; }
    bool sortDescending() const { return sortDescending_; }
    void setSortIndicator(int32_t col, bool descending)
    {
        revision_.set(sortColumn_, col);
        revision_.set(sortDescending_, descending);
    }

    // Changes with every change above.
    uint64_t revision() const { return revision_.value(); }
    // Appends the values the layout reads, which the cache checks compare.
    void appendState(std::vector<int64_t>& state) const;

private:
    int32_t sortColumn_ = 0;
    bool sortDescending_ = false;
    int16_t borderStyle_ = 1;
    bool columnHeader_ = true;
    bool rowHeader_ = true;
    bool gridLines_ = true;
    bool gridLinesSolid_ = true;
    OleColor gridLineColor_ = 0xC0C0C0;
    int16_t headerStyle_ = 1;
    OleColor headerBackColor_ = 0xC0C0C0;
    OleColor headerForeColor_ = 0x80000012;
    OleColor backgroundColor_ = 0x808080;
    bool alternateRows_ = false;
    OleColor alternateRowColor_ = 0xFFFFFF;
    FontRef font_;
    FontRef headerFont_;
    FontRef editorFont_;
    Revision revision_;
};

}  // namespace TabulaControl::detail::render
