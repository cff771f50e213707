// Where cells land on the surface, how far the paint reaches and which
// scroll bars it asks for, as a host sees them: cellRect, the bars and the
// picture.

#include "tests/navigation/NavigationFixture.h"

using TabulaTest::caseName;

namespace {

constexpr uint32_t Green = 0x00FF00;

// The default sizes (header row 15 high, header column 32 wide, cells
// 64 x 15) on the 395 x 295 surface, with a green background past the cells.
class Layout : public TabulaTest::NavigationFixture {
protected:
    void SetUp() override
    {
        NavigationFixture::SetUp();
        grid().setBackColorBkg(0x00FF00);
    }
    // The cell's rectangle on the surface; empty when it is not in view.
    QRect at(int32_t row, int32_t col)
    {
        const QRect r = grid().cellRect(row, col);
        return r.isEmpty() ? r : r.translated(-surface()->mapTo(&grid(), QPoint()));
    }
};

TEST_F(Layout, ACellStartingOnTheLastPixelIsInViewAndOnePastIsNot)
{
    grid().setCols(50);
    grid().setRows(100);
    EXPECT_FALSE(at(1, 6).isEmpty());
    EXPECT_TRUE(at(1, 7).isEmpty());
    EXPECT_TRUE(at(19, 1).isEmpty());
    grid().setColWidth(1, 359);   // column 2 starts at 34 + 359 + 1 = 394, the last pixel
    grid().setRowHeight(1, 276);  // row 2 starts at 17 + 276 + 1 = 294
    EXPECT_EQ(at(2, 2).topLeft(), QPoint(394, 294));
    grid().setColWidth(1, 360);
    EXPECT_TRUE(at(1, 2).isEmpty());
    grid().setRowHeight(1, 277);
    EXPECT_TRUE(at(2, 1).isEmpty());
}

struct ExtentCase {
    const char* name;
    int32_t rows, cols, topRow, leftCol, drawnBottom, drawnRight;
    bool vertical, horizontal;
};

class Extent : public Layout, public ::testing::WithParamInterface<ExtentCase> {};

TEST_P(Extent, ThePaintEndsAfterTheLastCellAndAsksForTheBarsItNeeds)
{
    const ExtentCase& c = GetParam();
    grid().setCols(c.cols);
    grid().setRows(c.rows);
    grid().setTopRow(c.topRow);
    grid().setLeftCol(c.leftCol);
    grid().Refresh();
    EXPECT_EQ(vertical()->isVisible(), c.vertical);
    EXPECT_EQ(horizontal()->isVisible(), c.horizontal);
    EXPECT_EQ(pixel(385, 285), c.vertical && c.horizontal ? TabulaTest::Face : Green) << "between the bars";
    EXPECT_NE(pixel(60, c.drawnBottom), Green);
    EXPECT_EQ(pixel(60, c.drawnBottom + 1) == Green, c.drawnBottom < 294);
    EXPECT_NE(pixel(c.drawnRight, 8), Green);
    EXPECT_EQ(pixel(c.drawnRight + 1, 8) == Green, c.drawnRight < 394);
}

INSTANTIATE_TEST_SUITE_P(Layout, Extent,
                         ::testing::Values(ExtentCase{"all_fit", 1, 5, 1, 1, 32, 358, false, false},
                                           ExtentCase{"rows_below", 100, 5, 1, 1, 294, 358, true, false},
                                           ExtentCase{"columns_right", 3, 20, 1, 1, 64, 394, false, true},
                                           ExtentCase{"both", 100, 20, 1, 1, 294, 394, true, true},
                                           ExtentCase{"scrolled_rows_that_fit", 3, 5, 2, 1, 48, 358, true, false},
                                           ExtentCase{"scrolled_columns_that_fit", 3, 5, 1, 2, 64, 293, false, true}),
                         caseName);

TEST_F(Layout, PageStepsAreMeasuredByTheFirstPaintThatRunsPastTheSurface)
{
    grid().setCols(20);
    grid().setRows(100);
    // Row 18 and column 6 are the first to end past the surface.
    EXPECT_EQ(vertical()->pageStep(), 16);
    EXPECT_EQ(horizontal()->pageStep(), 5);
    for (int32_t r = 1; r <= 100; ++r)
        grid().setRowHeight(r, 40);
    for (int32_t c = 1; c <= 20; ++c)
        grid().setColWidth(c, 100);
    grid().Refresh();
    EXPECT_EQ(vertical()->pageStep(), 16);
    EXPECT_EQ(horizontal()->pageStep(), 5);
}

TEST_F(Layout, RefreshBringsTheCurrentCellIntoTheDataAreaWhenThereIsOne)
{
    grid().setRows(3);
    moveTo(-3, 0);
    grid().Refresh();
    EXPECT_EQ(current(), "1,1");
    grid().setRows(0);
    grid().setRow(-3);
    grid().Refresh();
    EXPECT_EQ(grid().Row(), -3);
}

}  // namespace
