#include "tests/render/RenderSupport.h"

#include <QScrollBar>

using TabulaTest::caseName;

namespace {

constexpr uint32_t Face = 0xC0C0C0, Red = 0xFF0000, Green = 0x00FF00;

// Three rows on the 395 x 295 surface with red grid lines and a green
// background beyond the cells; cells of 64 x 15 start at (34, 17).
class GridPainter : public TabulaTest::PaintFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        s().mGridLineColor = 0x0000FF;
        s().mBackColorBkg = 0x00FF00;
        g().setRows(3);
    }
    int pageStep(TabulaControl::platform::ScrollBar& b) { return static_cast<QScrollBar*>(b.widget())->pageStep(); }
};

struct OutlineCase {
    const char* name;
    int16_t fixedStyle;
    bool colHeader, rowHeader, topEdge, leftEdge;
};
class Outline : public GridPainter, public ::testing::WithParamInterface<OutlineCase> {};
struct ExtentCase {
    const char* name;
    int32_t rows, cols, topRow, leftCol, drawnBottom, drawnRight;
    bool vNeeded, hNeeded;
};
class Extents : public GridPainter, public ::testing::WithParamInterface<ExtentCase> {};

}  // namespace

TEST_P(Outline, TopAndLeftEdgesOnlyWhereNoThreeDimensionalHeaderFramesThem)
{
    const OutlineCase& c = GetParam();
    s().mFixedStyle = c.fixedStyle;
    s().mColHeader = c.colHeader;
    s().mRowHeader = c.rowHeader;
    g().Refresh();
    const QPoint first = cell(1, 1).topLeft(), inner = cell(3, 3).topLeft(), last = cell(3, 5).topLeft();
    EXPECT_EQ(pixel(inner.x() + 10, first.y()) == Red, c.topEdge);
    EXPECT_EQ(pixel(first.x(), inner.y() + 5) == Red, c.leftEdge);
    EXPECT_EQ(pixel(inner.x() + 10, last.y() + 15), Red);
    EXPECT_EQ(pixel(last.x() + 64, inner.y() + 5), Red);
}

INSTANTIATE_TEST_SUITE_P(GridPainter, Outline,
                         ::testing::Values(OutlineCase{"three_d_headers", 1, true, true, false, false},
                                           OutlineCase{"flat_headers", 0, true, true, true, true},
                                           OutlineCase{"three_d_without_header_row", 1, false, true, true, false},
                                           OutlineCase{"three_d_without_header_column", 1, true, false, false, true}),
                         caseName<OutlineCase>);

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

INSTANTIATE_TEST_SUITE_P(GridPainter, Extents,
                         ::testing::Values(ExtentCase{"all_fit", 1, 5, 1, 1, 32, 358, false, false},
                                           ExtentCase{"rows_below", 100, 5, 1, 1, 294, 358, true, false},
                                           ExtentCase{"columns_right", 3, 20, 1, 1, 64, 394, false, true},
                                           ExtentCase{"both", 100, 20, 1, 1, 294, 394, true, true},
                                           ExtentCase{"scrolled_rows_that_fit", 3, 5, 2, 1, 48, 358, true, false},
                                           ExtentCase{"scrolled_columns_that_fit", 3, 5, 1, 2, 64, 293, false, true}),
                         caseName<ExtentCase>);

TEST_F(GridPainter, PageCountsAreMeasuredOnceAndGivenToTheBars)
{
    EXPECT_EQ(s().mPageRows, 1) << "a grid that fits pages one row less than it has";
    EXPECT_EQ(pageStep(g().ui.scrVertical), 1);
    g().setCols(20);
    s().mPageRows = 0;
    g().setRows(100);
    // Row 18 and column 6 are the first to end past the surface.
    EXPECT_EQ(s().mPageRows, 16);
    EXPECT_EQ(s().mPageCols, 5);
    EXPECT_EQ(pageStep(g().ui.scrVertical), 16);
    EXPECT_EQ(pageStep(g().ui.scrHorizontal), 5);
    for (int32_t r = 1; r <= 100; ++r)
        s().mRowHeight(r) = 40;
    for (int32_t c = 1; c <= 20; ++c)
        s().mColWidth(c) = 100;
    g().Refresh();
    EXPECT_EQ(s().mPageRows, 16);
    EXPECT_EQ(s().mPageCols, 5);
}

TEST_F(GridPainter, RefreshBringsTheCurrentCellIntoTheDataAreaWhenThereIsOne)
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

