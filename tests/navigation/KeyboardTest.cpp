#include "tests/navigation/NavigationFixture.h"

using TabulaControl::SelectionByCol;
using TabulaControl::SelectionByRow;

namespace {

class Keyboard : public TabulaTest::WideGrid {};

struct ArrowCase {
    const char* name;
    Qt::Key key;
    int16_t code;
    int32_t topRow, leftCol, fromRow, fromCol;
    int32_t row, col, newTopRow, newLeftCol;
};

const ArrowCase arrowCases[] = {
    {"down", Qt::Key_Down, 40, 1, 1, 3, 3, 4, 3, 1, 1},
    {"up", Qt::Key_Up, 38, 1, 1, 3, 3, 2, 3, 1, 1},
    {"right", Qt::Key_Right, 39, 1, 1, 3, 3, 3, 4, 1, 1},
    {"left", Qt::Key_Left, 37, 1, 1, 3, 3, 3, 2, 1, 1},
    {"down_onto_the_last_whole_row", Qt::Key_Down, 40, 1, 1, 15, 1, 16, 1, 1, 1},
    {"down_onto_a_partly_hidden_row", Qt::Key_Down, 40, 1, 1, 16, 1, 17, 1, 2, 1},
    {"right_onto_a_partly_hidden_column", Qt::Key_Right, 39, 1, 1, 1, 5, 1, 6, 1, 2},
    {"up_from_the_top_shown_row", Qt::Key_Up, 38, 5, 1, 5, 1, 4, 1, 4, 1},
    {"left_from_the_first_shown_column", Qt::Key_Left, 37, 1, 3, 1, 3, 1, 2, 1, 2},
    {"up_at_the_first_row", Qt::Key_Up, 38, 1, 1, 1, 2, 1, 2, 1, 1},
    {"left_at_the_first_column", Qt::Key_Left, 37, 1, 1, 2, 1, 2, 1, 1, 1},
    {"down_at_the_last_row", Qt::Key_Down, 40, 50, 1, 50, 2, 50, 2, 50, 1},
    {"right_at_the_last_column", Qt::Key_Right, 39, 1, 20, 2, 20, 2, 20, 1, 20},
};

class Arrow : public Keyboard, public ::testing::WithParamInterface<ArrowCase> {};

}  // namespace

TEST_P(Arrow, MovesTheCurrentCellByOneInsideTheGridScrollingOneStepWhenItLeavesTheView)
{
    const ArrowCase& c = GetParam();
    vertical()->setValue(c.topRow);
    horizontal()->setValue(c.leftCol);
    startAt(c.fromRow, c.fromCol);
    key(c.key);
    EXPECT_EQ(where(), QString("%1,%2 in %3,%4:%3,%4").arg(c.row).arg(c.col).arg(c.fromRow).arg(c.fromCol));
    EXPECT_EQ(grid().TopRow(), c.newTopRow);
    EXPECT_EQ(grid().LeftCol(), c.newLeftCol);
    const QString code = QString::number(c.code);
    QStringList expected{"KeyDown(" + code + ",0)"};
    if (c.newTopRow != c.topRow || c.newLeftCol != c.leftCol)
        expected << "Scroll";
    const bool moves = c.row != c.fromRow || c.col != c.fromCol;
    if (moves)
        expected << QString("RowColChange(%1,%2)").arg(c.fromRow).arg(c.fromCol);
    EXPECT_EQ(log().entries, expected << "KeyUp(" + code + ",0)");
    EXPECT_GT(markedTopEdge(c.row, c.col), 10);
    if (moves) {
        EXPECT_EQ(markedTopEdge(c.fromRow, c.fromCol), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Keyboard, Arrow, ::testing::ValuesIn(arrowCases), TabulaTest::caseName);

TEST_F(Keyboard, ShiftArrowsActLikeThePlainArrows)
{
    startAt(2, 2);
    click(centre(4, 3), Qt::ShiftModifier);
    log().clear();
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(where(), "3,2 in 2,2:4,3");
    EXPECT_EQ(log().entries, QStringList({"KeyDown(16,1)", "KeyDown(40,1)", "RowColChange(2,2)", "KeyUp(40,1)",
                                          "KeyUp(16,0)"}));
}

// Row1 or Col1 is moved off the line between inputs to show which of them select it again.
TEST_F(Keyboard, InLineModesArrowsInTheirOwnDirectionOrRightAndOneScrollStepsSelectTheCurrentLine)
{
    grid().setSelectionMode(SelectionByRow);
    startAt(2, 2);
    key(Qt::Key_Down);
    EXPECT_EQ(where(), "3,2 in 3,0:3,20");
    grid().setRow1(9);
    key(Qt::Key_Left);
    EXPECT_EQ(grid().Row1(), 9);
    key(Qt::Key_Right);
    EXPECT_EQ(where(), "3,2 in 3,0:3,20");
    grid().setRow1(7);
    vertical()->setValue(4);
    EXPECT_EQ(grid().Row1(), 7) << "a jump selects nothing";
    vertical()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(where(), "3,2 in 3,0:3,20");

    vertical()->setValue(1);
    grid().setSelectionMode(SelectionByCol);
    startAt(2, 2);
    key(Qt::Key_Right);
    EXPECT_EQ(where(), "2,3 in 0,3:50,3");
    key(Qt::Key_Left);
    EXPECT_EQ(where(), "2,2 in 0,2:50,2");
    grid().setCol1(9);
    key(Qt::Key_Down);
    EXPECT_EQ(grid().Col1(), 9);
    horizontal()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(where(), "3,2 in 0,2:50,2");
}

TEST_F(Keyboard, PagingKeysActOnRelease)
{
    QTest::keyPress(surface(), Qt::Key_End);
    EXPECT_EQ(current(), "1,1");
    QTest::keyRelease(surface(), Qt::Key_End);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(35,0)", "Scroll", "KeyUp(35,0)", "RowColChange(1,1)"}));
}

struct PageCase {
    const char* name;
    int32_t rows;
    Qt::Key key;
    int32_t from, row, topRow;
    int presses = 1;
};

// Rows start at 17 + 16 (r - 1): the paint stops after row 18, so a page is 16 rows.
const PageCase pageCases[] = {
    {"end", 50, Qt::Key_End, 1, 50, 50},                  {"home", 50, Qt::Key_Home, 50, 1, 1},
    {"page_down", 50, Qt::Key_PageDown, 1, 17, 17},       {"page_up", 50, Qt::Key_PageUp, 17, 1, 1},
    {"page_down_near_the_end", 50, Qt::Key_PageDown, 45, 50, 50},
    {"page_up_near_the_top", 50, Qt::Key_PageUp, 5, 1, 1},
    {"up_with_one_row", 1, Qt::Key_PageUp, 1, 1, 1, 2},   {"down_with_one_row", 1, Qt::Key_PageDown, 1, 1, 1, 2},
    {"up_with_two_rows", 2, Qt::Key_PageUp, 2, 2, 2, 2},  {"down_with_two_rows", 2, Qt::Key_PageDown, 1, 1, 1, 2},
    {"home_with_no_rows", 0, Qt::Key_Home, 0, 0, 1, 2},   {"end_with_no_rows", 0, Qt::Key_End, 0, 0, 1, 2},
    {"down_with_no_rows", 0, Qt::Key_PageDown, 0, 0, 1, 2},
};

class Paging : public TabulaTest::NavigationFixture, public ::testing::WithParamInterface<PageCase> {};

TEST_P(Paging, BringsTheNewRowToTheTopKeepsItInsideTheGridAndLeavesTheBlock)
{
    const PageCase& c = GetParam();
    const auto errors = errorSources();
    grid().setRows(c.rows);
    grid().setRow(c.from);
    const QString block = where().section(' ', 1);
    for (int i = 0; i < c.presses; ++i)
        key(c.key);
    EXPECT_EQ(current(), QString("%1,1").arg(c.row));
    EXPECT_EQ(where().section(' ', 1), block);
    EXPECT_EQ(grid().TopRow(), c.topRow);
    EXPECT_EQ(*errors, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Keyboard, Paging, ::testing::ValuesIn(pageCases), TabulaTest::caseName);

TEST_F(Keyboard, TypingOpensTheEditorWithTheCharacterButTabDoesNot)
{
    key(Qt::Key_Tab);
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(log().entries, QStringList({"KeyDown(9,0)", "KeyPress(9)", "KeyUp(9,0)"}));
    log().clear();
    key(Qt::Key_A);
    QApplication::processEvents();
    EXPECT_TRUE(editor()->isVisible());
    EXPECT_EQ(editor()->text(), "a");
    EXPECT_EQ(log().entries, QStringList({"KeyDown(65,0)", "KeyPress(97)", "BeforeEdit(1,1)", "KeyUp(65,0)"}));
}

TEST_F(Keyboard, ThePublicKeyDownAndMouseHandlersActWithoutRaisingTheirEvents)
{
    grid().KeyDown(40, 0);
    grid().KeyDown(39, 1);
    EXPECT_EQ(current(), "2,2");
    const QPoint at = centre(3, 2);
    grid().MouseDown(1, 0, at.x(), at.y());
    grid().MouseUp(1, 0, at.x(), at.y());
    EXPECT_EQ(current(), "3,2");
    EXPECT_EQ(log().entries, QStringList({"RowColChange(1,1)", "RowColChange(2,1)", "RowColChange(2,2)"}));
    grid().DblClick();
    EXPECT_TRUE(editor()->isVisible());
}

TEST_F(Keyboard, ArrowsAPressOrAScrollCloseAnOpenDropDownList)
{
    QWidget* list = openDropDown(Qt::Key_B, {"Apple", "Banana"});
    key(Qt::Key_Down);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(current(), "2,1");
    list = openDropDown(Qt::Key_A, {});
    clickCell(3, 2);
    EXPECT_FALSE(list->isVisible());
    list = openDropDown(Qt::Key_A, {});
    vertical()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(log().entries, QStringList({"Scroll"}));
}

