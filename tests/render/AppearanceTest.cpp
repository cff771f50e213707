#include "tests/navigation/NavigationFixture.h"

#include <QApplication>

#include <functional>

using TabulaControl::FontRef;
using TabulaControl::StdFont;
using TabulaControl::Tabula;
using TabulaTest::caseName;
using TabulaTest::countOf;

namespace {

using TabulaTest::Face;
using TabulaTest::White;

struct SetterCase {
    const char* name;
    std::function<void(Tabula&)> set;
    std::function<bool(Tabula&)> stored;
    bool repaints;
    QStringList notified;
};

class AppearanceSetter : public TabulaTest::GridFixture, public ::testing::WithParamInterface<SetterCase> {};

// Text stored with AutoRedraw off shows only once the cells are repainted.
TEST_P(AppearanceSetter, StoresNotifiesAndRepaintsUnlessItOnlyTouchesBorderPointerOrTextColour)
{
    const SetterCase& c = GetParam();
    grid().setAutoRedraw(false);
    grid().setTextMatrix(1, 1, "WWWW");
    const QImage before = picture();
    QSignalSpy spy(&grid(), &Tabula::propertyChanged);
    c.set(grid());
    EXPECT_EQ(TabulaTest::namesIn(spy), c.notified);
    EXPECT_TRUE(c.stored(grid()));
    EXPECT_EQ(picture() != before, c.repaints);
    if (c.repaints) {
        grid().setTextMatrix(1, 1, "");
        const QImage shown = picture();
        c.set(grid());
        EXPECT_NE(picture(), shown) << "setting the same value again repaints too";
    }
}

const FontRef someFont = std::make_shared<StdFont>(StdFont{"DejaVu Serif", 11, false, true, false, false});

#define SETS(label, Name, value, repaints, ...)                                                  \
    SetterCase                                                                                   \
    {                                                                                            \
        label, [](Tabula& g) { g.set##Name(value); }, [](Tabula& g) { return g.Name() == value; }, \
        repaints, QStringList{__VA_ARGS__}                                                       \
    }

const SetterCase setterCases[] = {
    SETS("ColHeader", ColHeader, false, true, "ColHeader"),
    SETS("RowHeader", RowHeader, false, true, "RowHeader"),
    SETS("ShowGrid", ShowGrid, false, true),
    SETS("GridSolid", GridSolid, false, true),
    SETS("GridLineColor", GridLineColor, 0xFFu, true, "GridLineColor"),
    SETS("BorderStyleChanged", BorderStyle, TabulaControl::ThinRaised, false, "BorderStyle"),
    SETS("BorderStyleSame", BorderStyle, TabulaControl::Single, false),
    SetterCase{"MousePointer", [](Tabula& g) { g.setMousePointer(11); },
               [](Tabula& g) { return g.MousePointer() == 11 && g.cursor().shape() == Qt::WaitCursor; }, false,
               {"MousePointer"}},
    SETS("MousePointerDefault", MousePointer, 0, false, "MousePointer"),
    SETS("UseBackColorAlt", UseBackColorAlt, true, true, "UseBackColorAlt"),
    SETS("BackColor", BackColor, 0xE0FFFFu, true, "BackColor"),
    SETS("BackColorAlt", BackColorAlt, 0xF0F0F0u, true, "BackColorAlt"),
    SETS("BackColorFixed", BackColorFixed, 0x8000000Fu, true, "BackColorFixed"),
    SETS("ForeColor", ForeColor, 0x0000FFu, false, "ForeColor"),
    SETS("ForeColorFixed", ForeColorFixed, 0x800000u, true, "ForeColorFixed"),
    SETS("FixedStyleChanged", FixedStyle, TabulaControl::Flat, true, "FixedStyle"),
    SETS("FixedStyleSame", FixedStyle, TabulaControl::ThreeD, true, "FixedStyle"),
    SETS("Font", Font, someFont, true, "Font"),
    SETS("FontEdit", FontEdit, someFont, true, "FontEdit"),
    SETS("FontFixed", FontFixed, someFont, true, "FontFixed"),
    SETS("BackColorBkgSame", BackColorBkg, 0x808080u, true, "BackColorBkg"),
    SETS("FormatString", FormatString, QString("A|B"), true, "FormatString"),
    SETS("UseItemData", UseItemData, true, false, "UseItemData"),
    SETS("ListBoxRows", ListBoxRows, -3, false, "ListBoxRows"),
};

#undef SETS

INSTANTIATE_TEST_SUITE_P(Members, AppearanceSetter, ::testing::ValuesIn(setterCases), caseName);

class AppearanceSurface : public TabulaTest::NavigationFixture {};

// Inside the surface the background colour shows past the cells, as the
// golden scenes pin; around it only without a border.
TEST_F(AppearanceSurface, BackgroundColourShowsAroundTheSurfaceOnlyWithoutBorder)
{
    grid().setBorderStyle(TabulaControl::ThinRaised);
    grid().setBackColorBkg(0xFF0000);
    QApplication::processEvents();
    EXPECT_EQ(grid().grab().toImage().pixel(1, 1) & 0xFFFFFF, Face);
    grid().setBorderStyle(TabulaControl::NoBorder);
    QApplication::processEvents();
    EXPECT_EQ(grid().grab().toImage().pixel(1, 1) & 0xFFFFFF, 0x0000FFu);
}

// Alike header cells cut off by the surface's edge by different amounts hold
// different pixels: a scroll keeps neither in place of the other.
TEST_F(AppearanceSurface, AScrollKeepsNoCellForOneCutOffOtherwise)
{
    grid().setGridLineColor(0x40F9D0);
    grid().setFixedStyle(TabulaControl::Flat);
    grid().resize(45, 300);
    grid().setColWidth(-1, -1912);
    grid().setCols(300);
    grid().setLeftCol(265);
    const QImage scrolled = picture();
    grid().Refresh();
    EXPECT_EQ(scrolled, picture());
}

// BackColor and ForeColor are shared by every grid of the thread.
TEST_F(AppearanceSurface, ANewGridResetsTheSharedColoursAndStartsWithThreeIndependentFonts)
{
    Tabula other;
    grid().setBackColor(0x40FF80);
    grid().setForeColor(0x0000C0);
    EXPECT_EQ(other.BackColor(), 0x40FF80u);
    EXPECT_EQ(other.ForeColor(), 0x0000C0u);
    Tabula third;
    EXPECT_EQ(grid().BackColor(), 0xFFFFFFu);
    EXPECT_EQ(grid().ForeColor(), 0x80000012u);
    EXPECT_TRUE(grid().FontFixed()->Bold);
    EXPECT_FALSE(grid().Font()->Bold);
    EXPECT_FALSE(grid().FontEdit()->Bold);
    EXPECT_EQ(grid().Font()->Name, grid().FontFixed()->Name);
    grid().Font()->Italic = true;
    EXPECT_FALSE(grid().FontEdit()->Italic);
    EXPECT_FALSE(grid().FontFixed()->Italic);
}

TEST_F(AppearanceSurface, CellBackgroundIsTheRowsOwnColourThenTheAlternateThenTheGrids)
{
    grid().setBackColorAlt(0x00FFFF);
    grid().setUseBackColorAlt(true);
    grid().setRows(0);
    grid().AddItem("", 0x0000FF);
    grid().AddItem("", 0x0000FF);
    grid().AddItem("", static_cast<int32_t>(0x80000001u));  // a system colour counts as none
    grid().AddItem("");
    const uint32_t expected[] = {0xFF0000, 0xFF0000, 0xFFFF00, White};
    for (int32_t row = 1; row <= 4; ++row) {
        const QRect r = cell(row, 2);
        EXPECT_EQ(countOf(picture(), r, expected[row - 1]), r.width() * r.height()) << "row " << row;
    }
}

TEST_F(AppearanceSurface, ACheckBoxSitsAtTheCentreRoundedToEvenAndANarrowCellShowsNoText)
{
    grid().setColMask(1, TabulaControl::checkmark);
    grid().setTextMatrix(1, 1, "1");
    for (auto [width, left] : {std::pair{65, 60}, {63, 58}}) {
        grid().setColWidth(1, width);
        const int top = cell(1, 1).top() + 1;
        EXPECT_EQ(pixel(left, top), 0x808080u) << "width " << width;
        EXPECT_EQ(pixel(left - 1, top), White) << "width " << width;
    }
    grid().setColMask(2, TabulaControl::NoMask);
    grid().setColWidth(2, 4);
    grid().setTextMatrix(1, 2, "WWW");
    const QRect narrow = cell(1, 2);
    EXPECT_EQ(countOf(picture(), narrow, White), narrow.width() * narrow.height());
}

}  // namespace
