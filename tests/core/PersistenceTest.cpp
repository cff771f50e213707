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
