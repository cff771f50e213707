#include "tests/render/RenderSupport.h"

#include "render/Geometry.h"

#include <climits>
#include <ostream>

using TabulaControl::detail::RuntimeError;
using TabulaTest::errorCodeOf;

namespace {

struct Position {
    int32_t x = 0, y = 0;
    bool beyond = false;
    friend bool operator==(const Position&, const Position&) = default;
};

void PrintTo(const Position& p, std::ostream* os) { *os << "(" << p.x << ", " << p.y << (p.beyond ? ", beyond)" : ")"); }

// The default grid (header row 15 high, header column 32 wide, cells 64 x 15)
// with room to scroll, on the 395 x 295 surface.
class Geometry : public TabulaTest::EngineFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setCols(50);
        g().setRows(100);
    }
    Position at(int32_t row, int32_t col)
    {
        Position p;
        p.beyond = g().cellCoordinates(row, col, p.x, p.y);
        return p;
    }
};

struct LayoutCase {
    const char* name;
    bool showGrid, colHeader, rowHeader;
    int32_t row, col, x, y;
};

class Layout : public Geometry, public ::testing::WithParamInterface<LayoutCase> {};

}  // namespace

TEST_P(Layout, CellStartsAfterHeadersAndGridLines)
{
    const LayoutCase& c = GetParam();
    s().mShowGrid = c.showGrid;
    s().mColHeader = c.colHeader;
    s().mRowHeader = c.rowHeader;
    g().Refresh();
    EXPECT_EQ(at(c.row, c.col), (Position{c.x, c.y, false}));
}

INSTANTIATE_TEST_SUITE_P(Geometry, Layout,
                         ::testing::Values(LayoutCase{"FirstCell", true, true, true, 1, 1, 34, 17},
                                           LayoutCase{"InnerCell", true, true, true, 2, 3, 164, 33},
                                           LayoutCase{"FirstCellWithoutGrid", false, true, true, 1, 1, 33, 16},
                                           LayoutCase{"InnerCellWithoutGrid", false, true, true, 2, 3, 161, 31},
                                           LayoutCase{"WithoutHeaderRow", true, false, true, 1, 1, 34, 1},
                                           LayoutCase{"WithoutHeaderColumn", true, true, false, 2, 3, 131, 33},
                                           LayoutCase{"WithoutHeadersOrGrid", false, false, false, 3, 2, 65, 31}),
                         TabulaTest::caseName<LayoutCase>);

TEST_F(Geometry, HeaderOffsetsUseTheLineWidthLeftByThePreviousPainter)
{
    s().mShowGrid = false;
    EXPECT_EQ(at(1, 1), (Position{34, 17, false}));
    EXPECT_EQ(at(1, 1), (Position{33, 16, false}));
}

TEST_F(Geometry, CellStartingOnTheLastPixelIsVisibleAndTheWalkStopsAtTheFirstPastIt)
{
    // Column 7 (x = 424) and row 19 (y = 305) are the first past the surface.
    EXPECT_EQ(at(1, 40), (Position{424, 17, true}));
    EXPECT_EQ(at(90, 1), (Position{34, 305, true}));
    s().mColWidth(1) = 359;   // column 2 starts at 34 + 359 + 1 = 394 = SW - 1
    s().mRowHeight(1) = 276;  // row 2 starts at 17 + 276 + 1 = 294 = SH - 1
    EXPECT_EQ(at(2, 2), (Position{394, 294, false}));
    s().mColWidth(1) = 360;
    EXPECT_EQ(at(1, 2), (Position{395, 17, true}));
    s().mRowHeight(1) = 277;
    EXPECT_EQ(at(2, 1), (Position{34, 295, true}));
}

TEST_F(Geometry, RowsAndColumnsBeforeTheScrolledStartAreNotWalked)
{
    s().mTopRow = 5;
    s().mLeftCol = 3;
    EXPECT_EQ(at(0, 3), (Position{34, 17, false}));
    EXPECT_EQ(at(2, 1), (Position{34, 17, false}));
    EXPECT_EQ(at(6, 5), (Position{164, 33, false}));
}

TEST(MakeRectTest, RightAndBottomAreExclusiveAndOverflowFails)
{
    using TabulaControl::detail::render::MakeRect;
    EXPECT_EQ(MakeRect(10, 20, 15, 15), (TabulaControl::platform::Rect{10, 20, 25, 35}));
    EXPECT_EQ(errorCodeOf([] { MakeRect(INT32_MAX - 1, 0, 2, 1); }), RuntimeError::Overflow);
}
