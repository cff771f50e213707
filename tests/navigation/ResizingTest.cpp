#include "tests/navigation/NavigationFixture.h"

#include <vector>

namespace {

class Resizing : public TabulaTest::WithRows<TabulaTest::NavigationFixture, 10> {
protected:
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
    grid().setRowHeader(false);
    grid().setCols(7);
    EXPECT_EQ(pointerAt(65), 9);
    EXPECT_EQ(pointerAt(390), 9) << "a border past the surface but inside the control";
    EXPECT_EQ(pointerAt(97), 0);
    grid().setColHeader(false);
    EXPECT_EQ(pointerAt(65, 1), 0);
    EXPECT_EQ(pointerAt(65, 8), 0);
}

struct BorderCase {
    const char* name;
    bool rowHeader;
    int32_t leftCol, colTwoWidth;
    int from, to;
    int32_t col, width;
    int32_t rows = 10;
};

// Twenty columns of 64 behind a header column of 32. The bar goes no
// further than the surface's width, or the vertical scroll bar when it shows.
const BorderCase borderCases[] = {
    {"first_column_border", true, 1, 64, 97, 150, 1, 118},
    {"header_column_border", true, 1, 64, 32, 50, 0, 50},
    {"first_sizer_resizes_the_column_left_of_the_first_shown", true, 3, 64, 32, 40, 2, 40},
    {"without_header_column_the_first_columns_border", false, 1, 64, 65, 80, 1, 80},
    {"left_of_the_columns_own_border_gives_zero", true, 1, 64, 162, 60, 2, 0},
    {"of_two_close_borders_the_left_one_wins", true, 1, 1, 98, 120, 1, 88},
    {"up_to_the_surface_width", true, 1, 64, 97, 395, 1, 363},
    {"up_to_the_vertical_scroll_bar", true, 1, 64, 97, 378, 1, 346, 50},
};

class BorderDrag : public Resizing, public ::testing::WithParamInterface<BorderCase> {};

TEST_P(BorderDrag, MovesTheSizerAndOnReleaseResizesOnlyTheColumnOfTheGrabbedBorder)
{
    const BorderCase& c = GetParam();
    grid().setCols(20);
    grid().setRows(c.rows);
    grid().setRowHeader(c.rowHeader);
    grid().setColWidth(2, c.colTwoWidth);
    grid().setLeftCol(c.leftCol);
    const auto widths = [this] {
        std::vector<int32_t> all;
        for (int32_t col = 0; col <= 20; ++col)
            all.push_back(grid().ColWidth(col));
        return all;
    };
    std::vector<int32_t> expected = widths();
    const QString before = current();
    grabBorder(c.from);
    ASSERT_TRUE(sizer()->isVisible());
    EXPECT_EQ(sizer()->geometry(), QRect(c.from, 0, 2, 300));
    ASSERT_EQ(vertical()->isVisible(), c.rows == 50);
    const int past = c.rows == 50 ? 379 : 396;
    dragTo(QPoint(past, 8));
    EXPECT_EQ(sizer()->x(), c.from) << "past the limit the bar stays";
    dragTo(QPoint(c.to, 8));
    EXPECT_EQ(sizer()->x(), c.to);
    EXPECT_EQ(widths(), expected) << "nothing changes before the release";
    release(QPoint(c.to, 8));
    EXPECT_FALSE(sizer()->isVisible());
    expected[static_cast<size_t>(c.col)] = c.width;
    EXPECT_EQ(widths(), expected);
    const auto at = [](int x) { return QString("%1,8)").arg(x); };
    QStringList events{"MouseMove(1,0," + at(past), "MouseMove(1,0," + at(c.to), "MouseUp(1,0," + at(c.to)};
    if (c.to < surface()->width())
        events << "Click";  // the surface clicks only on a release over it
    EXPECT_EQ(log().entries, events) << "no MouseDown for a press that starts a drag";
    EXPECT_EQ(current(), before);
}

INSTANTIATE_TEST_SUITE_P(Resizing, BorderDrag, ::testing::ValuesIn(borderCases), TabulaTest::caseName);

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

// The pointer rests where the first grid's drag began, so the second grid,
// shown under it, gets no move before the press.
TEST_F(Resizing, ADragFromAZoneKeptWithResizingOffUsesItsOldBorderOnAGridShownUnderTheStillPointer)
{
    grid().setRows(3);
    QTest::mouseMove(surface(), QPoint(97, 8));
    drag(QPoint(97, 8), QPoint(120, 8));
    ASSERT_EQ(grid().ColWidth(1), 88);
    TearDown();
    NavigationFixture::SetUp();
    grid().setRows(3);
    grid().setAllowUserResizing(false);
    grid().setColWidth(1, 100);
    QTest::mouseMove(surface(), QPoint(97, 8));
    drag(QPoint(97, 8), QPoint(150, 8));
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

}  // namespace
