#include "tests/support/GridFixture.h"

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace {

class Lookups : public TabulaTest::GridFixture {};

class DropDown : public TabulaTest::GridFixture {
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        grid().setRows(3);
        for (const char* value : {"Apple", "banana", "Cherry"})
            grid().AddLookup(2, value);
        grid().setCol(2);
        lookupButton = grid().findChild<QPushButton*>("cmdLookup");
        list = grid().findChild<QListWidget*>("List1");
        ASSERT_NE(lookupButton, nullptr);
        ASSERT_NE(list, nullptr);
        log().clear();
    }
    QWidget* form() { return list->window(); }
    void openByButton() { QTest::mouseClick(lookupButton, Qt::LeftButton); }

    QPushButton* lookupButton = nullptr;
    QListWidget* list = nullptr;
};

}  // namespace

TEST_F(Lookups, RemovingTakesTheFirstOfDuplicateValuesOrOneWholeColumn)
{
    grid().AddLookup(1, "x");
    grid().AddLookup(2, "A");
    grid().AddLookup(2, "A");
    grid().AddLookup(3, "z");
    grid().RemoveLookupValue(2, "A");
    EXPECT_TRUE(grid().ColHasLookup(2));
    grid().RemoveLookupValue(2, "A");
    EXPECT_FALSE(grid().ColHasLookup(2));
    grid().RemoveLookupValue(2, "A");
    grid().AddLookup(2, "w");
    grid().RemoveLookup(2);
    EXPECT_FALSE(grid().ColHasLookup(2));
    EXPECT_TRUE(grid().ColHasLookup(1));
    EXPECT_TRUE(grid().ColHasLookup(3));
}

TEST_F(Lookups, ItemDataIsFoundByExactValue)
{
    grid().AddLookup(2, "A", 7);
    grid().AddLookup(2, "B");
    EXPECT_EQ(grid().LookupItemData(2, "A").toInt(), 7);
    EXPECT_EQ(grid().LookupItemData(2, "a").toInt(), -1);
    EXPECT_EQ(grid().LookupItemData(3, "A").toInt(), -1);
    EXPECT_FALSE(grid().LookupItemData(2, "B").isValid());
}

TEST_F(DropDown, ButtonSitsAtTheRightEndOfTheCurrentCellOfALookupColumn)
{
    ASSERT_FALSE(lookupButton->isHidden());
    // Cell (1, 2) starts at x = 34 + 65, y = 17.
    EXPECT_EQ(lookupButton->geometry(), QRect(99 + 64 - 19 + 1, 20, 19, 13));
    grid().setCol(1);
    EXPECT_TRUE(lookupButton->isHidden());
}

TEST_F(DropDown, ButtonOpensTheListUnderItAndASecondPressClosesIt)
{
    openByButton();
    ASSERT_TRUE(form()->isVisible());
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(list->currentRow(), 0);
    const QRect button(lookupButton->mapToGlobal(QPoint(0, 0)), lookupButton->size());
    EXPECT_EQ(form()->geometry().topLeft(), QPoint(button.left() - 64 + button.width() + 1, button.bottom() + 1));
    EXPECT_EQ(form()->width(), 64);
    EXPECT_EQ(log().entries, QStringList({"BeforeEdit(1,2)"}));
    openByButton();
    EXPECT_FALSE(form()->isVisible());
}

TEST_F(DropDown, ShortListsGetListBoxRowsRowsAndLongOnesAllTheirItems)
{
    openByButton();
    const double perRow = list->font().pointSizeF() * 25;
    EXPECT_NEAR(list->height() * 15, 6 * perRow + 30, 15);
    QTest::keyClick(list, Qt::Key_Escape);
    for (int i = 0; i < 7; ++i)
        grid().AddLookup(2, QString("extra %1").arg(i));
    openByButton();
    EXPECT_NEAR(list->height() * 15, 10 * perRow + 30, 15);
}

TEST_F(DropDown, EnterOrAReleaseOnAnItemPicksItAndEscapeClosesWithoutChangingTheCell)
{
    grid().setText("cherry");
    openByButton();
    EXPECT_EQ(list->currentRow(), 2);
    QTest::keyClick(list, Qt::Key_Up);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_FALSE(form()->isVisible());
    EXPECT_EQ(grid().Text(), "banana");
    EXPECT_EQ(log().entries.last(), "AfterEdit(1,2,banana)");

    grid().setText("Apple");
    openByButton();
    log().clear();
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(form()->isVisible());
    EXPECT_EQ(grid().Text(), "Apple");
    EXPECT_TRUE(log().entries.isEmpty());

    openByButton();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
    EXPECT_EQ(grid().Text(), "Cherry");
}

TEST_F(DropDown, ItemDataIsWrittenWhenAsked)
{
    grid().AddLookup(2, "X", 42);
    grid().setUseItemData(true);
    openByButton();
    list->setCurrentRow(3);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(grid().Text(), "42");
}

TEST_F(DropDown, TypedKeyOpensTheListAtTheFirstMatch)
{
    QTest::keyClick(surface(), Qt::Key_B);
    ASSERT_TRUE(form()->isVisible());
    EXPECT_EQ(list->currentRow(), 1);
}
