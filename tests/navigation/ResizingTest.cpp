#include "tests/navigation/NavigationFixture.h"
#include "tests/support/EngineFixture.h"

#include <vector>

using TabulaTest::Face;
using TabulaTest::White;

namespace {

class Sizers : public TabulaTest::EngineFixture {};

}  // namespace

TEST_F(Sizers, MarkEveryShownColumnBorderWithinTheControlsWidth)
{
    // Columns of 64 on a 400 pixel wide host.
    const struct {
        bool rowHeader;
        int32_t cols, leftCol, colThreeWidth;
        std::vector<int32_t> expected;
    } cases[] = {
        {true, 5, 1, 64, {32, 97, 162, 227, 292, 357}},
        {true, 20, 1, 64, {32, 97, 162, 227, 292, 357}},
        {false, 5, 1, 64, {65, 130, 195, 260, 325}},
        {false, 7, 1, 64, {65, 130, 195, 260, 325, 390}},
        {true, 5, 3, 10, {32, 43, 108, 173}},
    };
    for (const auto& c : cases) {
        s().mRowHeader = c.rowHeader;
        g().setCols(c.cols);
        s().mColWidth(3) = c.colThreeWidth;
        s().mLeftCol = c.leftCol;
        g().SetSizers();
        EXPECT_EQ(s().mColSizers, c.expected) << c.rowHeader << " " << c.cols << " " << c.leftCol;
        EXPECT_TRUE(s().mRowSizers.empty());
    }
}

TEST_F(Sizers, AreKeptWhileResizingIsNotAllowed)
{
    g().SetSizers();
    s().mAllowUserResizing = false;
    s().mColWidth(1) = 10;
    s().mColSizers.push_back(999);
    g().SetSizers();
    EXPECT_EQ(s().mColSizers, (std::vector<int32_t>{32, 97, 162, 227, 292, 357, 999}));
}

namespace {

class Resizing : public TabulaTest::NavigationFixture {
protected:
    void SetUp() override
    {
        NavigationFixture::SetUp();
        grid().setRows(10);
        log().clear();
    }

    int16_t pointerAt(int x, int y = 8)
    {
        hover(QPoint(x, y));
        return grid().MousePointer();
    }
    QWidget* sizer() { return child("picSizer"); }
    // Presses the border under x on the header row.
    void grabBorder(int x)
    {
        ASSERT_EQ(pointerAt(x), 9);
        log().clear();
        press(QPoint(x, 8));
    }
};

}  // namespace

TEST_F(Resizing, TheSizingPointerShowsWithinTwoPixelsOfABorderOnTheHeaderRowOnly)
{
    struct {
        int x, y;
        int16_t pointer;
    } const cases[] = {
        {97, 8, 9}, {96, 8, 9}, {98, 8, 9}, {95, 8, 0}, {99, 8, 0}, {31, 8, 9},
        {30, 8, 0}, {357, 8, 9}, {97, 25, 0}, {97, 1, 9}, {60, 8, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(pointerAt(c.x, c.y), c.pointer) << c.x << "," << c.y;
    grid().setColHeader(false);
    EXPECT_EQ(pointerAt(97, 1), 0);
    EXPECT_EQ(pointerAt(97, 8), 0);
}

TEST_F(Resizing, DraggingABorderSetsTheColumnWidthOnRelease)
{
    grabBorder(97);
    ASSERT_TRUE(sizer()->isVisible());
    EXPECT_EQ(sizer()->geometry(), QRect(97, 0, 2, 300));
    dragTo(QPoint(150, 8));
    EXPECT_EQ(sizer()->x(), 150);
    EXPECT_EQ(grid().ColWidth(1), 64) << "nothing changes before the release";
    release(QPoint(150, 8));
    EXPECT_FALSE(sizer()->isVisible());
    EXPECT_EQ(grid().ColWidth(1), 118);
    EXPECT_EQ(pixel(152, 40), Face) << "the grid line moved with the border";
    EXPECT_EQ(pixel(151, 40), White);
    EXPECT_EQ(log().entries, QStringList({"MouseMove(1,0,150,8)", "MouseUp(1,0,150,8)", "Click"}))
        << "no MouseDown for a press that starts a drag";
    EXPECT_EQ(current(), "1,1");
}

namespace {

struct BorderCase {
    const char* name;
    bool rowHeader;
    int32_t leftCol, colTwoWidth;
    int from, to;
    int32_t col, width;
};

// Twenty columns of 64 behind a header column of 32.
const BorderCase borderCases[] = {
    {"header_column_border", true, 1, 64, 32, 50, 0, 50},
    {"first_sizer_resizes_the_column_left_of_the_first_shown", true, 3, 64, 32, 40, 2, 40},
    {"without_header_column_the_first_columns_border", false, 1, 64, 65, 80, 1, 80},
    {"left_of_the_columns_own_border_gives_zero", true, 1, 64, 162, 60, 2, 0},
    {"of_two_close_borders_the_left_one_wins", true, 1, 1, 98, 120, 1, 88},
};

class BorderDrag : public Resizing, public ::testing::WithParamInterface<BorderCase> {};

}  // namespace

TEST_P(BorderDrag, ResizesOnlyTheColumnOfTheGrabbedBorder)
{
    const BorderCase& c = GetParam();
    grid().setCols(20);
    grid().setRowHeader(c.rowHeader);
    grid().setColWidth(2, c.colTwoWidth);
    grid().setLeftCol(c.leftCol);
    std::vector<int32_t> widths;
    for (int32_t col = 0; col <= 20; ++col)
        widths.push_back(grid().ColWidth(col));
    widths[static_cast<size_t>(c.col)] = c.width;
    grabBorder(c.from);
    dragTo(QPoint(c.to, 8));
    release(QPoint(c.to, 8));
    for (int32_t col = 0; col <= 20; ++col)
        EXPECT_EQ(grid().ColWidth(col), widths[static_cast<size_t>(col)]) << "column " << col;
}

INSTANTIATE_TEST_SUITE_P(Resizing, BorderDrag, ::testing::ValuesIn(borderCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Resizing, TheBarStopsBeforeTheVerticalScrollBar)
{
    grid().setRows(50);
    ASSERT_TRUE(vertical()->isVisible());
    grabBorder(97);
    dragTo(QPoint(300, 8));
    dragTo(QPoint(390, 8));
    EXPECT_EQ(sizer()->x(), 300);
    dragTo(QPoint(378, 8));
    EXPECT_EQ(sizer()->x(), 378);
    release(QPoint(378, 8));
    EXPECT_EQ(grid().ColWidth(1), 346);
}

TEST_F(Resizing, WithoutScrollBarTheBarStopsAtTheSurfaceWidth)
{
    ASSERT_FALSE(vertical()->isVisible());
    grabBorder(97);
    dragTo(QPoint(395, 8));
    dragTo(QPoint(396, 8));
    EXPECT_EQ(sizer()->x(), 395);
    release(QPoint(396, 8));
}

TEST_F(Resizing, DisallowingResizingTakesEffectAtTheNextRebuild)
{
    grid().setAllowUserResizing(false);
    grid().setColWidth(1, 100);
    EXPECT_EQ(pointerAt(97), 9) << "the old zone stays in force";
    EXPECT_EQ(pointerAt(133), 0);
    grid().setAllowUserResizing(true);
    EXPECT_EQ(pointerAt(133), 0) << "nothing is rebuilt at the set";
    grid().Refresh();
    EXPECT_EQ(pointerAt(133), 9);
    EXPECT_EQ(pointerAt(97), 0);
}

TEST_F(Resizing, ADragFromAZoneKeptWithResizingOffUsesItsOldBorder)
{
    grid().setRows(1);
    grid().setAllowUserResizing(false);
    grid().setColWidth(1, 100);
    grabBorder(97);
    dragTo(QPoint(150, 8));
    release(QPoint(150, 8));
    EXPECT_EQ(grid().ColWidth(1), 118);
}

TEST_F(Resizing, TheHostsToolTipIsCopiedOntoTheSurfaceBeforeMouseMove)
{
    grid().setToolTip("Pick a cell");
    QString tipSeenByTheHost;
    QObject::connect(grid().events(), &TabulaControl::TabulaEvents::MouseMove,
                     [&] { tipSeenByTheHost = surface()->toolTip(); });
    hover(QPoint(60, 40));
    EXPECT_EQ(surface()->toolTip(), "Pick a cell");
    EXPECT_EQ(tipSeenByTheHost, "Pick a cell");
    EXPECT_EQ(log().entries, QStringList({"MouseMove(0,0,60,40)"}));
    EXPECT_EQ(grid().MouseRow(), 2);
    EXPECT_EQ(grid().MouseCol(), 1);
}

TEST_F(Resizing, RowSizingIsAStateThatAppliesNothing)
{
    grid().setMousePointer(7);
    log().clear();
    press(QPoint(60, 40));
    ASSERT_TRUE(sizer()->isVisible());
    EXPECT_EQ(sizer()->geometry(), QRect(0, 40, 400, 2));
    dragTo(QPoint(60, 100));
    EXPECT_EQ(sizer()->y(), 100);
    dragTo(QPoint(60, 296));
    EXPECT_EQ(sizer()->y(), 100) << "past the surface the bar stays";
    release(QPoint(60, 296));
    EXPECT_FALSE(sizer()->isVisible());
    for (int32_t r = 0; r <= 10; ++r)
        EXPECT_EQ(grid().RowHeight(r), 15);
    EXPECT_EQ(current(), "1,1");
    EXPECT_EQ(log().only({"MouseDown", "RowColChange"}), QStringList());
}
