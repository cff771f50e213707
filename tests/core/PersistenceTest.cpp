#include "tests/support/GridFixture.h"

#include <TabulaControl/SettingsPropertyBag.h>

#include <QFile>
#include <QTemporaryDir>

using TabulaControl::MemoryPropertyBag;
using TabulaControl::SettingsPropertyBag;
using TabulaControl::StdFont;
using TabulaControl::Tabula;

namespace {

QVariantMap saved(const Tabula& grid)
{
    MemoryPropertyBag bag;
    grid.WriteProperties(bag);
    return bag.values;
}

class Persistence : public TabulaTest::GridFixture {};

class SettingsFile : public TabulaTest::GridFixture {
protected:
    QString path() const { return dir_.filePath("grid.ini"); }
    QString fileText() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    void writeFile(const QByteArray& text) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QTemporaryDir dir_;
};

TEST_F(Persistence, AnEmptyStoreGivesTenByTenWithTheCurrentCellAtOneOne)
{
    const MemoryPropertyBag empty;
    Tabula loaded(empty);
    EXPECT_EQ(QString("%1x%2 at %3").arg(loaded.Rows()).arg(loaded.Cols()).arg(TabulaTest::whereIn(loaded)),
              "10x10 at 1,1 in 1,1:1,1");
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
    const QVariantMap values = saved(grid());
    for (const char* name : {"Rows", "Cols", "Row", "Col", "BorderStyle", "SelectText", "FormatString"})
        EXPECT_FALSE(values.contains(name)) << name;
    for (const char* name : {"ShowGrid", "GridSolid", "GridLineColor", "Redraw"})
        EXPECT_TRUE(values.contains(name)) << name;
    EXPECT_EQ(values.value("GridLineColor").toUInt(), 0xC0C0C0u);
}

TEST_F(Persistence, LookupValuesAreSavedAtDesignTimeOnly)
{
    grid().AddLookup(3, "Red");
    grid().AddLookup(3, "Blue", 7);
    EXPECT_FALSE(saved(grid()).contains("Count"));

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

class SettingsFormat : public SettingsFile, public ::testing::WithParamInterface<QSettings::Format> {};

TEST_P(SettingsFormat, EverySavedPropertySurvivesARoundTripThroughAFile)
{
    grid().setUserMode(false);
    grid().setRows(7);
    grid().setCols(4);
    grid().setRow(3);
    grid().setFormatString("<Name, first|^Qty|>Price");
    grid().setBackColor(0x332211);
    grid().setForeColorFixed(0x80000008);
    grid().setBackColorAlt(0x00FF00);
    grid().setUseBackColorAlt(true);
    grid().setShowGrid(false);
    grid().setBorderStyle(TabulaControl::ThinInset);
    grid().setSelectionMode(TabulaControl::SelectionByRow);
    grid().setListBoxRows(9);
    grid().setGridLineColor(0x8000000F);
    const auto font = std::make_shared<StdFont>(StdFont{"DejaVu Sans", 10.5f, true, true, true});
    grid().setFont(font);
    grid().setFontEdit(font);
    grid().AddLookup(2, "Red, dark");
    {
        QSettings settings(path(), GetParam());
        settings.setValue("grid/ForeColor", 255);
        grid().WriteProperties(SettingsPropertyBag(settings, "grid"));
    }
    // An INI file shows colours and fonts as text; a default takes away what was stored.
    const QString text = fileText();
    for (const char* line :
         {"BackColor=#112233", "GridLineColor=ButtonFace", "Font=\"DejaVu Sans,10.5,Bold,Italic,Underline\""})
        EXPECT_TRUE(GetParam() != QSettings::IniFormat || text.contains(line)) << line << "\n" << text.toStdString();
    EXPECT_FALSE(text.contains("ForeColor="));
    QSettings settings(path(), GetParam());
    Tabula loaded(SettingsPropertyBag(settings, "grid"));
    loaded.setUserMode(false);
    EXPECT_EQ(saved(loaded), saved(grid())) << "the saved values are read back from the loaded grid's state";
    EXPECT_EQ(loaded.TextMatrix(0, 1), "Name, first");
    EXPECT_EQ(loaded.ColWidth(1), grid().ColWidth(1));
}

INSTANTIATE_TEST_SUITE_P(Settings, SettingsFormat, ::testing::Values(QSettings::IniFormat, QSettings::NativeFormat),
                         [](const auto& info) { return info.param == QSettings::IniFormat ? "ini" : "native"; });

struct HandWritten {
    const char* name;
    const char* line;
    std::function<bool(const Tabula&)> holds;
};

const HandWritten handWritten[] = {
    {"colour_as_hex", "BackColor=#ff0000", [](const Tabula& g) { return g.BackColor() == 0x0000FFu; }},
    {"system_colour_by_name", "BackColor=highlight", [](const Tabula& g) { return g.BackColor() == 0x8000000Du; }},
    {"colour_as_number", "BackColor=255", [](const Tabula& g) { return g.BackColor() == 255u; }},
    {"font_with_unquoted_commas", "Font=Serif, 14, italic, bold",
     [](const Tabula& g) { return g.Font()->Name == "Serif" && g.Font()->Size == 14 && g.Font()->Italic && g.Font()->Bold; }},
    {"boolean_as_word", "ShowGrid=false", [](const Tabula& g) { return !g.ShowGrid(); }},
};

class HandWrittenFile : public SettingsFile, public ::testing::WithParamInterface<HandWritten> {};

TEST_P(HandWrittenFile, IsRead)
{
    writeFile(QByteArray("[General]\n") + GetParam().line + "\n");
    QSettings settings(path(), QSettings::IniFormat);
    EXPECT_TRUE(GetParam().holds(Tabula(SettingsPropertyBag(settings))));
}

INSTANTIATE_TEST_SUITE_P(Settings, HandWrittenFile, ::testing::ValuesIn(handWritten), TabulaTest::caseName);

TEST_F(SettingsFile, WrongTypesUnreadableTextsOrAMissingLookupColumnFailWithTheReadError)
{
    const QVariantMap stores[] = {{{"Rows", "many"}}, {{"ShowGrid", "perhaps"}}, {{"Font", 12}}, {{"Cols", 70000}},
                                  {{"Count", 2}, {"1Column", 3}, {"1Value", "A"}, {"2Value", "B"}}};
    for (const QVariantMap& values : stores) {
        MemoryPropertyBag bag;
        bag.values = values;
        const auto error = TabulaTest::errorOf([&] { Tabula loaded(bag); });
        EXPECT_EQ(error.Source, "TabulaControl.Tabula.UserControl_ReadProperties") << values.firstKey().toStdString();
    }
    for (const char* line : {"BackColor=#12345G", "Font=Serif", "FontFixed=Serif, big"}) {
        writeFile(QByteArray("[General]\n") + line + "\n");
        QSettings settings(path(), QSettings::IniFormat);
        const auto error = TabulaTest::errorOf([&] { Tabula loaded{SettingsPropertyBag(settings)}; });
        EXPECT_EQ(error.Source, "TabulaControl.Tabula.UserControl_ReadProperties") << line;
    }
}

}  // namespace
