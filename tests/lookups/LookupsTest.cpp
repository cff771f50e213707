#include "tests/support/GridFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

class Lookups : public TabulaTest::GridFixture {};

struct CellButton {
    const char* name;
    const char* objectName;
    std::function<void(TabulaControl::Tabula&, int32_t)> add;
    const char* clicked;  // the event a click raises in cell (4, 3)
};

class ColumnButton : public TabulaTest::GridFixture, public ::testing::WithParamInterface<CellButton> {};

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

TEST_P(ColumnButton, ShowsAtTheRightEndOfTheCurrentCellOfItsColumnOnlyAndAClickKeepsTheCell)
{
    const CellButton& c = GetParam();
    grid().setRows(5);
    c.add(grid(), 3);
    QWidget* button = child(c.objectName);
    grid().setCol(3);
    ASSERT_FALSE(button->isHidden());
    // Cell (1, 3) starts at x = 34 + 2 * 65, y = 17; the button is 19 wide.
    EXPECT_EQ(button->geometry(), QRect(164 + 64 - 19 + 1, 17 + 3, 19, 15 - 2));
    grid().setCol(2);
    EXPECT_TRUE(button->isHidden());
    moveTo(4, 3);
    log().clear();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(log().entries, QStringList{c.clicked});
    EXPECT_EQ(current(), "4,3");
}

INSTANTIATE_TEST_SUITE_P(
    Lookups, ColumnButton,
    ::testing::Values(
        CellButton{"lookup", "cmdLookup", [](auto& g, int32_t c) { g.AddLookup(c, "value"); }, "BeforeEdit(4,3)"},
        CellButton{"button", "cmdButton", [](auto& g, int32_t c) { g.AddButton(c); }, "BtnClick(4,3)"}),
    TabulaTest::caseName);

TEST_F(Lookups, RemovingButtonsOverrunsPastTheOnlyOneAndLookupsGoByValueOrByColumn)
{
    grid().AddButton(4);
    grid().RemoveButton(1);
    EXPECT_TRUE(grid().ColHasButton(4));
    grid().RemoveButton(4);
    EXPECT_FALSE(grid().ColHasButton(4));
    grid().AddButton(2);
    grid().AddButton(3);
    const auto error = TabulaTest::errorOf([&] { grid().RemoveButton(2); });
    EXPECT_EQ(error.Source, "TabulaControl.Tabula.RemoveButton");
    EXPECT_FALSE(grid().ColHasButton(2));
    EXPECT_TRUE(grid().ColHasButton(3));

    // A lookup value goes one at a time, the first of duplicates; a column goes whole.
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

// Short lists get ListBoxRows rows, long ones all their items.
TEST_F(DropDown, ButtonOpensTheListUnderItSizedByListBoxRowsAndASecondPressClosesIt)
{
    openByButton();
    ASSERT_TRUE(form()->isVisible());
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(list->currentRow(), 0);
    const QRect button(lookupButton->mapToGlobal(QPoint(0, 0)), lookupButton->size());
    EXPECT_EQ(form()->geometry().topLeft(), QPoint(button.left() - 64 + button.width() + 1, button.bottom() + 1));
    EXPECT_EQ(form()->width(), 64);
    const double perRow = list->font().pointSizeF() * 25;
    EXPECT_NEAR(list->height() * 15, 6 * perRow + 30, 15);
    EXPECT_EQ(log().entries, QStringList({"BeforeEdit(1,2)"}));
    openByButton();
    EXPECT_FALSE(form()->isVisible());
    for (int i = 0; i < 7; ++i)
        grid().AddLookup(2, QString("extra %1").arg(i));
    openByButton();
    EXPECT_NEAR(list->height() * 15, 10 * perRow + 30, 15);
}

TEST_F(DropDown, TheCellTextOrATypedKeyChoosesTheItemWhichEnterOrAReleasePicksAsTextOrItemData)
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

    QTest::keyClick(surface(), Qt::Key_B);
    ASSERT_TRUE(form()->isVisible());
    EXPECT_EQ(list->currentRow(), 1) << "a typed key opens the list at its first match";
    QTest::keyClick(list, Qt::Key_Escape);

    // Item data is found by the exact value and written instead of it when asked.
    grid().AddLookup(2, "X", 42);
    EXPECT_EQ(grid().LookupItemData(2, "X").toInt(), 42);
    EXPECT_EQ(grid().LookupItemData(2, "x").toInt(), -1);
    EXPECT_EQ(grid().LookupItemData(3, "X").toInt(), -1);
    EXPECT_FALSE(grid().LookupItemData(2, "Apple").isValid());
    grid().setUseItemData(true);
    openByButton();
    list->setCurrentRow(3);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(grid().Text(), "42");
}

// Offscreen, the list's window is activated at the next turn of the event
// loop: until then its focus is late, and a tick of Timer1 checks on it.
TEST_F(DropDown, ClosesUnpickedOnceTheFocusIsElsewhereEvenIfItNeverArrived)
{
    QWidget otherWindow;
    new QLineEdit(&otherWindow);
    otherWindow.show();
    QApplication::processEvents();
    grid().setText("banana");
    const auto stillOpenAfter = [this](const std::function<void()>& whileLate) {
        if (form()->isVisible())
            QTest::keyClick(list, Qt::Key_Escape);
        QApplication::setActiveWindow(&grid());
        openByButton();
        EXPECT_TRUE(form()->isVisible() && !list->hasFocus());
        whileLate();
        QMetaObject::invokeMethod(form()->findChild<QTimer*>("Timer1"), "timeout");
        QTest::qWait(20);
        return form()->isVisible();
    };
    EXPECT_FALSE(stillOpenAfter([&] { QApplication::setActiveWindow(&otherWindow); })) << "another window activated";
    EXPECT_FALSE(stillOpenAfter([this] { surface()->setFocus(); })) << "a widget outside the list focused";
    EXPECT_TRUE(stillOpenAfter([] {})) << "a late focus alone";
    EXPECT_EQ(grid().Text(), "banana");
    QApplication::setActiveWindow(&grid());
    QTest::qWait(20);
    EXPECT_FALSE(form()->isVisible()) << "leaving for the grid's window closes it";
}
