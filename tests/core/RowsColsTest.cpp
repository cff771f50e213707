#include "tests/support/GridFixture.h"

#include <QApplication>
#include <QTimer>

namespace {

class RowsCols : public TabulaTest::WithRows<TabulaTest::GridFixture, 10> {};

TEST_F(RowsCols, RowAndColClampAboveAndRaiseRowColChangeWithTheOldCellOnlyWhenTheyMoveButShrinkingMovesThemQuietly)
{
    grid().setCol(9);
    EXPECT_EQ(grid().Col(), 5);
    grid().setCol(5);
    grid().setRow(4);
    grid().setRow(4);
    grid().setRow(99);
    EXPECT_EQ(grid().Row(), 10);
    grid().setRow(-5);
    EXPECT_EQ(grid().Row(), -5) << "no clamp below";
    EXPECT_EQ(log().only({"RowColChange"}),
              QStringList({"RowColChange(1,1)", "RowColChange(1,5)", "RowColChange(4,5)", "RowColChange(10,5)"}));
    moveTo(7, 5);
    log().clear();
    grid().setRows(3);
    grid().setCols(2);
    EXPECT_EQ(where(), "3,2 in 3,2:3,2") << "shrinking past the current cell moves it and the selection";
    EXPECT_TRUE(log().only({"RowColChange"}).isEmpty());
}

TEST_F(RowsCols, ColWidthMinusOneStopsOneColumnShort)
{
    grid().setColWidth(-1, 80);
    for (int32_t c = 0; c <= 4; ++c)
        EXPECT_EQ(grid().ColWidth(c), 80) << "column " << c;
    EXPECT_EQ(grid().ColWidth(5), 64);
}

TEST_F(RowsCols, AddingColumnsKeepsTheTextsAndResetsEveryRowHeightAndRemovingThemDoesNot)
{
    grid().setRowHeight(2, 30);
    grid().setRowHeight(0, 22);
    grid().setTextMatrix(2, 2, "kept");
    grid().setTextMatrix(0, 3, "dropped");
    grid().setCols(3);
    EXPECT_EQ(grid().RowHeight(2), 30);
    grid().setCols(2);
    grid().setCols(7);
    for (int32_t r = 0; r <= 10; ++r)
        EXPECT_EQ(grid().RowHeight(r), 15) << "row " << r;
    EXPECT_EQ(grid().ColWidth(7), 64);
    EXPECT_EQ(grid().TextMatrix(2, 2), "kept");
    EXPECT_EQ(grid().TextMatrix(0, 3), "") << "a column dropped and added again comes back empty";
}

TEST_F(RowsCols, ColAlignReadsZeroWhateverWasStored)
{
    for (int32_t align : {1, 5}) {
        grid().setColAlign(2, align);
        EXPECT_EQ(grid().ColAlign(2), 0) << align;
    }
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

TEST_F(RowsCols, TextSharesTheCurrentCellAndCellTagAndRowBookmarkKeepHostValues)
{
    moveTo(2, 3);
    grid().setText("hello");
    EXPECT_EQ(grid().TextMatrix(2, 3), "hello");
    grid().setTextMatrix(2, 3, "again");
    EXPECT_EQ(grid().Text(), "again");
    grid().setCellTag(2, 2, "tag");
    grid().setRowBookmark(4, QVariant(42));
    EXPECT_EQ(grid().CellTag(2, 2), "tag");
    EXPECT_EQ(grid().CellTag(50, 2), "");
    EXPECT_EQ(grid().RowBookmark(4).toInt(), 42);
    EXPECT_FALSE(grid().RowBookmark(3).isValid());
}

TEST_F(RowsCols, ResizeLaysOutScrollBarsAndSurface)
{
    grid().resize(300, 200);
    QApplication::processEvents();
    EXPECT_EQ(child("scrHorizontal")->geometry(), QRect(2, 179, 277, 18));
    EXPECT_EQ(child("scrVertical")->geometry(), QRect(279, 2, 18, 177));
    EXPECT_EQ(surface()->geometry(), QRect(2, 2, 295, 195));
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

}  // namespace
