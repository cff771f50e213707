#include "tests/navigation/NavigationFixture.h"

namespace {

// Where the view lands is checked here; the pixels a scroll moves are pinned
// by the golden scenes.
class Scrolling : public TabulaTest::WideGrid {};

TEST_F(Scrolling, OneStepOrAPageMovesTheViewAndRaisesOneScroll)
{
    const struct { bool vertical; int32_t from; QAbstractSlider::SliderAction action; int32_t to; } cases[] = {
        {false, 1, QAbstractSlider::SliderSingleStepAdd, 2}, {false, 4, QAbstractSlider::SliderSingleStepSub, 3},
        {true, 1, QAbstractSlider::SliderSingleStepAdd, 2},  {true, 6, QAbstractSlider::SliderSingleStepSub, 5},
        {true, 10, QAbstractSlider::SliderPageStepSub, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << (c.vertical ? "rows " : "columns ") << c.from << " to " << c.to);
        QScrollBar* bar = c.vertical ? vertical() : horizontal();
        bar->setValue(c.from);
        log().clear();
        bar->triggerAction(c.action);
        EXPECT_EQ(c.vertical ? grid().TopRow() : grid().LeftCol(), c.to);
        EXPECT_EQ(log().entries, QStringList({"Scroll"}));
    }
}

TEST_F(Scrolling, TopRowIsABareStoreUntilTheBarMovesOrTakesTheSameValue)
{
    const auto sources = errorSources();
    for (int32_t value : {0, -3, 7, 999, 100000}) {
        grid().setTopRow(value);
        EXPECT_EQ(grid().TopRow(), value);
    }
    EXPECT_EQ(vertical()->value(), 1);
    EXPECT_TRUE(log().entries.isEmpty());

    vertical()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(grid().TopRow(), vertical()->value()) << "a step from a far top row jumps to the bar's value";
    EXPECT_EQ(*sources, QStringList());
    EXPECT_EQ(log().entries, QStringList({"Scroll"}));
    log().clear();
    grid().setTopRow(5);
    vertical()->setValue(5);
    EXPECT_EQ(grid().TopRow(), 5);
    EXPECT_EQ(log().entries, QStringList({"Scroll"}));
}

TEST_F(Scrolling, LeftColMovesTheCurrentColumnAndClampsOnlyAboveTheBarMaximum)
{
    const auto view = [this] {
        return QString("left %1 at %2 bar %3").arg(grid().LeftCol()).arg(current()).arg(horizontal()->value());
    };
    grid().setLeftCol(0);
    EXPECT_EQ(view(), "left 0 at 1,0 bar 1");
    grid().setLeftCol(4);
    EXPECT_EQ(view(), "left 4 at 1,4 bar 4");
    EXPECT_EQ(log().entries, QStringList({"Scroll"}));

    grid().setRow(3);
    log().clear();
    grid().setLeftCol(99);
    EXPECT_EQ(view(), "left 20 at 3,20 bar 20");
    EXPECT_EQ(log().entries, QStringList({"Scroll"})) << "no RowColChange";
}

TEST_F(Scrolling, TheResizeZonesFollowTheScroll)
{
    grid().setColWidth(1, 43);
    hover(QPoint(32 + 43 + 1, 8));
    EXPECT_EQ(grid().MousePointer(), 9);
    horizontal()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    hover(QPoint(32 + 43 + 1, 8));
    EXPECT_EQ(grid().MousePointer(), 0);
    hover(QPoint(32 + 64 + 1, 8));
    EXPECT_EQ(grid().MousePointer(), 9);
}

TEST_F(Scrolling, AScrollBarHandsTheFocusBackToTheSurface)
{
    grid().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid()));
    for (QScrollBar* bar : {vertical(), horizontal()}) {
        bar->setFocus();
        QApplication::processEvents();
        EXPECT_TRUE(surface()->hasFocus());
    }
}

// A one-row scroll moves the pixels and draws again only the cells that do
// not show what they hold now: each change below, made without a repaint,
// shows after the scroll in the cells it touches exactly as a repaint draws
// them.
struct QuietChange {
    const char* name;
    void (*change)(TabulaControl::Tabula&);
};

const QuietChange quietChanges[] = {
    {"text_with_redrawing_off", [](TabulaControl::Tabula& g) {
         g.setAutoRedraw(false);
         g.setTextMatrix(6, 2, "changed");
         g.setTextMatrix(6, 0, "caption");
     }},
    {"font_through_its_object", [](TabulaControl::Tabula& g) {
         g.setTextMatrix(6, 2, "bold");
         g.Font()->Bold = true;
     }},
    {"back_colour_set_on_another_grid", [](TabulaControl::Tabula&) { TabulaControl::Tabula().setBackColor(0x00FF00); }},
};

class ScrollAfterQuietChange : public TabulaTest::WideGrid, public testing::WithParamInterface<QuietChange> {};

TEST_P(ScrollAfterQuietChange, ShowsItAsARepaintWould)
{
    grid().setTextMatrix(6, 2, "before");
    picture();
    GetParam().change(grid());
    vertical()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    ASSERT_EQ(grid().TopRow(), 2);
    const QImage scrolled = picture();
    grid().Refresh();
    const QImage repainted = picture();
    for (const int32_t col : {0, 1, 2, 3}) {
        SCOPED_TRACE(col);
        EXPECT_EQ(scrolled.copy(cell(6, col)), repainted.copy(cell(6, col)));
    }
}

INSTANTIATE_TEST_SUITE_P(Scrolling, ScrollAfterQuietChange, ::testing::ValuesIn(quietChanges), TabulaTest::caseName);

}  // namespace
