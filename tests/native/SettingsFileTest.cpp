#include "tests/support/GridFixture.h"

#include <TabulaControl/SettingsPropertyBag.h>

#include <QFile>
#include <QTemporaryDir>

using TabulaControl::MemoryPropertyBag;
using TabulaControl::SettingsPropertyBag;
using TabulaControl::Tabula;

namespace {

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
    QVariantMap saved(const Tabula& grid) const
    {
        MemoryPropertyBag bag;
        grid.WriteProperties(bag);
        return bag.values;
    }
    QTemporaryDir dir_;
};

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
    auto font = std::make_shared<TabulaControl::StdFont>(*grid().Font());
    font->Size = 10.5f;
    font->Bold = font->Italic = true;
    grid().setFontEdit(font);
    grid().AddLookup(2, "Red, dark");
    {
        QSettings settings(path(), GetParam());
        grid().WriteProperties(SettingsPropertyBag(settings, "grid"));
    }
    QSettings settings(path(), GetParam());
    Tabula loaded(SettingsPropertyBag(settings, "grid"));
    loaded.setUserMode(false);
    EXPECT_EQ(saved(loaded), saved(grid()));
    EXPECT_EQ(loaded.FontEdit()->Size, 10.5f);
    EXPECT_TRUE(loaded.FontEdit()->Italic);
    EXPECT_EQ(loaded.Row(), 3);
    EXPECT_EQ(loaded.TextMatrix(0, 1), "Name, first");
    EXPECT_EQ(loaded.ColWidth(1), grid().ColWidth(1));
}

INSTANTIATE_TEST_SUITE_P(Settings, SettingsFormat, ::testing::Values(QSettings::IniFormat, QSettings::NativeFormat),
                         [](const auto& info) { return info.param == QSettings::IniFormat ? "ini" : "native"; });

TEST_F(SettingsFile, ColoursAndFontsAreWrittenReadablyAndDefaultsNotAtAll)
{
    grid().setRows(10);
    grid().setCols(10);
    grid().setBackColor(0x332211);
    grid().setGridLineColor(0x8000000F);
    auto font = std::make_shared<TabulaControl::StdFont>(*grid().Font());
    font->Name = "DejaVu Sans";
    font->Size = 12;
    font->Underline = true;
    grid().setFont(font);
    QSettings settings(path(), QSettings::IniFormat);
    settings.setValue("Rows", 3);
    grid().WriteProperties(SettingsPropertyBag(settings));
    settings.sync();
    const QString text = fileText();
    for (const char* line : {"BackColor=#112233", "GridLineColor=ButtonFace", "Font=\"DejaVu Sans,12,Underline\""})
        EXPECT_TRUE(text.contains(line)) << line << "\n" << text.toStdString();
    for (const char* name : {"Rows=", "Cols=", "ForeColor="})
        EXPECT_FALSE(text.contains(name)) << name;
}

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

TEST_F(SettingsFile, AnUnreadableColourOrFontFailsWithTheReadError)
{
    for (const char* line : {"BackColor=#12345G", "Font=Serif", "FontFixed=Serif, big"}) {
        writeFile(QByteArray("[General]\n") + line + "\n");
        QSettings settings(path(), QSettings::IniFormat);
        const auto error = TabulaTest::errorOf([&] { Tabula loaded{SettingsPropertyBag(settings)}; });
        EXPECT_EQ(error.Source, "TabulaControl.Tabula.UserControl_ReadProperties") << line;
    }
}

}  // namespace
