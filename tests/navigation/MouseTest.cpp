#include "tests/navigation/NavigationFixture.h"

using TabulaControl::SelectionByCol;
using TabulaControl::SelectionByRow;
using TabulaControl::SelectionFree;
using TabulaControl::SelectModes;

namespace {

class HitTest : public TabulaTest::NavigationFixture {};

TEST_F(HitTest, MouseRowAndMouseColNameTheLineUnderThePointOrMinusOneOffAllOfThem)
{
    // Ten rows of 15 pixels under a header row of 15, ten columns of 64 right
    // of a header column of 32.
    constexpr bool Row = true, Col = false, Header = true, NoHeader = false, Grid = true, NoGrid = false;
    const struct { bool rows, header, showGrid; int32_t firstShown; float at; int32_t expected; } cases[] = {
        {Row, Header, Grid, 1, 0.0f, -1}, {Row, Header, Grid, 1, 0.5f, 0}, {Row, Header, Grid, 1, 17.0f, 0},
        {Row, Header, Grid, 1, 17.5f, 1}, {Row, Header, Grid, 1, 32.0f, 1}, {Row, Header, Grid, 1, 32.5f, -1},
        {Row, Header, Grid, 1, 33.0f, 2}, {Row, Header, Grid, 1, 176.0f, 10}, {Row, Header, Grid, 1, 177.0f, -1},
        {Row, Header, Grid, 3, 17.5f, 3}, {Row, NoHeader, Grid, 1, 1.0f, 0}, {Row, NoHeader, Grid, 1, 1.5f, 1},
        {Row, NoHeader, Grid, 1, 17.0f, 2}, {Row, Header, NoGrid, 1, 16.0f, 0}, {Row, Header, NoGrid, 1, 31.0f, 1},
        {Row, Header, NoGrid, 1, 31.5f, 2}, {Col, Header, Grid, 1, 0.0f, -1}, {Col, Header, Grid, 1, 1.0f, 0},
        {Col, Header, Grid, 1, 34.0f, 0}, {Col, Header, Grid, 1, 34.5f, 1}, {Col, Header, Grid, 1, 98.0f, 1},
        {Col, Header, Grid, 1, 98.5f, -1}, {Col, Header, Grid, 1, 99.0f, 2}, {Col, Header, Grid, 4, 99.0f, 5},
        {Col, NoHeader, Grid, 1, 1.0f, 0}, {Col, NoHeader, Grid, 1, 1.5f, 1}, {Col, Header, NoGrid, 1, 97.5f, 2},
    };
    grid().setRows(10);
    grid().setCols(10);
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << (c.rows ? "row" : "col") << " at " << c.at << " header " << c.header
                                        << " grid " << c.showGrid << " from " << c.firstShown);
        grid().setColHeader(c.header);
        grid().setRowHeader(c.header);
        grid().setShowGrid(c.showGrid);
        grid().setTopRow(c.firstShown);
        grid().setLeftCol(c.firstShown);
        grid().MouseMove(0, 0, c.rows ? 50 : c.at, c.rows ? c.at : 50);
        EXPECT_EQ(c.rows ? grid().MouseRow() : grid().MouseCol(), c.expected);
    }
}

class Mouse : public TabulaTest::WideGrid {
protected:
    void doubleClick(QPoint at)
    {
        click(at);
        log().clear();
        QTest::mouseDClick(surface(), Qt::LeftButton, {}, at);
        release(at);
    }
};

TEST_F(Mouse, OnlyALeftPressMovesTheCurrentCellAndItDoesSoBeforeTheHostSeesMouseDown)
{
    const QPoint at = centre(3, 2);
    for (auto [button, code] : {std::pair{Qt::RightButton, 2}, {Qt::MiddleButton, 4}}) {
        click(at, {}, button);
        EXPECT_EQ(current(), "1,1");
        EXPECT_EQ(grid().MouseRow(), 3);
        EXPECT_EQ(grid().MouseCol(), 2);
        EXPECT_EQ(log().entries, QStringList({mouse("MouseDown", code, 0, at), mouse("MouseUp", code, 0, at)}));
        log().clear();
    }
    click(at);
    log().clear();
    click(at);
    EXPECT_EQ(log().entries, clickEvents(at)) << "no RowColChange for the current cell";
    EXPECT_GT(markedTopEdge(3, 2), 10);
}

struct PressCase {
    const char* name;
    SelectModes mode;
    bool allowSelection;
    int32_t row, col;
    Qt::KeyboardModifiers keys;
    const char* where;
    const char* pressed = nullptr;  // the corner, column headers 1 and 3, row headers 1 and 4
};

constexpr Qt::KeyboardModifiers Plain{}, Shift = Qt::ShiftModifier;

// Every case first presses cell (2, 2).
const PressCase pressCases[] = {
    {"cell_by_row", SelectionByRow, true, 3, 2, Plain, "3,2 in 3,0:3,20"},
    {"shift_free", SelectionFree, true, 4, 3, Shift, "2,2 in 2,2:4,3"},
    {"shift_by_row", SelectionByRow, true, 4, 3, Shift, "2,2 in 2,0:4,20"},
    {"shift_by_column", SelectionByCol, true, 4, 3, Shift, "2,2 in 0,2:50,3"},
    {"shift_without_selection", SelectionFree, false, 4, 3, Shift, "4,3 in 4,3:4,3"},
    {"row_header_by_row", SelectionByRow, true, 4, 0, Plain, "4,2 in 4,0:4,20", "....P"},
    {"column_header_by_column", SelectionByCol, true, 0, 3, Plain, "2,3 in 0,3:50,3", "..P.."},
    {"column_header_free", SelectionFree, true, 0, 3, Plain, "2,2 in 2,2:2,2", "....."},
    {"row_header_free", SelectionFree, true, 4, 0, Plain, "2,2 in 2,2:2,2", "....."},
    {"column_header_by_row", SelectionByRow, true, 0, 3, Plain, "2,2 in 2,0:2,20"},
    {"row_header_without_selection", SelectionByRow, false, 4, 0, Plain, "2,2 in 2,2:2,2"},
    {"corner_free", SelectionFree, true, 0, 0, Plain, "1,1 in 1,1:50,20", ".PPPP"},
    {"corner_by_row", SelectionByRow, true, 0, 0, Plain, "2,2 in 2,0:2,20"},
    {"corner_by_column", SelectionByCol, true, 0, 0, Plain, "2,2 in 0,2:50,2"},
    {"corner_without_selection", SelectionFree, false, 0, 0, Plain, "2,2 in 2,2:2,2"},
};

class Press : public Mouse, public ::testing::WithParamInterface<PressCase> {
protected:
    // 'P' where the header's top edge is dark, as a pressed button draws it.
    QString pressedHeaders()
    {
        QString result;
        for (auto [row, col] : {std::pair{0, 0}, {0, 1}, {0, 3}, {1, 0}, {4, 0}})
            result += pixel(cell(row, col).left() + 6, cell(row, col).top()) == TabulaTest::Black ? 'P' : '.';
        return result;
    }
};

TEST_P(Press, SelectsByTheSelectionModeAndDrawsTheSelectedHeadersPressedUntilTheNextPress)
{
    const PressCase& c = GetParam();
    grid().setSelectionMode(c.mode);
    grid().setAllowSelection(c.allowSelection);
    startAt(2, 2);
    const QPoint at = centre(c.row, c.col);
    click(at, c.keys);
    EXPECT_EQ(where(), c.where);
    const bool oneCell = grid().Row1() == grid().Row2() && grid().Col1() == grid().Col2();
    if (c.mode == SelectionFree) {
        EXPECT_EQ(grid().BlockSelected(), !oneCell);
    }
    const QStringList moved = current() == "2,2" ? QStringList() : QStringList{"RowColChange(2,2)"};
    const int shift = c.keys == Shift ? 1 : 0;
    EXPECT_EQ(log().entries, moved + QStringList({mouse("MouseDown", 1, shift, at), mouse("MouseUp", 1, shift, at),
                                                  "Click"}));
    if (!c.pressed)
        return;
    EXPECT_EQ(pressedHeaders(), c.pressed);
    clickCell(2, 2);
    EXPECT_EQ(pressedHeaders(), ".....");
}

INSTANTIATE_TEST_SUITE_P(Mouse, Press, ::testing::ValuesIn(pressCases), TabulaTest::caseName);

TEST_F(Mouse, PressesBetweenTheScrollBarsOrBelowTheLastRowChangeNothing)
{
    ASSERT_TRUE(vertical()->isVisible() && horizontal()->isVisible());
    startAt(2, 2);
    const QImage before = picture();
    const QPoint corner(385, 285);
    press(corner);
    EXPECT_EQ(where(), "2,2 in 2,2:2,2");
    EXPECT_EQ(picture(), before);
    EXPECT_EQ(log().entries, QStringList({mouse("MouseDown", 1, 0, corner)})) << "the dead corner only reports";
    release(corner);

    grid().setRows(5);
    log().clear();
    const QPoint below(100, 200);
    click(below);
    EXPECT_EQ(where(), "2,2 in 2,2:2,2");
    EXPECT_EQ(grid().MouseRow(), -1);
    EXPECT_EQ(log().entries, clickEvents(below));
}

struct CutOffCase {
    const char* name;
    int x, y;
    int32_t leftCol, topRow;
    const char* current;
};

const CutOffCase cutOffCases[] = {
    {"partly_hidden_column", 365, 25, 2, 1, "1,6"},
    {"partly_hidden_row", 60, 275, 1, 2, "17,1"},
    {"cut_off_both_ways", 365, 275, 2, 2, "17,6"},
    {"fully_shown", 325, 264, 1, 1, "16,5"},
};

class CutOffPress : public Mouse, public ::testing::WithParamInterface<CutOffCase> {};

TEST_P(CutOffPress, ScrollsTheCellIntoViewByOneStepEachWayBeforeMoving)
{
    const CutOffCase& c = GetParam();
    const QPoint at(c.x, c.y);
    click(at);
    EXPECT_EQ(grid().LeftCol(), c.leftCol);
    EXPECT_EQ(grid().TopRow(), c.topRow);
    EXPECT_EQ(current(), c.current);
    QStringList expected;
    for (int i = 2; i < c.leftCol + c.topRow; ++i)
        expected << "Scroll";
    EXPECT_EQ(log().entries, expected + QStringList{"RowColChange(1,1)"} + clickEvents(at));
}

INSTANTIATE_TEST_SUITE_P(Mouse, CutOffPress, ::testing::ValuesIn(cutOffCases), TabulaTest::caseName);

struct ToggleCase {
    const char* name;
    int32_t fromCol;
    Qt::Key key;  // pressed on the surface, or else a press at `at`
    QPoint at;
    Qt::KeyboardModifiers keys;
    QStringList events;  // of the first toggle
};

// (130, 24) is the centre of cell (1, 2), (130, 56) that of (3, 2).
const ToggleCase toggleCases[] = {
    {"press", 1, Qt::Key_unknown, {130, 24}, {},
     {"AfterEdit(1,2,1)", "RowColChange(1,1)", "MouseDown(1,0,130,24)", "MouseUp(1,0,130,24)", "Click"}},
    {"shift_press_on_another_cell", 2, Qt::Key_unknown, {130, 56}, Qt::ShiftModifier,
     {"AfterEdit(1,2,1)", "MouseDown(1,1,130,56)", "MouseUp(1,1,130,56)", "Click"}},
    {"space", 2, Qt::Key_Space, {}, {}, {"KeyDown(32,0)", "KeyPress(32)", "AfterEdit(1,2,1)", "KeyUp(32,0)"}},
    {"tab", 2, Qt::Key_Tab, {}, {}, {"KeyDown(9,0)", "KeyPress(9)", "AfterEdit(1,2,1)", "KeyUp(9,0)"}},
    {"letter", 2, Qt::Key_X, {}, {}, {"KeyDown(88,0)", "KeyPress(120)", "AfterEdit(1,2,1)", "KeyUp(88,0)"}},
};

// Column 2 holds check boxes, (1, 2) the text "abc".
class Checkmark : public Mouse, public ::testing::WithParamInterface<ToggleCase> {};

TEST_P(Checkmark, TogglesTheCurrentCellAndMakesAnyOtherTextOneUnlessTheColumnAllowsNoEdit)
{
    const ToggleCase& c = GetParam();
    grid().setColMask(2, TabulaControl::checkmark);
    grid().setTextMatrix(1, 2, "abc");
    moveTo(1, c.fromCol);
    log().clear();
    const auto toggled = [&] {
        if (c.key != Qt::Key_unknown)
            key(c.key);
        else
            click(c.at, c.keys);
        return grid().TextMatrix(1, 2);
    };
    EXPECT_EQ(toggled(), "1");
    EXPECT_EQ(log().entries, c.events);
    EXPECT_EQ(toggled(), "0");
    EXPECT_EQ(toggled(), "1");
    EXPECT_EQ(current(), "1,2");
    EXPECT_EQ(grid().TextMatrix(3, 2), "0") << "a shift press toggles the current cell only";
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_GT(markedTopEdge(1, 2), 10) << "the redrawn cell keeps its mark";

    grid().setColAllowEdit(2, false);
    log().clear();
    EXPECT_EQ(toggled(), "1") << "a column that allows no edit keeps its text";
    EXPECT_TRUE(log().only({"AfterEdit"}).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Mouse, Checkmark, ::testing::ValuesIn(toggleCases), TabulaTest::caseName);

TEST_F(Mouse, ADoubleClickOpensTheEditorAfterDblClickExceptOnHeadersAndCheckmarks)
{
    grid().setColMask(4, TabulaControl::checkmark);
    for (QPoint at : {centre(0, 3), centre(2, 4)}) {
        doubleClick(at);
        EXPECT_EQ(log().only({"DblClick", "BeforeEdit"}), QStringList({"DblClick"}));
        EXPECT_FALSE(editor()->isVisible());
    }
    const QPoint at = centre(2, 3);
    doubleClick(at);
    EXPECT_EQ(log().entries, QStringList({"DblClick", "BeforeEdit(2,3)", mouse("MouseUp", 1, 0, at)}));
    EXPECT_TRUE(editor()->isVisible());
}

TEST_F(Mouse, DraggingExtendsAndShrinksTheBlockInFreeModeOnlyAndNotAfterAHeaderPress)
{
    const QPoint from = centre(2, 2), far = centre(5, 4), to = centre(4, 3);
    press(from);
    dragTo(far);
    EXPECT_EQ(where(), "2,2 in 2,2:5,4");
    dragTo(to);
    release(to);
    EXPECT_EQ(where(), "2,2 in 2,2:4,3");
    EXPECT_EQ(shades({{2, 2}, {3, 3}, {4, 3}, {4, 4}, {5, 4}, {5, 3}}), "WBBWWW");
    EXPECT_EQ(log().entries, QStringList({"RowColChange(1,1)", mouse("MouseDown", 1, 0, from),
                                          mouse("MouseMove", 1, 0, far), mouse("MouseMove", 1, 0, to),
                                          mouse("MouseUp", 1, 0, to), "Click"}));
    grid().setSelectionMode(SelectionByRow);
    drag(centre(2, 2), centre(4, 3));
    EXPECT_EQ(where(), "2,2 in 2,0:2,20");
    grid().setSelectionMode(SelectionFree);
    drag(centre(0, 0), centre(4, 3));
    EXPECT_EQ(where(), "1,1 in 1,1:50,20");
    EXPECT_EQ(shades({{1, 1}, {1, 2}, {10, 4}}), "WBB") << "the corner inverts everything but the anchor";
}

TEST_F(Mouse, DraggingAboveTheSurfaceScrollsUpUntilTheReleaseOrTheFirstRow)
{
    vertical()->setValue(5);
    const QPoint above(60, -5);
    press(centre(6, 2));
    dragTo(above);
    EXPECT_EQ(grid().TopRow(), 4);
    release(above);
    settle(5);
    EXPECT_EQ(grid().TopRow(), 4) << "the release ends the repetition";
    press(centre(6, 2));
    log().clear();
    dragTo(above);
    EXPECT_EQ(grid().TopRow(), 3);
    for (int i = 0; i < 20 && grid().TopRow() > 1; ++i)
        QApplication::processEvents();
    EXPECT_EQ(grid().TopRow(), 1);
    EXPECT_EQ(scrolls(), 3);
    settle(5);
    EXPECT_EQ(scrolls(), 3) << "the repetition ends at the first row";
    release(above);
}

TEST_F(Mouse, DraggingRightOfTheVisibleAreaScrollsRightUntilTheLastColumn)
{
    press(centre(3, 2));
    log().clear();
    dragTo(QPoint(380, 60));
    EXPECT_EQ(grid().LeftCol(), 2);
    for (int i = 0; i < 40 && grid().LeftCol() < 20; ++i)
        QApplication::processEvents();
    EXPECT_EQ(grid().LeftCol(), 20);
    EXPECT_EQ(scrolls(), 19);
    release(QPoint(380, 60));
}

}  // namespace
