#include "tests/navigation/NavigationFixture.h"
#include "tests/support/EngineFixture.h"

#include <vector>

using TabulaTest::Face;
using TabulaTest::White;

namespace {

// ---- The sizer list ------------------------------------------------------

class Sizers : public TabulaTest::EngineFixture {
protected:
    std::vector<int32_t> sizers()
    {
        g().SetSizers();
        return s().mColSizers;
    }
};

}  // namespace

TEST_F(Sizers, StartAtTheHeaderColumnAndStopAtTheControlsWidth)
{
    EXPECT_EQ(sizers(), (std::vector<int32_t>{32, 97, 162, 227, 292, 357}));
    g().setCols(20);
    EXPECT_EQ(sizers(), (std::vector<int32_t>{32, 97, 162, 227, 292, 357})) << "422 lies past 400";
    EXPECT_TRUE(s().mRowSizers.empty());
}

TEST_F(Sizers, WithoutHeaderColumnStartAtTheFirstColumnsBorder)
{
    s().mRowHeader = false;
    EXPECT_EQ(sizers(), (std::vector<int32_t>{65, 130, 195, 260, 325}));
    g().setCols(7);
    EXPECT_EQ(sizers(), (std::vector<int32_t>{65, 130, 195, 260, 325, 390})) << "455 lies past 400";
}

TEST_F(Sizers, FollowTheFirstShownColumn)
{
    s().mColWidth(3) = 10;
    s().mLeftCol = 3;
    EXPECT_EQ(sizers(), (std::vector<int32_t>{32, 43, 108, 173}));
}

TEST_F(Sizers, AreKeptWhileResizingIsNotAllowed)
{
    sizers();
    s().mAllowUserResizing = false;
    s().mColWidth(1) = 10;
    s().mColSizers.push_back(999);
    g().SetSizers();
    EXPECT_EQ(s().mColSizers, (std::vector<int32_t>{32, 97, 162, 227, 292, 357, 999}));
}

namespace {

// ---- The drag on the real surface ----------------------------------------

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

    // Grabs the border under from on the header row and lets go at x.
    void dragBorder(int from, int to)
    {
        ASSERT_EQ(pointerAt(from), 9);
        log().clear();
        press(QPoint(from, 8));
        dragTo(QPoint(to, 8));
        release(QPoint(to, 8));
    }
};

struct ZoneCase {
    int x;
    int y;
    int16_t pointer;
};

}  // namespace

TEST_F(Resizing, TheSizingPointerShowsWithinTwoPixelsOfABorderOnTheHeaderRow)
{
    const ZoneCase cases[] = {
        {97, 8, 9}, {96, 8, 9}, {98, 8, 9}, {95, 8, 0}, {99, 8, 0}, {31, 8, 9}, {30, 8, 0},
        {357, 8, 9}, {97, 25, 0}, {97, 1, 9}, {60, 8, 0},
    };
    for (const ZoneCase& c : cases)
        EXPECT_EQ(pointerAt(c.x, c.y), c.pointer) << c.x << "," << c.y;
}

TEST_F(Resizing, WithoutTheHeaderRowNoSizingPointerAppears)
{
    grid().setColHeader(false);
    EXPECT_EQ(pointerAt(97, 1), 0);
    EXPECT_EQ(pointerAt(97, 8), 0);
}

TEST_F(Resizing, DraggingABorderSetsTheColumnWidthOnRelease)
{
    ASSERT_EQ(pointerAt(97), 9);
    log().clear();
    press(QPoint(97, 8));
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
    EXPECT_EQ(log().entries,
              QStringList({"MouseMove(1,0,150,8)", "MouseUp(1,0,150,8)", "Click"}))
        << "no MouseDown for a press that starts a drag";
    EXPECT_EQ(grid().Row(), 1);
    EXPECT_EQ(grid().Col(), 1);
}

TEST_F(Resizing, TheFirstSizerResizesTheColumnLeftOfTheFirstShown)
{
    dragBorder(32, 50);
    EXPECT_EQ(grid().ColWidth(0), 50);

    grid().setCols(20);
    grid().setLeftCol(3);
    dragBorder(50, 40);
    EXPECT_EQ(grid().ColWidth(2), 40) << "the bar's left edge is the width";
    EXPECT_EQ(grid().ColWidth(0), 50);
}

TEST_F(Resizing, WithoutHeaderColumnTheFirstSizerIsTheFirstColumnsBorder)
{
    grid().setRowHeader(false);
    dragBorder(65, 80);
    EXPECT_EQ(grid().ColWidth(1), 80);
}

TEST_F(Resizing, DraggingLeftOfTheColumnsOwnBorderGivesWidthZero)
{
    dragBorder(162, 60);
    EXPECT_EQ(grid().ColWidth(2), 0);
}

TEST_F(Resizing, OfTwoCloseBordersTheLeftOneWins)
{
    grid().setColWidth(2, 1);
    dragBorder(98, 120);
    EXPECT_EQ(grid().ColWidth(1), 88);
    EXPECT_EQ(grid().ColWidth(2), 1);
}

TEST_F(Resizing, TheBarStopsBeforeTheVerticalScrollBar)
{
    grid().setRows(50);
    ASSERT_TRUE(vertical()->isVisible());
    ASSERT_EQ(pointerAt(97), 9);
    press(QPoint(97, 8));
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
    ASSERT_EQ(pointerAt(97), 9);
    press(QPoint(97, 8));
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
    EXPECT_EQ(grid().Row(), 1);
    EXPECT_EQ(log().only({"MouseDown", "RowColChange"}), QStringList());
}
