#include "tests/support/GridFixture.h"

#include <QApplication>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTimer>

using TabulaControl::ComponentError;
using TabulaTest::errorOf;

namespace {

class RowsCols : public TabulaTest::GridFixture {
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        grid().setRows(10);
        log().clear();
    }
};

}  // namespace

TEST_F(RowsCols, NewControlHasOneRowFiveColumnsAndTheCurrentCellAtOneOne)
{
    TabulaControl::Tabula fresh;
    EXPECT_EQ(fresh.Rows(), 1);
    EXPECT_EQ(fresh.Cols(), 5);
    EXPECT_EQ(fresh.Row(), 1);
    EXPECT_EQ(fresh.Col(), 1);
    EXPECT_EQ(fresh.Row1(), 1);
    EXPECT_EQ(fresh.Col1(), 1);
    EXPECT_EQ(fresh.Row2(), 1);
    EXPECT_EQ(fresh.Col2(), 1);
    EXPECT_EQ(fresh.Text(), "");
    EXPECT_EQ(fresh.ColWidth(0), 32);
    EXPECT_EQ(fresh.ColWidth(5), 64);
    EXPECT_EQ(fresh.RowHeight(1), 15);
    EXPECT_TRUE(fresh.AutoRedraw());
}

TEST_F(RowsCols, RowClampsAboveButNotBelow)
{
    grid().setRow(99);
    EXPECT_EQ(grid().Row(), 10);
    grid().setRow(-5);
    EXPECT_EQ(grid().Row(), -5);
}

TEST_F(RowsCols, RowRaisesRowColChangeWithTheOldCellOnlyWhenItMoves)
{
    grid().setCol(3);
    log().clear();
    grid().setRow(4);
    grid().setRow(4);
    grid().setRow(2);
    EXPECT_EQ(log().only({"RowColChange"}), QStringList({"RowColChange(1,3)", "RowColChange(4,3)"}));
}

TEST_F(RowsCols, ColClampsToColsAndRaisesRowColChange)
{
    grid().setCol(9);
    EXPECT_EQ(grid().Col(), 5);
    grid().setCol(5);
    EXPECT_EQ(log().only({"RowColChange"}), QStringList({"RowColChange(1,1)"}));
}

TEST_F(RowsCols, ShrinkingRowsBelowTheCurrentRowMovesItQuietly)
{
    grid().setRow(7);
    log().clear();
    grid().setRows(3);
    EXPECT_EQ(grid().Row(), 3);
    EXPECT_EQ(grid().Row1(), 3);
    EXPECT_EQ(grid().Row2(), 3);
    EXPECT_TRUE(log().only({"RowColChange"}).isEmpty());
}

TEST_F(RowsCols, ShrinkingColsClampsTheCurrentColumnAndTheSelection)
{
    grid().setCol(5);
    grid().setCols(2);
    EXPECT_EQ(grid().Col(), 2);
    EXPECT_EQ(grid().Col1(), 2);
    EXPECT_EQ(grid().Col2(), 2);
}

TEST_F(RowsCols, ColWidthMinusOneStopsOneColumnShort)
{
    grid().setColWidth(-1, 80);
    for (int32_t c = 0; c <= 4; ++c)
        EXPECT_EQ(grid().ColWidth(c), 80) << "column " << c;
    EXPECT_EQ(grid().ColWidth(5), 64);
}

TEST_F(RowsCols, AddingColumnsResetsEveryRowHeight)
{
    grid().setRowHeight(2, 30);
    grid().setRowHeight(0, 22);
    grid().setCols(5);
    EXPECT_EQ(grid().RowHeight(2), 30);
    grid().setCols(7);
    for (int32_t r = 0; r <= 10; ++r)
        EXPECT_EQ(grid().RowHeight(r), 15) << "row " << r;
    EXPECT_EQ(grid().ColWidth(7), 64);
}

TEST_F(RowsCols, RemovingColumnsKeepsRowHeights)
{
    grid().setRowHeight(2, 30);
    grid().setCols(3);
    EXPECT_EQ(grid().RowHeight(2), 30);
}

TEST_F(RowsCols, ColAlignReadsZeroWhateverWasStored)
{
    grid().setColAlign(2, 1);
    EXPECT_EQ(grid().ColAlign(2), 0);
    grid().setColAlign(2, 5);
    EXPECT_EQ(grid().ColAlign(2), 0);
    EXPECT_EQ(errorOf([&] { grid().ColAlign(9); }).Source, "TabulaControl.Tabula.ColAlign");
}

TEST_F(RowsCols, RowEmptyLooksAtTrimmedDataColumnsOnly)
{
    grid().setTextMatrix(1, 3, "   ");
    grid().setTextMatrix(2, 0, "header only");
    grid().setTextMatrix(3, 5, " x ");
    EXPECT_TRUE(grid().RowEmpty(1).toBool());
    EXPECT_TRUE(grid().RowEmpty(2).toBool());
    EXPECT_FALSE(grid().RowEmpty(3).toBool());
    EXPECT_EQ(grid().RowEmpty(3).typeId(), QMetaType::Bool);
}

TEST_F(RowsCols, TextAndTextMatrixShareTheCurrentCell)
{
    grid().setRow(2);
    grid().setCol(3);
    grid().setText("hello");
    EXPECT_EQ(grid().TextMatrix(2, 3), "hello");
    grid().setTextMatrix(2, 3, "again");
    EXPECT_EQ(grid().Text(), "again");
}

TEST_F(RowsCols, CellTagAndRowBookmarkKeepHostValues)
{
    grid().setCellTag(2, 2, "tag");
    grid().setRowBookmark(4, QVariant(42));
    EXPECT_EQ(grid().CellTag(2, 2), "tag");
    EXPECT_EQ(grid().CellTag(50, 2), "");
    EXPECT_EQ(grid().RowBookmark(4).toInt(), 42);
    EXPECT_FALSE(grid().RowBookmark(3).isValid());
}

TEST_F(RowsCols, OutOfRangeIndexesFailWithTheMembersSource)
{
    struct Case {
        const char* member;
        std::function<void()> body;
    };
    const Case cases[] = {
        {"TextMatrix", [&] { grid().TextMatrix(11, 1); }},
        {"TextMatrix", [&] { grid().setTextMatrix(1, 6, "x"); }},
        {"ColWidth", [&] { grid().ColWidth(6); }},
        {"ColWidth", [&] { grid().setColWidth(-2, 10); }},
        {"RowHeight", [&] { grid().RowHeight(-1); }},
        {"RowBookmark", [&] { grid().setRowBookmark(11, 1); }},
        {"RowEmpty", [&] { grid().RowEmpty(12); }},
        {"CellTag", [&] { grid().setCellTag(0, 7, "x"); }},
        {"Text", [&] {
             grid().setRow(-5);
             grid().Text();
         }},
    };
    for (const Case& c : cases) {
        const ComponentError error = errorOf(c.body);
        EXPECT_EQ(error.Number, -2147221404);
        EXPECT_EQ(error.Source, QString("TabulaControl.Tabula.%1").arg(c.member));
        EXPECT_TRUE(error.Description.contains(QRegularExpression("^Tabula component failureat line \\d+$")))
            << qPrintable(error.Description);
    }
}

TEST_F(RowsCols, SixteenBitOverflowIsAnErrorAndChangesNothing)
{
    EXPECT_EQ(errorOf([&] { grid().setRows(40000); }).Source, "TabulaControl.Tabula.Rows");
    EXPECT_EQ(errorOf([&] { grid().setCols(32768); }).Source, "TabulaControl.Tabula.Cols");
    EXPECT_EQ(errorOf([&] { grid().setRowHeight(1, 70000); }).Source, "TabulaControl.Tabula.RowHeight");
    EXPECT_EQ(errorOf([&] { grid().setColWidth(-1, -40000); }).Source, "TabulaControl.Tabula.ColWidth");
    EXPECT_EQ(grid().Rows(), 10);
    EXPECT_EQ(grid().Cols(), 5);
    EXPECT_EQ(grid().RowHeight(1), 15);
    EXPECT_EQ(grid().ColWidth(0), 32);
}

TEST_F(RowsCols, NegativeCountsFailInsideTheArrays)
{
    EXPECT_EQ(errorOf([&] { grid().setRows(-1); }).Source, "TabulaControl.Tabula.Rows");
    EXPECT_EQ(grid().Rows(), 10);
}

TEST_F(RowsCols, RowsMaximumOfTheVerticalBarFollowsTheCount)
{
    auto* bar = grid().findChild<QScrollBar*>("scrVertical");
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->maximum(), 10);
    grid().setRows(25);
    EXPECT_EQ(bar->maximum(), 25);
    auto* hbar = grid().findChild<QScrollBar*>("scrHorizontal");
    grid().setCols(8);
    EXPECT_EQ(hbar->maximum(), 8);
}

TEST_F(RowsCols, ChildControlsCarryTheirNames)
{
    for (const char* name : {"picGrid", "txtEdit", "scrHorizontal", "scrVertical", "cmdButton", "cmdLookup", "picSizer"})
        EXPECT_NE(grid().findChild<QWidget*>(name), nullptr) << name;
}

TEST_F(RowsCols, ResizeLaysOutScrollBarsAndSurface)
{
    grid().resize(300, 200);
    QApplication::processEvents();
    EXPECT_EQ(grid().findChild<QWidget*>("scrHorizontal")->geometry(), QRect(2, 179, 277, 18));
    EXPECT_EQ(grid().findChild<QWidget*>("scrVertical")->geometry(), QRect(279, 2, 18, 177));
    EXPECT_EQ(grid().findChild<QWidget*>("picGrid")->geometry(), QRect(2, 2, 295, 195));
    EXPECT_EQ(picture().size(), QSize(295, 195));
    EXPECT_EQ(log().only({"Resize"}), QStringList({"Resize"}));
}

TEST_F(RowsCols, AboutBoxIsModalAndClosesWithOk)
{
    QString shown;
    QTimer::singleShot(0, [&] {
        QWidget* box = QApplication::activeModalWidget();
        ASSERT_NE(box, nullptr);
        shown = box->objectName();
        box->close();
    });
    grid().ShowAboutBox();
    EXPECT_EQ(shown, "AboutBox");
}
