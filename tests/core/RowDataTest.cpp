#include "tests/support/GridFixture.h"

using TabulaTest::errorOf;

namespace {

class RowData : public TabulaTest::GridFixture {};

struct DateCase {
    const char* input;
    const char* stored;  // "" when the input is no date
};

class DateOnlyColumn : public RowData, public ::testing::WithParamInterface<DateCase> {};

}  // namespace

TEST_F(RowData, AddItemAppendsTabSeparatedFieldsValidatedByTheCurrentColumnsMaskUnlessTheHostCancels)
{
    grid().AddItem("a\tb\tc");
    EXPECT_EQ(grid().Rows(), 2);
    EXPECT_EQ(rowTexts(2), QStringList({"a", "b", "c", "", ""}));
    EXPECT_EQ(log().entries, QStringList({"BeforeAddRow", "AfterAddRow(2)"}));
    grid().AddItem("a\t\tc\t");
    EXPECT_EQ(rowTexts(3), QStringList({"a", "", "c", "", ""})) << "an empty last field stores nothing";
    grid().AddItem("");
    EXPECT_EQ(grid().Rows(), 4);
    EXPECT_EQ(rowTexts(4), QStringList({"", "", "", "", ""}));
    grid().setColMask(1, TabulaControl::DateOnly);
    grid().AddItem("3/7/2024\tnot a date");
    EXPECT_EQ(rowTexts(5).mid(0, 2), QStringList({"03/07/2024", ""}));
    grid().setCol(2);
    grid().AddItem("3/7/2024");
    EXPECT_EQ(grid().TextMatrix(6, 1), "3/7/2024");
    log().clear();
    log().onBeforeAddRow = [](bool& cancel) { cancel = true; };
    grid().AddItem("a");
    EXPECT_EQ(grid().Rows(), 6) << "a cancelled BeforeAddRow changes nothing";
    EXPECT_EQ(log().entries, QStringList({"BeforeAddRow"}));
}

TEST_F(RowData, TooManyFieldsFailAfterTheRowWasAddedAndEarlierFieldsStored)
{
    EXPECT_EQ(errorOf([&] { grid().AddItem("1\t2\t3\t4\t5\t6\t7"); }).Source, "TabulaControl.Tabula.AddItem");
    EXPECT_EQ(grid().Rows(), 2);
    EXPECT_EQ(rowTexts(2), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(log().entries, QStringList({"BeforeAddRow"}));
}

TEST_F(RowData, NewRowOfACheckmarkColumnHoldsZero)
{
    grid().setColMask(4, TabulaControl::checkmark);
    EXPECT_EQ(grid().TextMatrix(1, 4), "0");
    EXPECT_EQ(grid().TextMatrix(0, 4), "");
    grid().AddItem("x");
    EXPECT_EQ(grid().TextMatrix(2, 4), "0");
}

TEST_F(RowData, RemoveItemShiftsTextsButNotHeights)
{
    grid().setTextMatrix(1, 1, "row 1");
    grid().AddItem("row 2");
    grid().AddItem("row 3");
    grid().AddItem("row 4", 0x0000FF);
    grid().setRowHeight(2, 25);
    grid().setRowHeight(3, 35);
    grid().setRow(4);
    log().clear();
    grid().RemoveItem(2);
    EXPECT_EQ(grid().Rows(), 3);
    EXPECT_EQ(grid().TextMatrix(2, 1), "row 3");
    EXPECT_EQ(grid().TextMatrix(3, 1), "row 4");
    EXPECT_EQ(grid().RowHeight(2), 25);
    ASSERT_EQ(grid().TopRow(), 3);
    EXPECT_EQ(pixel(130, 30), 0xFF0000u) << "the row's own colour moves with its texts";
    EXPECT_EQ(grid().Row(), 3);
    EXPECT_EQ(log().entries, QStringList({"BeforeDeleteRow(2)", "Scroll", "AfterDeleteRow(2)"}))
        << "the bar's shorter range moves the view";
}

TEST_F(RowData, RemoveItemPastTheEndTakesTheLastRowOfRowZeroTheHeaderTextsAndTheHostMayCancel)
{
    grid().setRows(4);
    grid().setTextMatrix(0, 1, "caption");
    grid().setTextMatrix(1, 1, "first");
    grid().setTextMatrix(3, 1, "three");
    grid().RemoveItem(9);
    EXPECT_EQ(grid().Rows(), 3);
    EXPECT_EQ(grid().TextMatrix(3, 1), "three");
    grid().RemoveItem(0);
    EXPECT_EQ(grid().TextMatrix(0, 1), "first");
    log().clear();
    log().onBeforeDeleteRow = [](int32_t, bool& cancel) { cancel = true; };
    grid().RemoveItem(1);
    EXPECT_EQ(grid().Rows(), 2) << "a cancelled BeforeDeleteRow keeps the row";
    EXPECT_EQ(log().entries, QStringList({"BeforeDeleteRow(1)"}));
}

TEST_F(RowData, ClearKeepsTheHeaderRowAndColumns)
{
    grid().setRows(5);
    grid().setTextMatrix(0, 2, "caption");
    grid().setRow(3);
    log().clear();
    grid().Clear();
    EXPECT_EQ(grid().Rows(), 0);
    EXPECT_EQ(grid().Row(), 0);
    EXPECT_EQ(grid().Cols(), 5);
    EXPECT_EQ(grid().TextMatrix(0, 2), "caption");
    EXPECT_EQ(log().entries, QStringList({"Scroll"})) << "the view follows its bar back to the top";
    log().clear();
    grid().RemoveItem(1);
    EXPECT_TRUE(log().entries.isEmpty()) << "removing from an empty grid raises nothing";
    EXPECT_EQ(grid().Rows(), 0);
    grid().setRows(2);
    EXPECT_EQ(grid().TextMatrix(2, 1), "");
}

TEST_P(DateOnlyColumn, StoresRecognisedDatesAsMonthDayYear)
{
    grid().setColMask(2, TabulaControl::DateOnly);
    grid().setTextMatrix(1, 2, GetParam().input);
    EXPECT_EQ(grid().TextMatrix(1, 2), GetParam().stored) << GetParam().input;
}

INSTANTIATE_TEST_SUITE_P(Inputs, DateOnlyColumn,
                         ::testing::Values(DateCase{"3/7/2024", "03/07/2024"}, DateCase{"12/31/99", "12/31/1999"},
                                           DateCase{"1/2/05", "01/02/2005"}, DateCase{"2024-03-07", "03/07/2024"},
                                           DateCase{"03-07-2024", "03/07/2024"}, DateCase{"25/12/2024", "12/25/2024"},
                                           DateCase{"March 7, 2024", "03/07/2024"}, DateCase{"7 mar 2024", "03/07/2024"},
                                           DateCase{"Sep 30 2024", "09/30/2024"}, DateCase{" 2/29/2024 ", "02/29/2024"},
                                           DateCase{"2/29/2023", ""}, DateCase{"13/45/2000", ""}, DateCase{"hello", ""},
                                           DateCase{"", ""}, DateCase{"3/7", ""}, DateCase{"Smarch 7, 2024", ""},
                                           DateCase{"1/2/123", ""}, DateCase{"31/31/2020", ""},
                                           DateCase{"29 February 2000", "02/29/2000"}));

TEST_F(RowData, NonDateColumnsKeepTextAsGivenAndBadMasksAreIgnored)
{
    grid().setColMask(3, TabulaControl::NumericOnly);
    grid().setTextMatrix(1, 3, "abc");
    EXPECT_EQ(grid().TextMatrix(1, 3), "abc");
    for (int32_t bad : {7, -1}) {
        grid().setColMask(3, bad);
        EXPECT_EQ(grid().ColMask(3), TabulaControl::NumericOnly) << bad;
    }
}
