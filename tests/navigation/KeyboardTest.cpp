#include "tests/navigation/NavigationFixture.h"
#include "tests/support/EngineFixture.h"

#include <QLineEdit>

using TabulaControl::SelectionByCol;
using TabulaControl::SelectionByRow;
using TabulaTest::Black;
using TabulaTest::White;

namespace {

class Keyboard : public TabulaTest::NavigationFixture {
protected:
    void SetUp() override
    {
        NavigationFixture::SetUp();
        grid().setCols(20);
        grid().setRows(50);
        log().clear();
    }

    void expectCurrent(int32_t row, int32_t col)
    {
        EXPECT_EQ(grid().Row(), row);
        EXPECT_EQ(grid().Col(), col);
    }
    void expectSelection(int32_t row1, int32_t col1, int32_t row2, int32_t col2)
    {
        EXPECT_EQ(grid().Row1(), row1);
        EXPECT_EQ(grid().Col1(), col1);
        EXPECT_EQ(grid().Row2(), row2);
        EXPECT_EQ(grid().Col2(), col2);
    }
    void startAt(int32_t row, int32_t col)
    {
        clickCell(row, col);
        log().clear();
    }
    QLineEdit* editor() { return grid().findChild<QLineEdit*>("txtEdit"); }
    void openEditor()
    {
        key(Qt::Key_A);
        QApplication::processEvents();
        ASSERT_TRUE(editor()->isVisible());
        log().clear();
    }
    // Release only: the paging keys act then.
    void releaseKey(Qt::Key k)
    {
        QTest::keyPress(surface(), k);
        QTest::keyRelease(surface(), k);
    }
};

struct ArrowCase {
    const char* name;
    Qt::Key key;
    int16_t code;
    int32_t row, col;
};

const ArrowCase arrowCases[] = {
    {"down", Qt::Key_Down, 40, 4, 3},
    {"up", Qt::Key_Up, 38, 2, 3},
    {"right", Qt::Key_Right, 39, 3, 4},
    {"left", Qt::Key_Left, 37, 3, 2},
};

class Arrow : public Keyboard, public ::testing::WithParamInterface<ArrowCase> {};

}  // namespace

TEST_P(Arrow, MovesTheCurrentCellByOne)
{
    const ArrowCase& c = GetParam();
    startAt(3, 3);
    key(c.key);
    expectCurrent(c.row, c.col);
    expectSelection(3, 3, 3, 3);
    const QString code = QString::number(c.code);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(" + code + ",0)", "RowColChange(3,3)", "KeyUp(" + code + ",0)"}));
    EXPECT_GT(markedTopEdge(c.row, c.col), 10);
    EXPECT_EQ(markedTopEdge(3, 3), 0);
}

INSTANTIATE_TEST_SUITE_P(Keyboard, Arrow, ::testing::ValuesIn(arrowCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Keyboard, ArrowsAtTheEdgesMoveNothing)
{
    key(Qt::Key_Up);
    key(Qt::Key_Left);
    expectCurrent(1, 1);
    grid().setRow(50);
    grid().setCol(20);
    log().clear();
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    expectCurrent(50, 20);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(40,0)", "KeyUp(40,0)", "KeyDown(39,0)", "KeyUp(39,0)"}));
}

TEST_F(Keyboard, DownOntoAPartlyHiddenRowScrollsByOneRow)
{
    startAt(15, 1);
    key(Qt::Key_Down);
    EXPECT_EQ(grid().TopRow(), 1) << "row 16 fits above the scroll bar";
    log().clear();
    key(Qt::Key_Down);
    expectCurrent(17, 1);
    EXPECT_EQ(grid().TopRow(), 2);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(40,0)", "Scroll", "RowColChange(16,1)", "KeyUp(40,0)"}));
    EXPECT_GT(markedTopEdge(17, 1), 10);
}

TEST_F(Keyboard, RightOntoAPartlyHiddenColumnScrollsByOneColumn)
{
    startAt(1, 5);
    key(Qt::Key_Right);
    expectCurrent(1, 6);
    EXPECT_EQ(grid().LeftCol(), 2);
    EXPECT_EQ(log().only({"Scroll"}).size(), 1);
}

TEST_F(Keyboard, UpFromTheTopShownRowScrollsUpByOneRow)
{
    vertical()->setValue(5);
    startAt(5, 1);
    key(Qt::Key_Up);
    expectCurrent(4, 1);
    EXPECT_EQ(grid().TopRow(), 4);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(38,0)", "Scroll", "RowColChange(5,1)", "KeyUp(38,0)"}));
    EXPECT_GT(markedTopEdge(4, 1), 10);
}

TEST_F(Keyboard, LeftFromTheFirstShownColumnScrollsLeftByOneColumn)
{
    grid().setLeftCol(3);
    key(Qt::Key_Left);
    expectCurrent(1, 2);
    EXPECT_EQ(grid().LeftCol(), 2);
}

TEST_F(Keyboard, ShiftArrowsActLikeThePlainArrows)
{
    startAt(2, 2);
    click(centre(4, 3), Qt::ShiftModifier);
    log().clear();
    key(Qt::Key_Down, Qt::ShiftModifier);
    expectCurrent(3, 2);
    expectSelection(2, 2, 4, 3);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(16,1)", "KeyDown(40,1)", "RowColChange(2,2)", "KeyUp(40,1)",
                                          "KeyUp(16,0)"}));
    EXPECT_EQ(centrePixel(4, 3), Black) << "the block stays selected";
}

TEST_F(Keyboard, InRowModeDownAndRightSelectTheNewRowButLeftDoesNot)
{
    grid().setSelectionMode(SelectionByRow);
    startAt(2, 2);
    key(Qt::Key_Down);
    expectSelection(3, 0, 3, 20);
    EXPECT_EQ(centrePixel(3, 5), Black);
    EXPECT_EQ(centrePixel(2, 5), White);
    grid().setRow1(9);
    key(Qt::Key_Left);
    EXPECT_EQ(grid().Row1(), 9);
    key(Qt::Key_Right);
    expectSelection(3, 0, 3, 20);
}

TEST_F(Keyboard, InColumnModeRightAndLeftSelectTheNewColumnButDownDoesNot)
{
    grid().setSelectionMode(SelectionByCol);
    startAt(2, 2);
    key(Qt::Key_Right);
    expectSelection(0, 3, 50, 3);
    EXPECT_EQ(centrePixel(5, 3), Black);
    key(Qt::Key_Left);
    expectSelection(0, 2, 50, 2);
    grid().setCol1(9);
    key(Qt::Key_Down);
    EXPECT_EQ(grid().Col1(), 9);
}

TEST_F(Keyboard, ArrowsCloseTheEditorWithoutAfterEdit)
{
    openEditor();
    QTest::keyClick(surface(), Qt::Key_Right);
    EXPECT_FALSE(editor()->isVisible());
    expectCurrent(1, 2);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(39,0)", "RowColChange(1,1)", "KeyUp(39,0)"}));
}

TEST_F(Keyboard, AnArrowThatMovesNothingStillClosesTheEditor)
{
    openEditor();
    QTest::keyClick(surface(), Qt::Key_Left);
    EXPECT_FALSE(editor()->isVisible());
    expectCurrent(1, 1);
    EXPECT_TRUE(log().only({"AfterEdit", "RowColChange"}).isEmpty());
}

TEST_F(Keyboard, PagingKeysActOnReleaseAndBringTheRowToTheTop)
{
    QTest::keyPress(surface(), Qt::Key_End);
    expectCurrent(1, 1);
    QTest::keyRelease(surface(), Qt::Key_End);
    expectCurrent(50, 1);
    EXPECT_EQ(grid().TopRow(), 50);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(35,0)", "Scroll", "KeyUp(35,0)", "RowColChange(1,1)"}));

    releaseKey(Qt::Key_Home);
    expectCurrent(1, 1);
    EXPECT_EQ(grid().TopRow(), 1);
    expectSelection(1, 1, 1, 1);
}

TEST_F(Keyboard, PageDownAndPageUpMoveByThePageRowCount)
{
    // Rows start at 17 + 16 (r - 1): the paint stops after row 18, so a
    // page is 16 rows.
    releaseKey(Qt::Key_PageDown);
    expectCurrent(17, 1);
    EXPECT_EQ(grid().TopRow(), 17);
    releaseKey(Qt::Key_PageUp);
    expectCurrent(1, 1);
    EXPECT_EQ(grid().TopRow(), 1);

    grid().setRow(45);
    releaseKey(Qt::Key_PageDown);
    expectCurrent(50, 1);
    grid().setRow(5);
    releaseKey(Qt::Key_PageUp);
    expectCurrent(1, 1);
}

TEST_F(Keyboard, TypingOpensTheEditorWithTheCharacter)
{
    key(Qt::Key_A);
    QApplication::processEvents();
    EXPECT_TRUE(editor()->isVisible());
    EXPECT_EQ(editor()->text(), "a");
    EXPECT_EQ(log().entries, QStringList({"KeyDown(65,0)", "KeyPress(97)", "BeforeEdit(1,1)", "KeyUp(65,0)"}));
}

TEST_F(Keyboard, TabOpensNothingOnAnOrdinaryColumn)
{
    key(Qt::Key_Tab);
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(log().entries, QStringList({"KeyDown(9,0)", "KeyPress(9)", "KeyUp(9,0)"}));
}

TEST_F(Keyboard, AnyKeyTogglesACheckmarkCell)
{
    grid().setColMask(1, TabulaControl::checkmark);
    grid().setTextMatrix(1, 1, "0");
    log().clear();
    key(Qt::Key_Space);
    EXPECT_EQ(grid().TextMatrix(1, 1), "1");
    EXPECT_EQ(log().entries, QStringList({"KeyDown(32,0)", "KeyPress(32)", "AfterEdit(1,1,1)", "KeyUp(32,0)"}));
    key(Qt::Key_Tab);
    EXPECT_EQ(grid().TextMatrix(1, 1), "0");
    key(Qt::Key_X);
    EXPECT_EQ(grid().TextMatrix(1, 1), "1");
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_GT(markedTopEdge(1, 1), 10) << "the redrawn cell keeps its mark";
}

TEST_F(Keyboard, ACheckmarkCellThatDisallowsEditingIgnoresKeys)
{
    grid().setColMask(1, TabulaControl::checkmark);
    grid().setTextMatrix(1, 1, "0");
    grid().setColAllowEdit(1, false);
    log().clear();
    key(Qt::Key_Space);
    EXPECT_EQ(grid().TextMatrix(1, 1), "0");
    EXPECT_TRUE(log().only({"AfterEdit"}).isEmpty());
}

TEST_F(Keyboard, ThePublicKeyDownMovesWithoutRaisingKeyDown)
{
    grid().KeyDown(40, 0);
    grid().KeyDown(39, 1);
    expectCurrent(2, 2);
    EXPECT_EQ(log().entries, QStringList({"RowColChange(1,1)", "RowColChange(2,1)"}));
}

namespace {

class PagingState : public TabulaTest::EngineFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setRows(10);
        QObject::connect(&events_, &TabulaControl::TabulaEvents::RowColChange, [this] { ++moves; });
    }
    int moves = 0;
};

}  // namespace

TEST_F(PagingState, WithoutAPageCountPagingMovesNothing)
{
    s().mRow = 4;
    for (int16_t pageKey : {34, 33}) {
        s().mPageRows = 0;
        g().picGrid_KeyUp(pageKey, 0);
        EXPECT_EQ(s().mRow, 4) << pageKey;
    }
    EXPECT_EQ(moves, 0);
}

TEST_F(PagingState, AnOverflowingPageLeavesTheRowUnchanged)
{
    s().mPageRows = INT32_MAX;
    s().mRow = 5;
    EXPECT_THROW(g().picGrid_KeyUp(34, 0), TabulaControl::detail::RuntimeError);
    EXPECT_EQ(s().mRow, 5);
    s().mPageRows = INT32_MIN + 2;
    EXPECT_THROW(g().picGrid_KeyUp(33, 0), TabulaControl::detail::RuntimeError);
    EXPECT_EQ(s().mRow, 5);
}

TEST_F(Keyboard, ArrowsCloseAnOpenDropDownList)
{
    grid().AddLookup(1, "Apple");
    grid().AddLookup(1, "Banana");
    clickCell(1, 1);
    key(Qt::Key_B);
    QWidget* list = child("ListForm");
    ASSERT_TRUE(list->isVisible());
    QTest::keyClick(surface(), Qt::Key_Down);
    EXPECT_FALSE(list->isVisible());
    expectCurrent(2, 1);
    EXPECT_TRUE(child("cmdLookup")->isVisible()) << "the drop-down button follows the current cell";
}
