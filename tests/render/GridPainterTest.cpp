#include "tests/support/EngineFixture.h"

#include <QRect>
#include <QScrollBar>

using TabulaControl::OleColor;
using TabulaControl::platform::PenStyle;

namespace {

constexpr uint32_t White = 0xFFFFFF;
constexpr uint32_t Face = 0xC0C0C0;
constexpr uint32_t Red = 0xFF0000;
constexpr OleColor RedOle = 0x0000FF;
constexpr uint32_t Green = 0x00FF00;
constexpr OleColor GreenOle = 0x00FF00;
constexpr uint32_t Magenta = 0xFF00FF;
constexpr OleColor MagentaOle = 0xFF00FF;

// The engine's 395 x 295 surface with red grid lines and a green background
// beyond the cells, so lines and bands are told apart from cell colours.
class GridPainter : public TabulaTest::EngineFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        s().mGridLineColor = RedOle;
        s().mBackColorBkg = GreenOle;
        g().setRows(3);
    }

    QPoint cellAt(int32_t row, int32_t col)
    {
        int32_t x = 0, y = 0;
        g().GetCellCoordinates(row, col, x, y);
        return {x, y};
    }

    int countColumn(int x, int top, int bottom, uint32_t rgb)
    {
        int n = 0;
        for (int y = top; y <= bottom; ++y)
            n += pixel(x, y) == rgb ? 1 : 0;
        return n;
    }

    int countRow(int y, int left, int right, uint32_t rgb)
    {
        int n = 0;
        for (int x = left; x <= right; ++x)
            n += pixel(x, y) == rgb ? 1 : 0;
        return n;
    }

    QScrollBar* bar(TabulaControl::platform::ScrollBar& b) { return static_cast<QScrollBar*>(b.widget()); }
};

}  // namespace

TEST_F(GridPainter, SolidGridLinesLieOnThePixelAfterEachCell)
{
    // Cells of 64 x 15 from (34, 17): vertical lines at 98, 163, ... 358,
    // horizontal lines at 32, 48, 64; each runs over the three rows only.
    for (int x : {98, 163, 228, 293, 358})
        EXPECT_EQ(countColumn(x, 17, 63, Red), 47) << x;
    EXPECT_NE(pixel(98, 64 + 1), Red);
    for (int y : {32, 48, 64})
        EXPECT_EQ(countRow(y, 34, 357, Red), 324) << y;
    EXPECT_EQ(pixel(97, 40), White);
    EXPECT_EQ(pixel(99, 40), White);
}

TEST_F(GridPainter, DottedGridLinesAndOutlineThenSolidAgain)
{
    s().mGridSolid = false;
    g().Refresh();
    for (int x : {98, 358}) {
        const int drawn = countColumn(x, 17, 63, Red);
        EXPECT_GT(drawn, 10) << x;
        EXPECT_LT(drawn, 37) << x;
    }
    const int bottom = countRow(64, 34, 357, Red);
    EXPECT_GT(bottom, 100);
    EXPECT_LT(bottom, 230);
    EXPECT_EQ(g().surface.penStyle(), PenStyle::Solid);

    g().DrawGridBorder();
    EXPECT_EQ(countColumn(358, 17, 63, Red), 47);
}

TEST_F(GridPainter, WithoutGridCellsSitEdgeToEdge)
{
    s().mShowGrid = false;
    g().Refresh();
    // Columns of 64 from 33, rows of 15 from 16.
    EXPECT_EQ(cellAt(3, 5), QPoint(289, 46));
    EXPECT_EQ(countRow(40, 34, 352, White), 319);
    EXPECT_EQ(countColumn(97, 16, 60, Red), 0);
    EXPECT_EQ(pixel(353, 30), Red) << "the outline still closes the cell area";
    EXPECT_EQ(pixel(200, 61), Red);
}

namespace {

struct BandCase {
    int16_t borderStyle;
    uint32_t firstColumn;  // pixel column 0 below the rows
    uint32_t firstRow;     // pixel row 0 right of the columns
};

class Bands : public GridPainter, public ::testing::WithParamInterface<BandCase> {};

const BandCase bandCases[] = {
    {0, Green, Green},
    {1, Face, Face},
    {2, Face, Face},
    {3, Face, Face},
};

}  // namespace

TEST_P(Bands, BackgroundBeyondTheCellsFollowsTheBorderStyle)
{
    s().mBorderStyle = GetParam().borderStyle;
    g().Refresh();
    EXPECT_EQ(s().mDrawnBottom, 64);
    EXPECT_EQ(s().mDrawnRight, 358);
    EXPECT_EQ(pixel(0, 100), GetParam().firstColumn);
    EXPECT_EQ(pixel(370, 0), GetParam().firstRow);
    EXPECT_EQ(pixel(1, 100), Green);
    EXPECT_EQ(pixel(370, 1), Green);
    EXPECT_EQ(pixel(200, 65), Green);
    EXPECT_EQ(pixel(359, 30), Green);
    EXPECT_EQ(pixel(394, 294), Green);
}

INSTANTIATE_TEST_SUITE_P(GridPainter, Bands, ::testing::ValuesIn(bandCases));

namespace {

struct OutlineCase {
    const char* name;
    int16_t fixedStyle;
    bool colHeader;
    bool rowHeader;
    bool topEdge;
    bool leftEdge;
};

class Outline : public GridPainter, public ::testing::WithParamInterface<OutlineCase> {};

const OutlineCase outlineCases[] = {
    {"three_d_headers", 1, true, true, false, false},
    {"flat_headers", 0, true, true, true, true},
    {"three_d_without_header_row", 1, false, true, true, false},
    {"three_d_without_header_column", 1, true, false, false, true},
};

}  // namespace

TEST_P(Outline, TopAndLeftEdgesOnlyWhereNoThreeDimensionalHeaderFramesThem)
{
    const OutlineCase& c = GetParam();
    s().mFixedStyle = c.fixedStyle;
    s().mColHeader = c.colHeader;
    s().mRowHeader = c.rowHeader;
    g().Refresh();
    const QPoint first = cellAt(1, 1);
    const QPoint inner = cellAt(3, 3);
    const QPoint last = cellAt(3, 5);
    const int right = last.x() + 64, bottom = last.y() + 15;
    EXPECT_EQ(pixel(inner.x() + 10, first.y()) == Red, c.topEdge);
    EXPECT_EQ(pixel(first.x(), inner.y() + 5) == Red, c.leftEdge);
    EXPECT_EQ(pixel(inner.x() + 10, bottom), Red);
    EXPECT_EQ(pixel(right, inner.y() + 5), Red);
}

INSTANTIATE_TEST_SUITE_P(GridPainter, Outline, ::testing::ValuesIn(outlineCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(GridPainter, HeaderRowIsFlatOrThreeDimensional)
{
    s().mBackColorFixed = 0xFF0000;
    g().Refresh();
    EXPECT_EQ(pixel(50, 1), White) << "light top edge of a raised face";
    EXPECT_EQ(pixel(50, 8), Face);

    s().mFixedStyle = 0;
    g().Refresh();
    EXPECT_EQ(pixel(50, 1), 0x0000FFu);
    EXPECT_EQ(pixel(50, 8), 0x0000FFu);
    EXPECT_EQ(pixel(50, 0), Red) << "one-pixel frame in the grid line colour";
}

namespace {

struct ExtentCase {
    const char* name;
    int32_t rows;
    int32_t cols;
    int32_t topRow;
    int32_t leftCol;
    int32_t drawnBottom;
    int32_t drawnRight;
    bool vNeeded;
    bool hNeeded;
};

class Extents : public GridPainter, public ::testing::WithParamInterface<ExtentCase> {};

const ExtentCase extentCases[] = {
    {"all_fit", 1, 5, 1, 1, 32, 358, false, false},
    {"rows_below", 100, 5, 1, 1, 294, 358, true, false},
    {"columns_right", 3, 20, 1, 1, 64, 394, false, true},
    {"both", 100, 20, 1, 1, 294, 394, true, true},
    {"scrolled_rows_that_fit", 3, 5, 2, 1, 48, 358, true, false},
    {"scrolled_columns_that_fit", 3, 5, 1, 2, 64, 293, false, true},
};

}  // namespace

TEST_P(Extents, DrawnExtentsAndScrollNeeds)
{
    const ExtentCase& c = GetParam();
    g().setCols(c.cols);
    g().setRows(c.rows);
    s().mTopRow = c.topRow;
    s().mLeftCol = c.leftCol;
    g().Refresh();
    EXPECT_EQ(s().mDrawnBottom, c.drawnBottom);
    EXPECT_EQ(s().mDrawnRight, c.drawnRight);
    EXPECT_EQ(s().mVScrollNeeded, c.vNeeded);
    EXPECT_EQ(s().mHScrollNeeded, c.hNeeded);
    EXPECT_EQ(g().ui.scrVertical.Visible(), c.vNeeded);
    EXPECT_EQ(g().ui.scrHorizontal.Visible(), c.hNeeded);
    EXPECT_EQ(pixel(385, 285), c.vNeeded && c.hNeeded ? Face : Green) << "square between the bars";
}

INSTANTIATE_TEST_SUITE_P(GridPainter, Extents, ::testing::ValuesIn(extentCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(GridPainter, RowPageCountOfAGridThatFitsIsOneLessThanItsRows)
{
    EXPECT_EQ(s().mPageRows, 1);
    EXPECT_EQ(bar(g().ui.scrVertical)->pageStep(), 1);
}

TEST_F(GridPainter, PageCountsAreMeasuredOnceAndGivenToTheBars)
{
    g().setCols(20);
    s().mPageRows = 0;
    g().setRows(100);
    // Rows start at 17 + 16 (r - 1): row 18 is the first to end past 294.
    EXPECT_EQ(s().mPageRows, 16);
    // Columns start at 34 + 65 (c - 1): column 6 is the first to end past 394.
    EXPECT_EQ(s().mPageCols, 5);
    EXPECT_EQ(bar(g().ui.scrVertical)->pageStep(), 16);
    EXPECT_EQ(bar(g().ui.scrHorizontal)->pageStep(), 5);

    for (int32_t r = 1; r <= 100; ++r)
        s().mRowHeight(r) = 40;
    for (int32_t c = 1; c <= 20; ++c)
        s().mColWidth(c) = 100;
    g().Refresh();
    EXPECT_EQ(s().mPageRows, 16);
    EXPECT_EQ(s().mPageCols, 5);
}

TEST_F(GridPainter, NoRowsPaintsTheHeaderRowAndBackgroundOnly)
{
    g().setRows(0);
    EXPECT_EQ(s().mDrawnBottom, 16);
    EXPECT_EQ(pixel(50, 8), Face);
    EXPECT_EQ(countColumn(98, 17, 294, Green), 278);
    EXPECT_EQ(countRow(17, 1, 394, Green), 394);
    const QImage before = g().surface.image();
    g().HilightCell();
    g().HilightSelection();
    EXPECT_EQ(g().surface.image(), before);
}

TEST_F(GridPainter, RefreshBringsTheCurrentCellIntoTheDataArea)
{
    s().mRow = -3;
    s().mCol = 0;
    g().Refresh();
    EXPECT_EQ(s().mRow, 1);
    EXPECT_EQ(s().mCol, 1);

    g().setRows(0);
    s().mRow = -3;
    g().Refresh();
    EXPECT_EQ(s().mRow, -3);
}

TEST_F(GridPainter, BottomRowsRepaintTheUncoveredStrip)
{
    g().setRows(100);
    g().surface.fill({0, 0, 395, 295}, MagentaOle);
    // The strip of 16 pixels above the last one: rows 17 (273..287) and 18.
    g().DrawBottomRows(1, 16);
    EXPECT_EQ(pixel(50, 280), White);
    EXPECT_EQ(pixel(50, 292), White);
    EXPECT_EQ(pixel(50, 260), Magenta);
    EXPECT_EQ(s().mDrawnBottom, 294);
}

TEST_F(GridPainter, RightColumnsRepaintTheUncoveredStrip)
{
    g().setCols(20);
    g().surface.fill({0, 0, 395, 295}, MagentaOle);
    g().DrawRightCols(1, 65);
    EXPECT_EQ(pixel(300, 20), White);
    EXPECT_EQ(pixel(380, 20), White);
    EXPECT_EQ(pixel(300, 8), Face);
    EXPECT_EQ(pixel(200, 20), Magenta);
    EXPECT_EQ(s().mDrawnRight, 394);
}
