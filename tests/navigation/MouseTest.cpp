#include "tests/navigation/NavigationFixture.h"
#include "tests/support/EngineFixture.h"

#include <QLineEdit>

using TabulaControl::ComponentError;
using TabulaControl::SelectionByCol;
using TabulaControl::SelectionByRow;
using TabulaControl::SelectionFree;
using TabulaControl::SelectModes;
using TabulaTest::Black;
using TabulaTest::White;

namespace {

// ---- Hit-testing --------------------------------------------------------

struct HitCase {
    const char* name;
    bool header;
    bool showGrid;
    int32_t firstShown;
    float at;
    int32_t expected;
};

// Header of 15 (rows) or 32 (columns) pixels, rows of 15 and columns of 64,
// ten of each.
const HitCase rowCases[] = {
    {"above_the_surface", true, true, 1, 0.0f, -1},
    {"first_header_pixel", true, true, 1, 0.5f, 0},
    {"header_reaches_the_first_row_start", true, true, 1, 17.0f, 0},
    {"first_row", true, true, 1, 17.5f, 1},
    {"grid_line_below_row_one", true, true, 1, 32.0f, 1},
    {"between_line_and_next_row", true, true, 1, 32.5f, -1},
    {"second_row", true, true, 1, 33.0f, 2},
    {"last_row_bottom", true, true, 1, 176.0f, 10},
    {"below_the_last_row", true, true, 1, 177.0f, -1},
    {"scrolled", true, true, 3, 17.5f, 3},
    {"hidden_header_first_pixel", false, true, 1, 1.0f, 0},
    {"hidden_header_first_row", false, true, 1, 1.5f, 1},
    {"hidden_header_second_row", false, true, 1, 17.0f, 2},
    {"no_grid_header", true, false, 1, 16.0f, 0},
    {"no_grid_first_row_end", true, false, 1, 31.0f, 1},
    {"no_grid_second_row", true, false, 1, 31.5f, 2},
};

const HitCase colCases[] = {
    {"left_of_the_surface", true, true, 1, 0.0f, -1},
    {"header_column", true, true, 1, 1.0f, 0},
    {"header_reaches_the_first_column_start", true, true, 1, 34.0f, 0},
    {"first_column", true, true, 1, 34.5f, 1},
    {"grid_line_right_of_column_one", true, true, 1, 98.0f, 1},
    {"between_line_and_next_column", true, true, 1, 98.5f, -1},
    {"second_column", true, true, 1, 99.0f, 2},
    {"scrolled", true, true, 4, 99.0f, 5},
    {"hidden_header_first_pixel", false, true, 1, 1.0f, 0},
    {"hidden_header_first_column", false, true, 1, 1.5f, 1},
    {"no_grid_second_column", true, false, 1, 97.5f, 2},
};

class HitTest : public TabulaTest::EngineFixture, public ::testing::WithParamInterface<HitCase> {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setRows(10);
        g().setCols(10);
    }
};

class RowHit : public HitTest {};
class ColHit : public HitTest {};

}  // namespace

TEST_P(RowHit, FindsTheRowUnderY)
{
    const HitCase& c = GetParam();
    s().mColHeader = c.header;
    s().mShowGrid = c.showGrid;
    s().mTopRow = c.firstShown;
    EXPECT_EQ(g().RowFromPoint(50, c.at), c.expected);
    EXPECT_EQ(s().mGridLineWidth, c.showGrid ? 1 : 0);
}

TEST_P(ColHit, FindsTheColumnUnderX)
{
    const HitCase& c = GetParam();
    s().mRowHeader = c.header;
    s().mShowGrid = c.showGrid;
    s().mLeftCol = c.firstShown;
    EXPECT_EQ(g().ColFromPoint(c.at, 50), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Mouse, RowHit, ::testing::ValuesIn(rowCases),
                         [](const auto& info) { return std::string(info.param.name); });
INSTANTIATE_TEST_SUITE_P(Mouse, ColHit, ::testing::ValuesIn(colCases),
                         [](const auto& info) { return std::string(info.param.name); });

namespace {

// ---- Presses on the real surface -----------------------------------------

class Mouse : public TabulaTest::NavigationFixture {
protected:
    void SetUp() override
    {
        NavigationFixture::SetUp();
        grid().setCols(20);
        grid().setRows(50);
        log().clear();
    }

    void expectSelection(int32_t row1, int32_t col1, int32_t row2, int32_t col2)
    {
        EXPECT_EQ(grid().Row1(), row1);
        EXPECT_EQ(grid().Col1(), col1);
        EXPECT_EQ(grid().Row2(), row2);
        EXPECT_EQ(grid().Col2(), col2);
    }
    void expectCurrent(int32_t row, int32_t col)
    {
        EXPECT_EQ(grid().Row(), row);
        EXPECT_EQ(grid().Col(), col);
    }
    QLineEdit* editor() { return grid().findChild<QLineEdit*>("txtEdit"); }
    int scrolls() { return static_cast<int>(log().only({"Scroll"}).size()); }
};

}  // namespace

TEST_F(Mouse, APressMovesTheCurrentCellBeforeTheHostSeesMouseDown)
{
    const QPoint at = centre(3, 2);
    click(at);
    expectCurrent(3, 2);
    expectSelection(3, 2, 3, 2);
    EXPECT_FALSE(grid().BlockSelected());
    EXPECT_EQ(log().entries, QStringList({"RowColChange(1,1)", mouse("MouseDown", 1, 0, at),
                                          mouse("MouseUp", 1, 0, at), "Click"}));
    EXPECT_GT(markedTopEdge(3, 2), 10);
    EXPECT_EQ(markedTopEdge(1, 1), 0);
    EXPECT_EQ(grid().MouseRow(), 3);
    EXPECT_EQ(grid().MouseCol(), 2);
}

TEST_F(Mouse, PressingTheCurrentCellAgainRaisesNoRowColChange)
{
    clickCell(1, 1);
    EXPECT_EQ(log().only({"RowColChange"}), QStringList());
    EXPECT_EQ(log().only({"Click"}).size(), 1);
    EXPECT_GT(markedTopEdge(1, 1), 10) << "the mark stays";
}

TEST_F(Mouse, OtherButtonsMoveNothingButReachTheHost)
{
    const QPoint at = centre(3, 2);
    for (Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        log().clear();
        click(at, {}, button);
        const int code = button == Qt::RightButton ? 2 : 4;
        expectCurrent(1, 1);
        EXPECT_EQ(grid().MouseRow(), 3);
        EXPECT_EQ(grid().MouseCol(), 2);
        EXPECT_EQ(log().entries, QStringList({mouse("MouseDown", code, 0, at), mouse("MouseUp", code, 0, at)}));
    }
}

TEST_F(Mouse, ShiftPressExtendsFromTheAnchorWithoutMovingTheCurrentCell)
{
    clickCell(2, 2);
    log().clear();
    const QPoint at = centre(4, 3);
    click(at, Qt::ShiftModifier);
    expectCurrent(2, 2);
    expectSelection(2, 2, 4, 3);
    EXPECT_TRUE(grid().BlockSelected());
    EXPECT_EQ(centrePixel(2, 2), White) << "the anchor shows normally";
    for (auto [r, c] : {std::pair{2, 3}, {3, 2}, {3, 3}, {4, 2}, {4, 3}})
        EXPECT_EQ(centrePixel(r, c), Black) << r << "," << c;
    EXPECT_EQ(centrePixel(5, 3), White);
    EXPECT_EQ(log().entries, QStringList({mouse("MouseDown", 1, 1, at), mouse("MouseUp", 1, 1, at), "Click"}));
}

TEST_F(Mouse, ShiftPressInLineModesReachesTheLastColumnOrRow)
{
    grid().setSelectionMode(SelectionByRow);
    clickCell(2, 2);
    clickCell(4, 3, Qt::ShiftModifier);
    expectSelection(2, 0, 4, 20);
    EXPECT_EQ(centrePixel(3, 5), Black);

    grid().setSelectionMode(SelectionByCol);
    clickCell(2, 2);
    clickCell(4, 3, Qt::ShiftModifier);
    expectSelection(0, 2, 50, 3);
}

TEST_F(Mouse, ShiftPressWithoutAllowSelectionIsAPlainPress)
{
    grid().setAllowSelection(false);
    clickCell(4, 3, Qt::ShiftModifier);
    expectCurrent(4, 3);
    expectSelection(4, 3, 4, 3);
}

TEST_F(Mouse, APlainPressInRowModeSelectsTheWholeRow)
{
    grid().setSelectionMode(SelectionByRow);
    clickCell(3, 2);
    expectSelection(3, 0, 3, 20);
    EXPECT_EQ(centrePixel(3, 4), Black);
    clickCell(5, 2);
    expectSelection(5, 0, 5, 20);
    EXPECT_EQ(centrePixel(3, 4), White) << "the old row is erased";
    EXPECT_EQ(centrePixel(5, 4), Black);
}

namespace {

struct HeaderCase {
    const char* name;
    SelectModes mode;
    bool allowSelection;
    int32_t row, col;
    int32_t row1, col1, row2, col2;
    int32_t currentRow, currentCol;
};

// Every case first presses cell (2, 2).
const HeaderCase headerCases[] = {
    {"row_header_by_row", SelectionByRow, true, 4, 0, 4, 0, 4, 20, 4, 2},
    {"column_header_by_column", SelectionByCol, true, 0, 3, 0, 3, 50, 3, 2, 3},
    {"column_header_free", SelectionFree, true, 0, 3, 2, 2, 2, 2, 2, 2},
    {"row_header_free", SelectionFree, true, 4, 0, 2, 2, 2, 2, 2, 2},
    {"column_header_by_row", SelectionByRow, true, 0, 3, 2, 0, 2, 20, 2, 2},
    {"row_header_without_selection", SelectionByRow, false, 4, 0, 2, 2, 2, 2, 2, 2},
    {"corner_free", SelectionFree, true, 0, 0, 1, 1, 50, 20, 1, 1},
    {"corner_by_row", SelectionByRow, true, 0, 0, 2, 0, 2, 20, 2, 2},
    {"corner_by_column", SelectionByCol, true, 0, 0, 0, 2, 50, 2, 2, 2},
    {"corner_without_selection", SelectionFree, false, 0, 0, 2, 2, 2, 2, 2, 2},
};

class HeaderPress : public Mouse, public ::testing::WithParamInterface<HeaderCase> {};

}  // namespace

TEST_P(HeaderPress, SelectsByTheSelectionMode)
{
    const HeaderCase& c = GetParam();
    grid().setSelectionMode(c.mode);
    grid().setAllowSelection(c.allowSelection);
    clickCell(2, 2);
    log().clear();
    const QPoint at = centre(c.row, c.col);
    click(at);
    expectSelection(c.row1, c.col1, c.row2, c.col2);
    expectCurrent(c.currentRow, c.currentCol);
    QStringList expected;
    if (c.currentRow != 2 || c.currentCol != 2)
        expected << "RowColChange(2,2)";
    expected << mouse("MouseDown", 1, 0, at) << mouse("MouseUp", 1, 0, at) << "Click";
    EXPECT_EQ(log().entries, expected);
}

INSTANTIATE_TEST_SUITE_P(Mouse, HeaderPress, ::testing::ValuesIn(headerCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Mouse, ARowHeaderPressInRowModeInvertsTheRow)
{
    grid().setSelectionMode(SelectionByRow);
    clickCell(2, 2);
    click(centre(4, 0));
    EXPECT_EQ(centrePixel(2, 3), White);
    for (int32_t c = 1; c <= 5; ++c)
        EXPECT_EQ(centrePixel(4, c), Black) << c;
}

TEST_F(Mouse, TheCornerInFreeModeInvertsEverythingButTheAnchor)
{
    click(centre(0, 0));
    EXPECT_EQ(centrePixel(1, 1), White);
    EXPECT_EQ(centrePixel(1, 2), Black);
    EXPECT_EQ(centrePixel(10, 4), Black);
    EXPECT_TRUE(grid().BlockSelected());
}

TEST_F(Mouse, ThePressBetweenTheScrollBarsDoesNothingOfItsOwn)
{
    ASSERT_TRUE(vertical()->isVisible());
    ASSERT_TRUE(horizontal()->isVisible());
    clickCell(2, 2);
    log().clear();
    const QImage before = picture();
    const QPoint at(385, 285);
    press(at);
    expectCurrent(2, 2);
    expectSelection(2, 2, 2, 2);
    EXPECT_EQ(picture(), before);
    EXPECT_EQ(log().entries, QStringList({mouse("MouseDown", 1, 0, at)}));
    release(at);
}

TEST_F(Mouse, APressBelowTheLastRowChangesNothing)
{
    grid().setRows(5);
    clickCell(2, 2);
    log().clear();
    const QPoint at(100, 200);
    click(at);
    expectCurrent(2, 2);
    expectSelection(2, 2, 2, 2);
    EXPECT_EQ(grid().MouseRow(), -1);
    EXPECT_EQ(log().entries, QStringList({mouse("MouseDown", 1, 0, at), mouse("MouseUp", 1, 0, at), "Click"}));
}

TEST_F(Mouse, APartlyHiddenColumnScrollsIntoViewByOneStep)
{
    const QPoint at(365, 25);
    click(at);
    EXPECT_EQ(grid().LeftCol(), 2);
    expectCurrent(1, 6);
    EXPECT_EQ(log().entries, QStringList({"Scroll", "RowColChange(1,1)", mouse("MouseDown", 1, 0, at),
                                          mouse("MouseUp", 1, 0, at), "Click"}));
}

TEST_F(Mouse, APartlyHiddenRowScrollsIntoViewByOneStep)
{
    click(QPoint(60, 275));
    EXPECT_EQ(grid().TopRow(), 2);
    expectCurrent(17, 1);
    EXPECT_EQ(scrolls(), 1);
}

TEST_F(Mouse, ACellCutOffBothWaysScrollsOneStepEachWay)
{
    click(QPoint(365, 275));
    EXPECT_EQ(grid().LeftCol(), 2);
    EXPECT_EQ(grid().TopRow(), 2);
    expectCurrent(17, 6);
    EXPECT_EQ(scrolls(), 2);
}

TEST_F(Mouse, AFullyShownCellDoesNotScroll)
{
    clickCell(16, 5);
    EXPECT_EQ(grid().LeftCol(), 1);
    EXPECT_EQ(grid().TopRow(), 1);
    EXPECT_EQ(scrolls(), 0);
}

TEST_F(Mouse, APressOnACheckmarkCellTogglesIt)
{
    grid().setColMask(2, TabulaControl::checkmark);
    grid().setTextMatrix(1, 2, "0");
    grid().setTextMatrix(2, 2, "abc");
    log().clear();
    const QPoint at = centre(1, 2);
    click(at);
    EXPECT_EQ(grid().TextMatrix(1, 2), "1");
    EXPECT_EQ(log().entries, QStringList({"AfterEdit(1,2,1)", "RowColChange(1,1)", mouse("MouseDown", 1, 0, at),
                                          mouse("MouseUp", 1, 0, at), "Click"}));
    click(at);
    EXPECT_EQ(grid().TextMatrix(1, 2), "0");
    clickCell(2, 2);
    EXPECT_EQ(grid().TextMatrix(2, 2), "1") << "any other text becomes 1";
    EXPECT_EQ(log().only({"AfterEdit"}), QStringList({"AfterEdit(1,2,1)", "AfterEdit(1,2,0)", "AfterEdit(2,2,1)"}));
}

TEST_F(Mouse, ACheckmarkCellThatDisallowsEditingKeepsItsText)
{
    grid().setColMask(2, TabulaControl::checkmark);
    grid().setTextMatrix(1, 2, "0");
    grid().setColAllowEdit(2, false);
    log().clear();
    clickCell(1, 2);
    EXPECT_EQ(grid().TextMatrix(1, 2), "0");
    EXPECT_TRUE(log().only({"AfterEdit"}).isEmpty());
    EXPECT_GT(markedTopEdge(1, 2), 10) << "the redrawn cell keeps its mark";
}

TEST_F(Mouse, AShiftPressTogglesTheCurrentCheckmarkCellNotThePressedOne)
{
    grid().setColMask(2, TabulaControl::checkmark);
    grid().setTextMatrix(1, 2, "0");
    grid().setTextMatrix(3, 2, "0");
    clickCell(1, 2);
    clickCell(3, 2, Qt::ShiftModifier);
    EXPECT_EQ(grid().TextMatrix(1, 2), "0") << "toggled twice";
    EXPECT_EQ(grid().TextMatrix(3, 2), "0");
    expectCurrent(1, 2);
}

TEST_F(Mouse, ADoubleClickRaisesDblClickThenOpensTheEditor)
{
    const QPoint at = centre(2, 3);
    click(at);
    log().clear();
    QTest::mouseDClick(surface(), Qt::LeftButton, {}, at);
    release(at);
    EXPECT_EQ(log().entries, QStringList({"DblClick", "BeforeEdit(2,3)", mouse("MouseUp", 1, 0, at)}));
    EXPECT_TRUE(editor()->isVisible());
}

TEST_F(Mouse, ADoubleClickOnAHeaderOrACheckmarkCellOpensNothing)
{
    grid().setColMask(4, TabulaControl::checkmark);
    for (QPoint at : {centre(0, 3), centre(2, 4)}) {
        click(at);
        log().clear();
        QTest::mouseDClick(surface(), Qt::LeftButton, {}, at);
        release(at);
        EXPECT_EQ(log().only({"DblClick", "BeforeEdit"}), QStringList({"DblClick"}));
        EXPECT_FALSE(editor()->isVisible());
    }
}

TEST_F(Mouse, APressElsewhereCommitsAnOpenEditorFirst)
{
    key(Qt::Key_A);
    QApplication::processEvents();
    ASSERT_TRUE(editor()->isVisible());
    log().clear();
    const QPoint at = centre(3, 2);
    click(at);
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(grid().TextMatrix(1, 1), "a");
    EXPECT_EQ(log().entries, QStringList({"BeforeEdit(1,1)", "AfterEdit(1,1,a)", "RowColChange(1,1)",
                                          mouse("MouseDown", 1, 0, at), mouse("MouseUp", 1, 0, at), "Click"}));
    QApplication::processEvents();
    EXPECT_EQ(log().entries.size(), 6);
}

TEST_F(Mouse, DraggingExtendsTheBlockInFreeMode)
{
    const QPoint from = centre(2, 2), to = centre(4, 3);
    press(from);
    dragTo(to);
    release(to);
    expectCurrent(2, 2);
    expectSelection(2, 2, 4, 3);
    EXPECT_EQ(centrePixel(2, 2), White);
    EXPECT_EQ(centrePixel(3, 3), Black);
    EXPECT_EQ(centrePixel(4, 4), White);
    EXPECT_EQ(log().entries, QStringList({"RowColChange(1,1)", mouse("MouseDown", 1, 0, from),
                                          mouse("MouseMove", 1, 0, to), mouse("MouseUp", 1, 0, to), "Click"}));
}

TEST_F(Mouse, DraggingBackShrinksTheBlock)
{
    press(centre(2, 2));
    dragTo(centre(5, 4));
    dragTo(centre(3, 3));
    release(centre(3, 3));
    expectSelection(2, 2, 3, 3);
    EXPECT_EQ(centrePixel(5, 4), White);
    EXPECT_EQ(centrePixel(4, 3), White);
    EXPECT_EQ(centrePixel(3, 3), Black);
}

TEST_F(Mouse, DraggingInLineModesOrAfterAHeaderPressExtendsNothing)
{
    grid().setSelectionMode(SelectionByRow);
    press(centre(2, 2));
    dragTo(centre(4, 3));
    release(centre(4, 3));
    expectSelection(2, 0, 2, 20);

    grid().setSelectionMode(SelectionFree);
    press(centre(0, 0));
    dragTo(centre(4, 3));
    release(centre(4, 3));
    expectSelection(1, 1, 50, 20);
}

TEST_F(Mouse, DraggingAboveTheSurfaceScrollsUpUntilTheFirstRow)
{
    vertical()->setValue(5);
    press(centre(6, 2));
    log().clear();
    dragTo(QPoint(60, -5));
    EXPECT_EQ(grid().TopRow(), 4);
    for (int i = 0; i < 20 && grid().TopRow() > 1; ++i)
        QApplication::processEvents();
    EXPECT_EQ(grid().TopRow(), 1);
    EXPECT_EQ(scrolls(), 4);
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    EXPECT_EQ(scrolls(), 4) << "the repetition ends at the first row";
    release(QPoint(60, -5));
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

TEST_F(Mouse, ReleasingEndsTheAutoScroll)
{
    vertical()->setValue(5);
    press(centre(6, 2));
    dragTo(QPoint(60, -5));
    release(QPoint(60, -5));
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    EXPECT_EQ(grid().TopRow(), 4);
}

TEST_F(Mouse, ThePublicHandlersActWithoutRaisingTheirEvents)
{
    const QPoint at = centre(3, 2);
    grid().MouseDown(1, 0, at.x(), at.y());
    grid().MouseUp(1, 0, at.x(), at.y());
    expectCurrent(3, 2);
    EXPECT_EQ(log().entries, QStringList({"RowColChange(1,1)"}));
    grid().DblClick();
    EXPECT_TRUE(editor()->isVisible());
}

TEST_F(Mouse, FailuresNameTheMemberOrTheNotification)
{
    grid().setTopRow(-5);
    const ComponentError direct = TabulaTest::errorOf([&] { grid().MouseDown(1, 0, 50, 50); });
    EXPECT_EQ(direct.Source, "TabulaControl.Tabula.MouseDown");
    EXPECT_EQ(direct.Number, ComponentError::ErrorNumber);
    EXPECT_TRUE(direct.Description.startsWith("Tabula component failureat line "));

    QStringList sources;
    QObject::connect(&grid(), &TabulaControl::Tabula::errorOccurred,
                     [&](const ComponentError& e) { sources.append(e.Source); });
    click(QPoint(50, 50));
    EXPECT_EQ(sources.value(0), "TabulaControl.Tabula.picGrid_MouseDown");
}

namespace {

// ---- Header marks in the cell store ----------------------------------------

// Ten rows and five columns on the plain 400 x 300 host.
class HeaderMarks : public TabulaTest::EngineFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setRows(10);
    }
    bool marked(int16_t row, int16_t col) { return s().mCells.Value(row, col) == -1; }
    int markedCount()
    {
        int count = 0;
        for (int16_t c = 0; c <= 5; ++c)
            count += marked(0, c);
        for (int16_t r = 1; r <= 10; ++r)
            count += marked(r, 0);
        return count;
    }
    void pressAt(float x, float y) { g().MouseDown(1, 0, x, y); }
};

constexpr float ColumnThreeHeaderX = 195, HeaderY = 8;
constexpr float RowFourHeaderY = 72, HeaderColumnX = 16;
constexpr float CellTwoTwoX = 130, CellTwoTwoY = 40;

}  // namespace

TEST_F(HeaderMarks, AColumnHeaderPressInColumnModeMarksItUntilTheNextPress)
{
    s().mSelectionMode = SelectionByCol;
    pressAt(ColumnThreeHeaderX, HeaderY);
    EXPECT_TRUE(marked(0, 3));
    EXPECT_EQ(markedCount(), 1);
    EXPECT_TRUE(s().mHeaderClicked);
    EXPECT_TRUE(s().mColumnsSelected);
    pressAt(CellTwoTwoX, CellTwoTwoY);
    EXPECT_EQ(markedCount(), 0);
    EXPECT_FALSE(s().mHeaderClicked);
}

TEST_F(HeaderMarks, ARowHeaderPressInRowModeMarksIt)
{
    s().mSelectionMode = SelectionByRow;
    pressAt(HeaderColumnX, RowFourHeaderY);
    EXPECT_TRUE(marked(4, 0));
    EXPECT_EQ(markedCount(), 1);
    EXPECT_TRUE(s().mRowsSelected);
}

TEST_F(HeaderMarks, HeaderPressesInFreeModeMarkNothing)
{
    pressAt(ColumnThreeHeaderX, HeaderY);
    pressAt(HeaderColumnX, RowFourHeaderY);
    EXPECT_EQ(markedCount(), 0);
}

TEST_F(HeaderMarks, TheCornerMarksEveryHeaderCellAndThePressAfterClearsThem)
{
    pressAt(HeaderColumnX, HeaderY);
    EXPECT_EQ(markedCount(), 15);
    EXPECT_FALSE(marked(0, 0));
    EXPECT_TRUE(s().mRowsSelected && s().mColumnsSelected);
    g().MouseUp(1, 0, HeaderColumnX, HeaderY);
    EXPECT_FALSE(s().mRowsSelected || s().mColumnsSelected || s().mMouseDown);
    pressAt(CellTwoTwoX, CellTwoTwoY);
    EXPECT_EQ(markedCount(), 0);
}

TEST_F(HeaderMarks, OnlyMarksWithinTheSelectionAreTakenOff)
{
    s().mCells.setValue(0, 0, -1);
    s().mCells.setValue(0, 5, -1);
    s().mCells.setValue(7, 0, -1);
    pressAt(CellTwoTwoX, CellTwoTwoY);
    EXPECT_FALSE(marked(0, 0)) << "the corner is always taken off";
    EXPECT_TRUE(marked(0, 5));
    EXPECT_TRUE(marked(7, 0));
}

TEST_F(Mouse, APressClosesAnOpenDropDownList)
{
    grid().AddLookup(1, "Apple");
    clickCell(1, 1);
    key(Qt::Key_A);
    QWidget* list = child("ListForm");
    ASSERT_TRUE(list->isVisible());
    clickCell(3, 2);
    EXPECT_FALSE(list->isVisible());
    EXPECT_FALSE(child("cmdLookup")->isVisible()) << "column 2 has no lookup";
}

TEST_F(HeaderMarks, AMarkedHeaderDrawsAsAPressedButton)
{
    // The top edge of column 3's header: light when raised, dark when pressed.
    constexpr int TopEdgeX = 34 + 2 * 65 + 6, TopEdgeY = 1;
    s().mSelectionMode = SelectionByCol;
    EXPECT_EQ(pixel(TopEdgeX, TopEdgeY), 0xFFFFFFu);
    pressAt(ColumnThreeHeaderX, HeaderY);
    EXPECT_EQ(pixel(TopEdgeX, TopEdgeY), 0x000000u);
    pressAt(CellTwoTwoX, CellTwoTwoY);
    EXPECT_EQ(pixel(TopEdgeX, TopEdgeY), 0xFFFFFFu);
}
