#include "core/CellArray.h"

#include <TabulaControl/Tabula.h>

#include <gtest/gtest.h>

using TabulaControl::ComponentError;
using TabulaControl::detail::CellArray;

namespace {

// A store of rows 0..rows and columns 0..cols whose cell (r, c) holds "r,c".
CellArray filledStore(int16_t rows, int16_t cols)
{
    CellArray store;
    store.setCols(cols);
    store.setRows(rows);
    for (int16_t r = 0; r <= rows; ++r)
        for (int16_t c = 0; c <= cols; ++c)
            store.setText(r, c, QString("%1,%2").arg(r).arg(c));
    return store;
}

ComponentError storeError(const std::function<void()>& body)
{
    try {
        body();
    } catch (const ComponentError& e) {
        return e;
    }
    ADD_FAILURE() << "no error";
    return ComponentError({}, {});
}

}  // namespace

TEST(CellArray, NewStoreHoldsOneInitialisedCell)
{
    CellArray store;
    EXPECT_EQ(store.Rows(), 0);
    EXPECT_EQ(store.Cols(), 0);
    EXPECT_TRUE(store.FontBold(0, 0));
    EXPECT_EQ(store.FontSize(0, 0), 9);
    EXPECT_EQ(store.BackColor(0, 0), -1);
    EXPECT_EQ(store.ForeColor(0, 0), -1);
    EXPECT_EQ(store.FontName(0, 0), "");
}

TEST(CellArray, GrowingColsInitialisesOnlyNewCells)
{
    CellArray store = filledStore(2, 5);
    store.setFontSize(1, 5, 14);
    store.setCols(7);
    for (int16_t r = 0; r <= 2; ++r) {
        EXPECT_EQ(store.Text(r, 5), QString("%1,5").arg(r));
        EXPECT_EQ(store.Text(r, 6), "");
        EXPECT_EQ(store.FontBold(r, 7), r == 0) << "row " << r;
        EXPECT_EQ(store.FontSize(r, 6), 9);
    }
    EXPECT_EQ(store.FontSize(1, 5), 14);
}

TEST(CellArray, ShrinkThenGrowGivesFreshRecords)
{
    CellArray store = filledStore(4, 2);
    store.setBackColor(4, 1, 0xFF);
    store.setRows(2);
    EXPECT_EQ(store.Text(2, 1), "2,1");
    store.setRows(4);
    EXPECT_EQ(store.Text(4, 1), "");
    EXPECT_EQ(store.BackColor(4, 1), -1);
    EXPECT_EQ(store.Text(2, 2), "2,2");
}

TEST(CellArray, InitializeCellKeepsTextStyleValueAlignAndTag)
{
    CellArray store = filledStore(1, 1);
    store.setFontName(1, 1, "Courier");
    store.setFontBold(1, 1, true);
    store.setForeColor(1, 1, 255);
    store.setStyle(1, 1, 2);
    store.setValue(1, 1, -1);
    store.setTextAlignVertical(1, 1, 2);
    store.setTag(1, 1, "kept");
    store.InitializeCell(1, 1);
    EXPECT_EQ(store.FontName(1, 1), "");
    EXPECT_FALSE(store.FontBold(1, 1));
    EXPECT_EQ(store.ForeColor(1, 1), -1);
    EXPECT_EQ(store.Text(1, 1), "1,1");
    EXPECT_EQ(store.Style(1, 1), 2);
    EXPECT_EQ(store.Value(1, 1), -1);
    EXPECT_EQ(store.TextAlignVertical(1, 1), 2);
    EXPECT_EQ(store.Tag(1, 1), "kept");
}

TEST(CellArray, RemoveShiftsRowsUpAndLeavesLastTwoEqual)
{
    CellArray store = filledStore(4, 1);
    store.setTag(3, 1, "three");
    store.Remove(2);
    EXPECT_EQ(store.Rows(), 4);
    const QStringList expected = {"0,1", "1,1", "3,1", "4,1", "4,1"};
    for (int16_t r = 0; r <= 4; ++r)
        EXPECT_EQ(store.Text(r, 1), expected[r]) << "row " << r;
    EXPECT_EQ(store.Tag(2, 1), "three");
}

TEST(CellArray, RemoveOfRowZeroShiftsTheHeaderAway)
{
    CellArray store = filledStore(2, 1);
    store.Remove(0);
    EXPECT_EQ(store.Text(0, 1), "1,1");
    EXPECT_EQ(store.Text(1, 0), "2,0");
}

TEST(CellArray, RemoveOutsideTheRowsDoesNothing)
{
    CellArray store = filledStore(2, 1);
    store.Remove(3);
    EXPECT_EQ(store.Text(2, 1), "2,1");
    CellArray empty;
    empty.Remove(0);
    EXPECT_EQ(empty.Rows(), 0);
}

TEST(CellArray, ValueAndTagReadsAboveTheCountsAreEmpty)
{
    CellArray store = filledStore(2, 2);
    EXPECT_EQ(store.Value(3, 1), 0);
    EXPECT_EQ(store.Value(1, 3), 0);
    EXPECT_EQ(store.Tag(9, 9), "");
    EXPECT_EQ(storeError([&] { store.Value(-1, 1); }).Source, "TabulaControl.clsCellArray.Value");
}

TEST(CellArray, OutOfRangeAccessFailsWithItsOwnSource)
{
    CellArray store = filledStore(2, 2);
    struct Case {
        const char* source;
        std::function<void()> body;
    };
    const Case cases[] = {
        {"Text", [&] { store.Text(3, 1); }},
        {"Text", [&] { store.setText(1, 3, "x"); }},
        {"FontName", [&] { store.FontName(-1, 0); }},
        {"BackColor", [&] { store.setBackColor(5, 0, 1); }},
        {"Style", [&] { store.Style(0, -2); }},
        {"Tag", [&] { store.setTag(3, 3, "x"); }},
        {"Rows", [&] { store.setRows(-1); }},
        {"Cols", [&] { store.setCols(-5); }},
        {"InitializeCell", [&] { store.InitializeCell(3, 0); }},
        {"Remove", [&] { store.Remove(-1); }},
    };
    for (const Case& c : cases) {
        const ComponentError error = storeError(c.body);
        EXPECT_EQ(error.Number, -2147221404);
        EXPECT_EQ(error.Source, QString("TabulaControl.clsCellArray.%1").arg(c.source));
        EXPECT_TRUE(error.Description.startsWith("clsCellArray component failureat line ")) << qPrintable(error.Description);
    }
    EXPECT_EQ(store.Rows(), 2);
    EXPECT_EQ(store.Text(2, 2), "2,2");
}

TEST(CellArray, AResizeBeyondTheCellLimitFailsAndKeepsTheStore)
{
    CellArray store = filledStore(20000, 4);
    EXPECT_EQ(storeError([&] { store.setCols(32767); }).Source, "TabulaControl.clsCellArray.Cols");
    EXPECT_EQ(store.Cols(), 4);
    EXPECT_EQ(store.Text(20000, 4), "20000,4");
}

TEST(CellArray, FormatsAreSharedUntilACellChangesOne)
{
    CellArray store = filledStore(2, 2);
    EXPECT_EQ(&store.Format(1, 1), &store.Format(2, 2));
    store.setFontItalic(1, 1, true);
    EXPECT_NE(&store.Format(1, 1), &store.Format(2, 2));
    EXPECT_TRUE(store.FontItalic(1, 1));
    EXPECT_FALSE(store.FontItalic(2, 2));
    store.setFontItalic(1, 1, false);
    EXPECT_EQ(&store.Format(1, 1), &store.Format(2, 2));
}
