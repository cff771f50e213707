#include "tests/navigation/NavigationFixture.h"

#include <QLineEdit>

namespace {

class Robustness : public TabulaTest::NavigationFixture {};

}  // namespace

TEST_F(Robustness, TheEditorNeverCutsTheTextAlreadyInTheCell)
{
    const QString sixty(60, QChar('x'));
    grid().setTextMatrix(1, 1, sixty);
    QTest::mouseDClick(surface(), Qt::LeftButton, {}, centre(1, 1));
    ASSERT_TRUE(editor()->isVisible());
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(grid().TextMatrix(1, 1), sixty);
}

TEST_F(Robustness, TabInTheEditorMovesTheFocusOnAndCommits)
{
    QWidget form;
    QLineEdit next(&form);
    grid().setParent(&form);
    form.show();
    QApplication::setActiveWindow(&form);
    startAt(1, 1);
    key(Qt::Key_A);
    QApplication::processEvents();
    ASSERT_TRUE(editor()->hasFocus());
    QTest::keyClick(editor(), Qt::Key_B);
    QTest::keyClick(editor(), Qt::Key_Tab);
    QApplication::processEvents();
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(grid().TextMatrix(1, 1), "ab");
    EXPECT_TRUE(log().entries.contains("AfterEdit(1,1,ab)")) << log().entries.join(' ').toStdString();
    grid().setParent(nullptr);
}

// Each removal clamps the bar, whose handler makes the pixels the removal
// before still owes while the rows are going.
TEST_F(Robustness, TheViewFollowsItsScrollBarWhenRowsGoAway)
{
    grid().setRows(50);
    vertical()->setValue(50);
    grid().RemoveItem(50);
    grid().RemoveItem(1);
    EXPECT_EQ(grid().TopRow(), vertical()->value());
    const QImage shown = picture();
    grid().Refresh();
    EXPECT_EQ(picture(), shown);

    vertical()->setValue(30);
    grid().Clear();
    grid().AddItem("first");
    EXPECT_EQ(grid().TopRow(), 1);
    EXPECT_EQ(vertical()->value(), 1);
    EXPECT_NE(pixel(centre(1, 1).x(), centre(1, 1).y()), 0x808080u);
}

TEST_F(Robustness, ALongCellPaintsExactlyAsTheTextThatShowsOfIt)
{
    const QString tail = "tail end";
    for (int32_t align : {0, 2}) {
        grid().setColAlign(1, align);
        grid().setTextMatrix(1, 1, QString(300, 'w') + tail);
        const QImage shortCell = picture();
        grid().setTextMatrix(1, 1, QString(99000, 'w') + tail);
        EXPECT_EQ(picture(), shortCell) << "alignment " << align;
    }
}

TEST_F(Robustness, TypingOnTheLastRowOfAFullGridEditsWithoutAddingARow)
{
    auto errors = errorSources();
    grid().setAutoNewRow(true);
    grid().setRows(32767);
    grid().setRow(32767);
    key(Qt::Key_A);
    QApplication::processEvents();
    EXPECT_EQ(*errors, QStringList());
    EXPECT_EQ(grid().Rows(), 32767);
    EXPECT_TRUE(editor()->isVisible());
}

// A layout is skipped while nothing it reads has changed; these change what
// it reads past where a grid line per row or column would let it show.
TEST_F(Robustness, ShortRowsWithoutGridLinesStillBringTheScrollBarWhenRowsAreAdded)
{
    grid().setShowGrid(false);
    grid().setRows(63);
    for (int32_t row = 1; row <= 63; ++row)
        grid().setRowHeight(row, 4);
    ASSERT_FALSE(vertical()->isVisible());
    grid().AddItem("a");
    grid().AddItem("b");
    EXPECT_TRUE(vertical()->isVisible());
}

TEST_F(Robustness, AColumnPulledIntoViewByANegativeHeaderWidthMovesItsResizeZone)
{
    grid().setColWidth(0, -32768);
    grid().setColWidth(1, 32767);
    grid().setColWidth(2, 100);
    hover(QPoint(101, 8));
    drag(QPoint(101, 8), QPoint(150, 8));
    EXPECT_NE(grid().ColWidth(2), 100);
}
