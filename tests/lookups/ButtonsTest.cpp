#include "tests/support/GridFixture.h"

#include <QPushButton>
#include <QTest>

namespace {

class ColumnButtons : public TabulaTest::GridFixture {
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        grid().setRows(5);
        button = grid().findChild<QPushButton*>("cmdButton");
        ASSERT_NE(button, nullptr);
    }
    QPushButton* button = nullptr;
};

}  // namespace

TEST_F(ColumnButtons, ShowAtTheRightEndOfTheCurrentCellOfTheirColumn)
{
    grid().AddButton(3);
    EXPECT_TRUE(grid().ColHasButton(3));
    EXPECT_FALSE(grid().ColHasButton(2));
    grid().setCol(3);
    ASSERT_FALSE(button->isHidden());
    // Cell (1, 3) starts at x = 34 + 2 * 65, y = 17; the button is 19 wide.
    EXPECT_EQ(button->geometry(), QRect(164 + 64 - 19 + 1, 17 + 3, 19, 15 - 2));
    grid().setCol(2);
    EXPECT_TRUE(button->isHidden());
    grid().setCol(3);
    EXPECT_FALSE(button->isHidden());
}

TEST_F(ColumnButtons, ClickRaisesBtnClickWithTheCurrentCell)
{
    grid().AddButton(2);
    moveTo(4, 2);
    log().clear();
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(log().entries, QStringList({"BtnClick(4,2)"}));
    EXPECT_EQ(grid().Row(), 4);
}

TEST_F(ColumnButtons, RemovingTheOnlyButtonOrAMissingOneSucceedsButOneOfSeveralRunsPastTheEnd)
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
}
