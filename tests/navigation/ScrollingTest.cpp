#include "tests/navigation/NavigationFixture.h"

using TabulaControl::SelectionByCol;
using TabulaControl::SelectionByRow;

namespace {

constexpr int32_t RowCount = 50;
constexpr int32_t ColCount = 20;

// Each row gets its own back colour, each column its own width, so moved
// pixels show which row and column they belong to.
uint32_t rowRgb(int32_t row) { return (row * 5 & 0xFF) << 16 | 0x80 << 8 | ((255 - row * 3) & 0xFF); }
TabulaControl::OleColor rowOle(int32_t row)
{
    const uint32_t rgb = rowRgb(row);
    return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
}
int32_t widthOf(int32_t col) { return 40 + 3 * col; }

class Scrolling : public TabulaTest::NavigationFixture {
protected:
    void SetUp() override
    {
        NavigationFixture::SetUp();
        grid().setAutoRedraw(false);
        grid().setCols(ColCount);
        grid().setRows(0);
        for (int32_t r = 1; r <= RowCount; ++r)
            grid().AddItem(QString(), rowOle(r));
        for (int32_t c = 1; c <= ColCount; ++c)
            grid().setColWidth(c, widthOf(c));
        grid().setAutoRedraw(true);
        log().clear();
    }

    // Every fully shown row carries its own colour at its place.
    void expectRowsFrom(int32_t topRow)
    {
        for (int32_t k = 0; k < 15; ++k) {
            const int y = 17 + 16 * k + 7;
            EXPECT_EQ(pixel(60, y), rowRgb(topRow + k)) << "row " << topRow + k << " at y " << y;
        }
        EXPECT_EQ(pixel(60, 8), TabulaTest::Face) << "the header row stays";
    }

    // The grid line after each shown column lies on the first pixel past it.
    void expectColumnsFrom(int32_t leftCol)
    {
        int x = 34;
        for (int32_t c = leftCol; c < leftCol + 5; ++c) {
            x += widthOf(c);
            EXPECT_EQ(pixel(x, 40), TabulaTest::Face) << "line after column " << c;
            EXPECT_EQ(pixel(x - 1, 40), rowRgb(2)) << "last pixel of column " << c;
            ++x;
        }
    }
};

TEST_F(Scrolling, OneStepMovesThePixelsByOneLineAndRaisesOneScroll)
{
    const struct {
        bool vertical;
        int32_t from;
        QAbstractSlider::SliderAction action;
        int32_t to;
    } cases[] = {
        {false, 1, QAbstractSlider::SliderSingleStepAdd, 2},
        {false, 4, QAbstractSlider::SliderSingleStepSub, 3},
        {true, 1, QAbstractSlider::SliderSingleStepAdd, 2},
        {true, 6, QAbstractSlider::SliderSingleStepSub, 5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << (c.vertical ? "rows " : "columns ") << c.from << " to " << c.to);
        const auto expectFrom = [&](int32_t first) { c.vertical ? expectRowsFrom(first) : expectColumnsFrom(first); };
        QScrollBar* bar = c.vertical ? vertical() : horizontal();
        bar->setValue(c.from);
        expectFrom(c.from);
        log().clear();
        bar->triggerAction(c.action);
        EXPECT_EQ(c.vertical ? grid().TopRow() : grid().LeftCol(), c.to);
        expectFrom(c.to);
        EXPECT_EQ(log().entries, QStringList({"Scroll"}));
    }
}

TEST_F(Scrolling, ChangesOfSeveralRowsJumpAndRaiseOneScroll)
{
    vertical()->setValue(10);
    EXPECT_EQ(grid().TopRow(), 10);
    expectRowsFrom(10);
    vertical()->triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_LT(grid().TopRow(), 9);
    expectRowsFrom(grid().TopRow());
    EXPECT_EQ(log().entries, QStringList({"Scroll", "Scroll"}));
}

TEST_F(Scrolling, TopRowIsABareStoreUntilTheBarTakesTheSameValue)
{
    const QImage before = picture();
    for (int32_t value : {0, -3, 7, 999}) {
        grid().setTopRow(value);
        EXPECT_EQ(grid().TopRow(), value);
    }
    EXPECT_EQ(vertical()->value(), 1);
    EXPECT_EQ(picture(), before);
    EXPECT_TRUE(log().entries.isEmpty());

    grid().setTopRow(5);
    vertical()->setValue(5);
    EXPECT_EQ(grid().TopRow(), 5);
    expectRowsFrom(5);
    EXPECT_EQ(log().entries, QStringList({"Scroll"}));
}

TEST_F(Scrolling, LeftColMovesTheCurrentColumnAndClampsOnlyAboveTheBarMaximum)
{
    grid().setLeftCol(0);
    EXPECT_EQ(grid().LeftCol(), 0);
    EXPECT_EQ(grid().Col(), 0);
    EXPECT_EQ(horizontal()->value(), 1);

    grid().setLeftCol(4);
    EXPECT_EQ(grid().LeftCol(), 4);
    EXPECT_EQ(grid().Col(), 4);
    expectColumnsFrom(4);
    EXPECT_EQ(log().entries, QStringList({"Scroll"}));

    grid().setRow(3);
    log().clear();
    grid().setLeftCol(99);
    EXPECT_EQ(grid().LeftCol(), ColCount);
    EXPECT_EQ(grid().Col(), ColCount);
    EXPECT_EQ(grid().Row(), 3);
    EXPECT_EQ(horizontal()->value(), ColCount);
    EXPECT_EQ(log().entries, QStringList({"Scroll"})) << "no RowColChange";
}

TEST_F(Scrolling, VerticalScrollDropsTheTypedTextAndRaisesOnlyAfterEdit)
{
    openEditorWith(Qt::Key_A);
    vertical()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(grid().TextMatrix(1, 1), "");
    EXPECT_EQ(log().entries, QStringList({"AfterEdit(1,1,)", "Scroll"}));
    QApplication::processEvents();
    EXPECT_EQ(log().entries.size(), 2) << "nothing commits the dropped text later";
}

TEST_F(Scrolling, HorizontalScrollCommitsTheTypedTextUnlessTheHostCancels)
{
    openEditorWith(Qt::Key_A);
    horizontal()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(grid().TextMatrix(1, 1), "a");
    EXPECT_EQ(log().entries, QStringList({"BeforeEdit(1,1)", "AfterEdit(1,1,a)", "Scroll"}));

    horizontal()->setValue(1);
    grid().setTextMatrix(1, 1, "old");
    openEditorWith(Qt::Key_X);
    log().onBeforeEdit = [](int32_t, int32_t, bool& cancel) { cancel = true; };
    horizontal()->setValue(3);
    EXPECT_EQ(grid().TextMatrix(1, 1), "old");
    EXPECT_EQ(log().entries, QStringList({"BeforeEdit(1,1)", "AfterEdit(1,1,old)", "Scroll"}));
}

TEST_F(Scrolling, InLineModesAOneStepReselectsTheCurrentLineButAJumpDoesNot)
{
    grid().setSelectionMode(SelectionByCol);
    clickCell(3, 2);
    grid().setCol1(7);
    horizontal()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(where(), "3,2 in 0,2:50,2");

    grid().setSelectionMode(SelectionByRow);
    clickCell(3, 2);
    grid().setRow1(7);
    vertical()->setValue(4);
    EXPECT_EQ(grid().Row1(), 7);
    vertical()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(where(), "3,2 in 3,0:3,20");
}

TEST_F(Scrolling, TheResizeZonesFollowTheScroll)
{
    hover(QPoint(32 + widthOf(1) + 1, 8));
    EXPECT_EQ(grid().MousePointer(), 9);
    horizontal()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    hover(QPoint(32 + widthOf(1) + 1, 8));
    EXPECT_EQ(grid().MousePointer(), 0);
    hover(QPoint(32 + widthOf(2) + 1, 8));
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

TEST_F(Scrolling, AStepFromAFarTopRowJumpsToTheBarsValue)
{
    const auto sources = errorSources();
    grid().setTopRow(100000);
    vertical()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(*sources, QStringList());
    EXPECT_EQ(grid().TopRow(), vertical()->value());
    EXPECT_EQ(log().entries, QStringList({"Scroll"}));
}

TEST_F(Scrolling, AScrollClosesAnOpenDropDownList)
{
    QWidget* list = openDropDown(Qt::Key_A, {"Apple"});
    vertical()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(log().entries, QStringList({"Scroll"}));
}

}  // namespace
