#include "tests/support/GridFixture.h"

namespace {

struct DateCase {
    const char* input;
    const char* stored;  // "" when the input is no date
};

class DateOnlyColumn : public TabulaTest::GridFixture, public ::testing::WithParamInterface<DateCase> {};

}  // namespace

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

class Masks : public TabulaTest::GridFixture {};

TEST_F(Masks, NonDateColumnsKeepTextAsGivenAndBadMasksAreIgnored)
{
    grid().setColMask(3, TabulaControl::NumericOnly);
    grid().setTextMatrix(1, 3, "abc");
    EXPECT_EQ(grid().TextMatrix(1, 3), "abc");
    grid().setColMask(3, 7);
    EXPECT_EQ(grid().ColMask(3), TabulaControl::NumericOnly);
    grid().setColMask(3, -1);
    EXPECT_EQ(grid().ColMask(3), TabulaControl::NumericOnly);
}
