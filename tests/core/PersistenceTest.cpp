#include "tests/support/GridFixture.h"

using TabulaControl::MemoryPropertyBag;
using TabulaControl::Tabula;

namespace {

class Persistence : public TabulaTest::GridFixture {};

}  // namespace

TEST_F(Persistence, AnEmptyStoreGivesTenByTenWithTheCurrentCellAtOneOne)
{
    const MemoryPropertyBag empty;
    Tabula loaded(empty);
    EXPECT_EQ(loaded.Rows(), 10);
    EXPECT_EQ(loaded.Cols(), 10);
    EXPECT_EQ(loaded.Row(), 1);
    EXPECT_EQ(loaded.Col(), 1);
    EXPECT_EQ(loaded.GridLineColor(), 0x8000000Fu);
    EXPECT_EQ(loaded.BackColorFixed(), 0x8000000Fu);
    EXPECT_TRUE(loaded.AutoRedraw());
    EXPECT_FALSE(loaded.FontFixed()->Bold) << "a fixed font saved without bold is not made bold";
    EXPECT_NE(loaded.Font(), loaded.FontFixed());
}

TEST_F(Persistence, DefaultsAreNotStoredButTheAlwaysWrittenFlagsAre)
{
    grid().setRows(10);
    grid().setCols(10);
    MemoryPropertyBag bag;
    grid().WriteProperties(bag);
    for (const char* name : {"Rows", "Cols", "Row", "Col", "BorderStyle", "SelectText", "FormatString"})
        EXPECT_FALSE(bag.values.contains(name)) << name;
    for (const char* name : {"ShowGrid", "GridSolid", "GridLineColor", "Redraw"})
        EXPECT_TRUE(bag.values.contains(name)) << name;
    EXPECT_EQ(bag.values.value("GridLineColor").toUInt(), 0xC0C0C0u);
}

TEST_F(Persistence, SettingsSurviveASaveAndALoad)
{
    grid().setRows(4);
    grid().setCols(6);
    grid().setRow(3);
    grid().setShowGrid(false);
    grid().setBorderStyle(TabulaControl::ThinInset);
    grid().setSelectionMode(TabulaControl::SelectionByRow);
    grid().setBackColorAlt(0x00FF00);
    grid().setUseBackColorAlt(true);
    grid().setListBoxRows(9);
    grid().setFormatString("<Name|>Price");
    auto font = std::make_shared<TabulaControl::StdFont>(*grid().Font());
    font->Italic = true;
    grid().setFont(font);
    MemoryPropertyBag bag;
    grid().WriteProperties(bag);

    Tabula loaded(bag);
    MemoryPropertyBag again;
    loaded.WriteProperties(again);
    EXPECT_EQ(again.values, bag.values);
    EXPECT_EQ(loaded.Row(), 3);
    EXPECT_TRUE(loaded.Font()->Italic);
    EXPECT_EQ(loaded.TextMatrix(0, 2), "Price");
    EXPECT_EQ(loaded.ColWidth(2), grid().ColWidth(2));
}

TEST_F(Persistence, LookupValuesAreSavedAtDesignTimeOnly)
{
    grid().AddLookup(3, "Red");
    grid().AddLookup(3, "Blue", 7);
    MemoryPropertyBag atRunTime;
    grid().WriteProperties(atRunTime);
    EXPECT_FALSE(atRunTime.values.contains("Count"));

    grid().setUserMode(false);
    MemoryPropertyBag atDesignTime;
    grid().WriteProperties(atDesignTime);
    EXPECT_EQ(atDesignTime.values.value("Count").toInt(), 2);
    EXPECT_EQ(atDesignTime.values.value("1Column").toInt(), 3);
    EXPECT_EQ(atDesignTime.values.value("2Value").toString(), "Blue");

    Tabula loaded(atDesignTime);
    EXPECT_TRUE(loaded.ColHasLookup(3));
    EXPECT_FALSE(loaded.LookupItemData(3, "Blue").isValid()) << "item data is not saved";
}

TEST_F(Persistence, WrongTypesOrAMissingLookupColumnFailWithTheReadError)
{
    const QVariantMap stores[] = {{{"Rows", "many"}}, {{"ShowGrid", "perhaps"}}, {{"Font", 12}}, {{"Cols", 70000}},
                                  {{"Count", 2}, {"1Column", 3}, {"1Value", "A"}, {"2Value", "B"}}};
    for (const QVariantMap& values : stores) {
        MemoryPropertyBag bag;
        bag.values = values;
        const auto error = TabulaTest::errorOf([&] { Tabula loaded(bag); });
        EXPECT_EQ(error.Source, "TabulaControl.Tabula.UserControl_ReadProperties") << values.firstKey().toStdString();
    }
}
