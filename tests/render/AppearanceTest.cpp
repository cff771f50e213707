#include "tests/render/RenderSupport.h"
#include "tests/support/GridFixture.h"

#include <QApplication>

#include <functional>

using TabulaControl::FontRef;
using TabulaControl::StdFont;
using TabulaControl::Tabula;
using TabulaTest::caseName;
using TabulaTest::countOf;
using TabulaTest::errorOf;
using TabulaTest::rgbOf;

namespace {

constexpr uint32_t Marker = 0x123456;
constexpr uint32_t LightGrey = 0xC0C0C0;

// Top-left pixel of a data cell with both headers shown, grid lines on and
// nothing scrolled.
QPoint cellOrigin(Tabula& grid, int row, int col)
{
    int x = 1 + grid.ColWidth(0) + 1, y = 1 + grid.RowHeight(0) + 1;
    for (int c = 1; c < col; ++c)
        x += grid.ColWidth(c) + 1;
    for (int r = 1; r < row; ++r)
        y += grid.RowHeight(r) + 1;
    return {x, y};
}

QRect cellInterior(Tabula& grid, int row, int col)
{
    const QPoint origin = cellOrigin(grid, row, col);
    return {origin.x() + 2, origin.y() + 2, grid.ColWidth(col) - 4, grid.RowHeight(row) - 4};
}

FontRef copyOf(const FontRef& font) { return std::make_shared<StdFont>(*font); }

struct NotifyCase {
    const char* name;
    std::function<void(Tabula&)> set;
    std::function<bool(Tabula&)> stored;
    QStringList notified;
};

class AppearanceNotifications : public TabulaTest::GridFixture, public ::testing::WithParamInterface<NotifyCase> {};

TEST_P(AppearanceNotifications, StoreTheValueAndNotifyTheExpectedNames)
{
    QSignalSpy spy(&grid(), &Tabula::propertyChanged);
    GetParam().set(grid());
    EXPECT_EQ(TabulaTest::namesIn(spy), GetParam().notified);
    EXPECT_TRUE(GetParam().stored(grid()));
}

const FontRef someFont = std::make_shared<StdFont>(StdFont{"DejaVu Serif", 11, false, true, false, false});

#define SETS(label, Name, value, ...)                                                            \
    NotifyCase                                                                                   \
    {                                                                                            \
        label, [](Tabula& g) { g.set##Name(value); }, [](Tabula& g) { return g.Name() == value; }, \
        QStringList{__VA_ARGS__}                                                                 \
    }

const NotifyCase notifyCases[] = {
    SETS("ColHeader", ColHeader, false, "ColHeader"),
    SETS("RowHeader", RowHeader, false, "RowHeader"),
    SETS("ShowGrid", ShowGrid, false),
    SETS("GridSolid", GridSolid, false),
    SETS("GridLineColor", GridLineColor, 0xFFu, "GridLineColor"),
    SETS("BorderStyleChanged", BorderStyle, TabulaControl::ThinRaised, "BorderStyle"),
    SETS("BorderStyleSame", BorderStyle, TabulaControl::Single),
    SETS("MousePointer", MousePointer, 11, "MousePointer"),
    SETS("MousePointerDefault", MousePointer, 0, "MousePointer"),
    SETS("UseBackColorAlt", UseBackColorAlt, true, "UseBackColorAlt"),
    SETS("BackColor", BackColor, 0xE0FFFFu, "BackColor"),
    SETS("BackColorAlt", BackColorAlt, 0xF0F0F0u, "BackColorAlt"),
    SETS("BackColorFixed", BackColorFixed, 0x8000000Fu, "BackColorFixed"),
    SETS("ForeColor", ForeColor, 0x0000FFu, "ForeColor"),
    SETS("ForeColorFixed", ForeColorFixed, 0x800000u, "ForeColorFixed"),
    SETS("FixedStyleChanged", FixedStyle, TabulaControl::Flat, "FixedStyle"),
    SETS("FixedStyleSame", FixedStyle, TabulaControl::ThreeD, "FixedStyle"),
    SETS("Font", Font, someFont, "Font"),
    SETS("FontEdit", FontEdit, someFont, "FontEdit"),
    SETS("FontFixed", FontFixed, someFont, "FontFixed"),
    SETS("BackColorBkgSame", BackColorBkg, 0x808080u, "BackColorBkg"),
    SETS("FormatString", FormatString, QString("A|B"), "FormatString"),
};

#undef SETS

INSTANTIATE_TEST_SUITE_P(Members, AppearanceNotifications, ::testing::ValuesIn(notifyCases), caseName<NotifyCase>);

struct RepaintCase {
    const char* name;
    std::function<void(TabulaControl::detail::Grid&)> set;
    bool repaints;
};

// A marker pixel put on the surface survives a setter that does not repaint
// the cells; a full repaint paints over it.
class AppearanceRepaints : public TabulaTest::EngineFixture, public ::testing::WithParamInterface<RepaintCase> {};

TEST_P(AppearanceRepaints, RepaintTheCellsUnlessTheyOnlyTouchBorderPointerOrTextColour)
{
    s().mAutoRedraw = false;
    const QPoint spots[] = {{60, 8}, {60, 24}, {200, 200}};
    for (QPoint p : spots)
        g().surface.fill({p.x(), p.y(), p.x() + 1, p.y() + 1}, rgbOf(Marker));
    GetParam().set(g());
    for (QPoint p : spots)
        EXPECT_EQ(pixel(p.x(), p.y()) == Marker, !GetParam().repaints) << p.x() << "," << p.y();
}

const RepaintCase repaintCases[] = {
    {"ColHeader", [](auto& g) { g.setColHeader(true); }, true},
    {"RowHeader", [](auto& g) { g.setRowHeader(true); }, true},
    {"ShowGrid", [](auto& g) { g.setShowGrid(true); }, true},
    {"GridSolid", [](auto& g) { g.setGridSolid(true); }, true},
    {"GridLineColor", [](auto& g) { g.setGridLineColor(0xC0C0C0); }, true},
    {"BorderStyle", [](auto& g) { g.setBorderStyle(3); }, false},
    {"MousePointer", [](auto& g) { g.setMousePointer(2); }, false},
    {"UseBackColorAlt", [](auto& g) { g.setUseBackColorAlt(false); }, true},
    {"BackColor", [](auto& g) { g.setBackColor(0xFFFFFF); }, true},
    {"BackColorAlt", [](auto& g) { g.setBackColorAlt(0xFFFFFF); }, true},
    {"BackColorFixed", [](auto& g) { g.setBackColorFixed(0xC0C0C0); }, true},
    {"ForeColor", [](auto& g) { g.setForeColor(0xFF); }, false},
    {"ForeColorFixed", [](auto& g) { g.setForeColorFixed(0xFF); }, true},
    {"FixedStyleSameValue", [](auto& g) { g.setFixedStyle(1); }, true},
    {"Font", [](auto& g) { g.setFont(g.s.mFont); }, true},
    {"FontEdit", [](auto& g) { g.setFontEdit(g.s.mFontEdit); }, true},
    {"FontFixed", [](auto& g) { g.setFontFixed(g.s.mFontFixed); }, true},
    {"BackColorBkg", [](auto& g) { g.setBackColorBkg(0x808080); }, true},
    {"FormatString", [](auto& g) { g.setFormatString(""); }, true},
};

INSTANTIATE_TEST_SUITE_P(Setters, AppearanceRepaints, ::testing::ValuesIn(repaintCases), caseName<RepaintCase>);

class AppearanceEngine : public TabulaTest::EngineFixture {
protected:
    QStringList notified;
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().onPropertyChanged = [this](const QString& name) { notified.append(name); };
    }
};

TEST_F(AppearanceEngine, BackColorSetsTheSharedColourAndReinitialisesOnlyAnEmptyGridsHeaderRow)
{
    g().Clear();
    s().mCells.setTextAlignVertical(0, 2, 3);
    s().mCells.setStyle(0, 2, 0);
    g().setBackColor(0xEEEEEE);
    EXPECT_EQ(s().mCells.TextAlignVertical(0, 2), 1);
    EXPECT_EQ(s().mCells.Style(0, 2), 1);
    EXPECT_EQ(TabulaControl::detail::SharedBackColor, 0xEEEEEEu);

    g().setRows(3);
    s().mCells.setStyle(2, 2, 0);
    g().setBackColor(0xDDDDDD);
    EXPECT_EQ(s().mCells.Style(2, 2), 0);
}

class AppearanceSurface : public TabulaTest::GridFixture {};

TEST_F(AppearanceSurface, BackgroundColourShowsAroundTheSurfaceOnlyWithoutBorder)
{
    grid().setBorderStyle(TabulaControl::ThinRaised);
    grid().setBackColorBkg(0xFF0000);
    QApplication::processEvents();
    EXPECT_EQ(grid().grab().toImage().pixel(1, 1) & 0xFFFFFF, LightGrey);
    const QPoint belowLastRow = cellOrigin(grid(), 1, 2) + QPoint(10, 2 * grid().RowHeight(1));
    EXPECT_EQ(pixel(belowLastRow.x(), belowLastRow.y()), 0x0000FFu);

    grid().setBorderStyle(TabulaControl::NoBorder);
    QApplication::processEvents();
    EXPECT_EQ(grid().grab().toImage().pixel(1, 1) & 0xFFFFFF, 0x0000FFu);
}

TEST_F(AppearanceSurface, MousePointerIsTheControlsOwnCursor)
{
    grid().setMousePointer(11);
    EXPECT_EQ(grid().cursor().shape(), Qt::WaitCursor);
}

TEST_F(AppearanceSurface, SixteenBitStylesOverflow)
{
    const auto border = errorOf([&] { grid().setBorderStyle(static_cast<TabulaControl::BorderStyles>(70000)); });
    EXPECT_EQ(border.Source, "TabulaControl.Tabula.BorderStyle");
    EXPECT_EQ(grid().BorderStyle(), TabulaControl::Single);
    const auto fixed = errorOf([&] { grid().setFixedStyle(static_cast<TabulaControl::FixedStyles>(-40000)); });
    EXPECT_EQ(fixed.Source, "TabulaControl.Tabula.FixedStyle");
    EXPECT_EQ(grid().FixedStyle(), TabulaControl::ThreeD);
}

TEST_F(AppearanceSurface, BackColorAndForeColorAreSharedByEveryGridOfTheThread)
{
    Tabula other;
    other.resize(400, 300);
    other.show();
    QApplication::processEvents();
    other.setRows(2);
    grid().setBackColor(0x40FF80);
    grid().setForeColor(0x0000C0);
    EXPECT_EQ(other.BackColor(), 0x40FF80u);
    EXPECT_EQ(other.ForeColor(), 0x0000C0u);
    other.Refresh();
    const QPoint cell = cellOrigin(other, 2, 3);
    EXPECT_EQ(other.Picture().pixel(cell.x() + 5, cell.y() + 5) & 0xFFFFFF, rgbOf(0x40FF80));
}

TEST_F(AppearanceSurface, ANewGridResetsTheSharedColours)
{
    grid().setBackColor(0x40FF80);
    Tabula other;
    EXPECT_EQ(grid().BackColor(), 0xFFFFFFu);
    EXPECT_EQ(grid().ForeColor(), 0x80000012u);
}

TEST_F(AppearanceSurface, TheThreeFontsStartIndependent)
{
    EXPECT_TRUE(grid().FontFixed()->Bold);
    EXPECT_FALSE(grid().Font()->Bold);
    EXPECT_FALSE(grid().FontEdit()->Bold);
    EXPECT_NE(grid().Font(), grid().FontFixed());
    EXPECT_NE(grid().Font(), grid().FontEdit());
    EXPECT_EQ(grid().Font()->Name, grid().FontFixed()->Name);
    grid().Font()->Italic = true;
    EXPECT_FALSE(grid().FontEdit()->Italic);
    EXPECT_FALSE(grid().FontFixed()->Italic);
}

TEST_F(AppearanceSurface, ForeColorAndChangesThroughTheFontObjectShowOnlyAtTheNextRepaint)
{
    grid().setTextMatrix(1, 3, "WWWW");
    FontRef font = copyOf(grid().Font());
    grid().setFont(font);
    const QRect cell = cellInterior(grid(), 1, 3);
    const QImage before = picture();
    const int plain = countOf(before, cell, 0x000000);
    ASSERT_GT(plain, 0);
    font->Bold = true;
    grid().setForeColor(0x0000FF);
    EXPECT_EQ(picture(), before);
    grid().Refresh();
    EXPECT_EQ(grid().Font(), font);
    EXPECT_GT(countOf(picture(), cell, 0xFF0000), plain);
}


struct NullFontCase {
    const char* name;
    std::function<void(Tabula&, FontRef)> set;
    std::function<FontRef(Tabula&)> get;
};

class NullFont : public TabulaTest::GridFixture, public ::testing::WithParamInterface<NullFontCase> {};

TEST_P(NullFont, FailsWithTheComponentErrorAndKeepsTheFont)
{
    const FontRef before = GetParam().get(grid());
    QSignalSpy spy(&grid(), &Tabula::propertyChanged);
    const auto error = errorOf([&] { GetParam().set(grid(), nullptr); });
    EXPECT_EQ(error.Source, QString("TabulaControl.Tabula.") + GetParam().name);
    EXPECT_EQ(GetParam().get(grid()), before);
    EXPECT_EQ(spy.count(), 0);
    grid().Refresh();
}

#define FONT(Name) NullFontCase{#Name, [](Tabula& g, FontRef f) { g.set##Name(f); }, [](Tabula& g) { return g.Name(); }}
INSTANTIATE_TEST_SUITE_P(Members, NullFont, ::testing::Values(FONT(Font), FONT(FontEdit), FONT(FontFixed)),
                         caseName<NullFontCase>);
#undef FONT

}  // namespace
