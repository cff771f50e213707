#include "tests/support/EngineFixture.h"
#include "tests/support/GridFixture.h"

#include <QApplication>
#include <QSignalSpy>

#include <functional>

using TabulaControl::BorderStyles;
using TabulaControl::FixedStyles;
using TabulaControl::FontRef;
using TabulaControl::StdFont;
using TabulaControl::Tabula;
using TabulaTest::errorOf;

namespace {

constexpr uint32_t Marker = 0x123456;
constexpr uint32_t LightGrey = 0xC0C0C0;

// 0x00BBGGRR as the 0xRRGGBB of a pixel.
uint32_t rgbOf(uint32_t colour)
{
    return ((colour & 0xFF) << 16) | (colour & 0xFF00) | ((colour >> 16) & 0xFF);
}

// Top-left pixel of a data cell with both headers shown, grid lines on and
// nothing scrolled.
QPoint cellOrigin(Tabula& grid, int row, int col)
{
    int x = 1 + grid.ColWidth(0) + 1;
    for (int c = 1; c < col; ++c)
        x += grid.ColWidth(c) + 1;
    int y = 1 + grid.RowHeight(0) + 1;
    for (int r = 1; r < row; ++r)
        y += grid.RowHeight(r) + 1;
    return {x, y};
}

int pixelsOfColour(const QImage& image, QRect area, uint32_t rgb)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            count += (image.pixel(x, y) & 0xFFFFFF) == rgb ? 1 : 0;
    }
    return count;
}

QRect cellInterior(Tabula& grid, int row, int col)
{
    const QPoint origin = cellOrigin(grid, row, col);
    return {origin.x() + 2, origin.y() + 2, grid.ColWidth(col) - 4, grid.RowHeight(row) - 4};
}

FontRef copyOf(const FontRef& font) { return std::make_shared<StdFont>(*font); }

// Notifications ---------------------------------------------------------

struct NotifyCase {
    const char* name;
    std::function<void(Tabula&)> set;
    std::function<bool(Tabula&)> stored;
    QStringList notified;
};

void PrintTo(const NotifyCase& c, std::ostream* os) { *os << c.name; }

class AppearanceNotifications : public TabulaTest::GridFixture, public ::testing::WithParamInterface<NotifyCase> {};

TEST_P(AppearanceNotifications, StoreTheValueAndNotifyTheExpectedNames)
{
    QSignalSpy spy(&grid(), &Tabula::propertyChanged);
    GetParam().set(grid());

    QStringList names;
    for (const auto& args : spy)
        names.append(args.at(0).toString());
    EXPECT_EQ(names, GetParam().notified);
    EXPECT_TRUE(GetParam().stored(grid()));
}

const FontRef someFont = std::make_shared<StdFont>(StdFont{"DejaVu Serif", 11, false, true, false, false});

const NotifyCase notifyCases[] = {
    {"ColHeader", [](Tabula& g) { g.setColHeader(false); }, [](Tabula& g) { return !g.ColHeader(); },
     {"ColHeader"}},
    {"RowHeader", [](Tabula& g) { g.setRowHeader(false); }, [](Tabula& g) { return !g.RowHeader(); },
     {"RowHeader"}},
    {"ShowGrid", [](Tabula& g) { g.setShowGrid(false); }, [](Tabula& g) { return !g.ShowGrid(); }, {}},
    {"GridSolid", [](Tabula& g) { g.setGridSolid(false); }, [](Tabula& g) { return !g.GridSolid(); }, {}},
    {"GridLineColor", [](Tabula& g) { g.setGridLineColor(0xFF); },
     [](Tabula& g) { return g.GridLineColor() == 0xFF; }, {"GridLineColor"}},
    {"BorderStyleChanged", [](Tabula& g) { g.setBorderStyle(TabulaControl::ThinRaised); },
     [](Tabula& g) { return g.BorderStyle() == TabulaControl::ThinRaised; }, {"BorderStyle"}},
    {"BorderStyleSame", [](Tabula& g) { g.setBorderStyle(TabulaControl::Single); },
     [](Tabula& g) { return g.BorderStyle() == TabulaControl::Single; }, {}},
    {"MousePointer", [](Tabula& g) { g.setMousePointer(11); }, [](Tabula& g) { return g.MousePointer() == 11; },
     {"MousePointer"}},
    {"UseBackColorAlt", [](Tabula& g) { g.setUseBackColorAlt(true); },
     [](Tabula& g) { return g.UseBackColorAlt(); }, {"UseBackColorAlt"}},
    {"BackColor", [](Tabula& g) { g.setBackColor(0xE0FFFF); }, [](Tabula& g) { return g.BackColor() == 0xE0FFFF; },
     {"BackColor"}},
    {"BackColorAlt", [](Tabula& g) { g.setBackColorAlt(0xF0F0F0); },
     [](Tabula& g) { return g.BackColorAlt() == 0xF0F0F0; }, {"BackColorAlt"}},
    {"BackColorFixed", [](Tabula& g) { g.setBackColorFixed(0x8000000F); },
     [](Tabula& g) { return g.BackColorFixed() == 0x8000000F; }, {"BackColorFixed"}},
    {"ForeColor", [](Tabula& g) { g.setForeColor(0x0000FF); }, [](Tabula& g) { return g.ForeColor() == 0x0000FF; },
     {"ForeColor"}},
    {"ForeColorFixed", [](Tabula& g) { g.setForeColorFixed(0x800000); },
     [](Tabula& g) { return g.ForeColorFixed() == 0x800000; }, {"ForeColorFixed"}},
    {"FixedStyleChanged", [](Tabula& g) { g.setFixedStyle(TabulaControl::Flat); },
     [](Tabula& g) { return g.FixedStyle() == TabulaControl::Flat; }, {"FixedStyle"}},
    {"FixedStyleSame", [](Tabula& g) { g.setFixedStyle(TabulaControl::ThreeD); },
     [](Tabula& g) { return g.FixedStyle() == TabulaControl::ThreeD; }, {"FixedStyle"}},
    {"Font", [](Tabula& g) { g.setFont(someFont); }, [](Tabula& g) { return g.Font() == someFont; }, {"Font"}},
    {"FontEdit", [](Tabula& g) { g.setFontEdit(someFont); }, [](Tabula& g) { return g.FontEdit() == someFont; },
     {"FontEdit"}},
    {"FontFixed", [](Tabula& g) { g.setFontFixed(someFont); }, [](Tabula& g) { return g.FontFixed() == someFont; },
     {"FontFixed"}},
    {"BackColorBkgSame", [](Tabula& g) { g.setBackColorBkg(0x808080); },
     [](Tabula& g) { return g.BackColorBkg() == 0x808080; }, {"BackColorBkg"}},
    {"FormatString", [](Tabula& g) { g.setFormatString("A|B"); }, [](Tabula& g) { return g.FormatString() == "A|B"; },
     {"FormatString"}},
};

INSTANTIATE_TEST_SUITE_P(Members, AppearanceNotifications, ::testing::ValuesIn(notifyCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Repaints --------------------------------------------------------------

struct RepaintCase {
    const char* name;
    std::function<void(TabulaControl::detail::Grid&)> set;
    bool repaints;
};

void PrintTo(const RepaintCase& c, std::ostream* os) { *os << c.name; }

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
    {"FixedStyle", [](auto& g) { g.setFixedStyle(1); }, true},
    {"Font", [](auto& g) { g.setFont(g.s.mFont); }, true},
    {"FontEdit", [](auto& g) { g.setFontEdit(g.s.mFontEdit); }, true},
    {"FontFixed", [](auto& g) { g.setFontFixed(g.s.mFontFixed); }, true},
    {"BackColorBkg", [](auto& g) { g.setBackColorBkg(0x808080); }, true},
    {"FormatString", [](auto& g) { g.setFormatString(""); }, true},
};

INSTANTIATE_TEST_SUITE_P(Setters, AppearanceRepaints, ::testing::ValuesIn(repaintCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Border and background ---------------------------------------------------

class AppearanceEngine : public TabulaTest::EngineFixture {
protected:
    QStringList notified;
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().onPropertyChanged = [this](const QString& name) { notified.append(name); };
    }
};

TEST_F(AppearanceEngine, BorderStyleSameValueDoesNothing)
{
    g().ui.window.setBackColor(Marker);
    g().setBorderStyle(1);
    EXPECT_EQ(g().ui.window.BackColor(), Marker);
    EXPECT_TRUE(notified.isEmpty());
}

TEST_F(AppearanceEngine, BorderStyleSetsTheSurroundingColour)
{
    s().mBackColorBkg = 0xFF0000;
    g().setBorderStyle(0);
    EXPECT_EQ(g().ui.window.BackColor(), 0xFF0000u);
    g().setBorderStyle(2);
    EXPECT_EQ(g().ui.window.BackColor(), LightGrey);
    EXPECT_EQ(notified, QStringList({"BorderStyle", "BorderStyle"}));
}

TEST_F(AppearanceEngine, BackColorBkgColoursTheSurroundingOnlyWithoutBorder)
{
    g().setBackColorBkg(0x00FF00);
    EXPECT_EQ(g().ui.window.BackColor(), LightGrey);
    s().mBorderStyle = 0;
    g().setBackColorBkg(0x00FF00);
    EXPECT_EQ(g().ui.window.BackColor(), 0x00FF00u);
    EXPECT_EQ(notified, QStringList({"BackColorBkg", "BackColorBkg"}));
}

TEST_F(AppearanceEngine, BackColorInitialisesTheRowsAgain)
{
    g().Clear();
    s().mCells.setTextAlignVertical(0, 2, 3);
    s().mCells.setStyle(0, 2, 0);

    g().setBackColor(0xEEEEEE);

    EXPECT_EQ(s().mCells.TextAlignVertical(0, 2), 1);
    EXPECT_EQ(s().mCells.Style(0, 2), 1);
    EXPECT_EQ(TabulaControl::detail::SharedBackColor, 0xEEEEEEu);
}

TEST_F(AppearanceEngine, BackColorLeavesExistingDataRowsAlone)
{
    g().setRows(3);
    s().mCells.setStyle(2, 2, 0);
    g().setBackColor(0xEEEEEE);
    EXPECT_EQ(s().mCells.Style(2, 2), 0);
}

TEST_F(AppearanceEngine, FixedStyleSameValueStillRepaintsAndNotifies)
{
    g().setFixedStyle(1);
    EXPECT_EQ(s().mFixedStyle, 1);
    EXPECT_EQ(notified, QStringList({"FixedStyle"}));
}

class AppearanceSurface : public TabulaTest::GridFixture {};

TEST_F(AppearanceSurface, RaisedBorderKeepsTheSurroundingGreyWhileTheBackgroundTurnsBlue)
{
    grid().setBorderStyle(TabulaControl::ThinRaised);
    grid().setBackColorBkg(0xFF0000);
    QApplication::processEvents();

    EXPECT_EQ(grid().grab().toImage().pixel(1, 1) & 0xFFFFFF, LightGrey);
    const QPoint belowLastRow = cellOrigin(grid(), 1, 2) + QPoint(10, 2 * grid().RowHeight(1));
    EXPECT_EQ(pixel(belowLastRow.x(), belowLastRow.y()), 0x0000FFu);
}

TEST_F(AppearanceSurface, NoBorderShowsTheBackgroundAroundTheSurface)
{
    grid().setBorderStyle(TabulaControl::NoBorder);
    grid().setBackColorBkg(0xFF0000);
    QApplication::processEvents();

    EXPECT_EQ(grid().grab().toImage().pixel(1, 1) & 0xFFFFFF, 0x0000FFu);
}

TEST_F(AppearanceSurface, BackColorFillsTheDataCells)
{
    grid().setRows(2);
    grid().setBackColor(0x80C0FF);
    EXPECT_EQ(pixelsOfColour(picture(), cellInterior(grid(), 2, 3), rgbOf(0x80C0FF)),
              cellInterior(grid(), 2, 3).width() * cellInterior(grid(), 2, 3).height());
}

TEST_F(AppearanceSurface, AlternateColourPaintsOddRows)
{
    grid().setRows(2);
    grid().setBackColorAlt(0xFFE0E0);
    grid().setUseBackColorAlt(true);
    const QPoint odd = cellOrigin(grid(), 1, 3);
    const QPoint even = cellOrigin(grid(), 2, 3);
    EXPECT_EQ(pixel(odd.x() + 5, odd.y() + 5), rgbOf(0xFFE0E0));
    EXPECT_EQ(pixel(even.x() + 5, even.y() + 5), rgbOf(0xFFFFFF));
}

TEST_F(AppearanceSurface, ForeColorShowsOnlyAtTheNextRepaint)
{
    grid().setTextMatrix(1, 3, "WWWW");
    const QImage before = picture();

    grid().setForeColor(0x0000FF);
    EXPECT_EQ(picture(), before);

    grid().Refresh();
    EXPECT_GT(pixelsOfColour(picture(), cellInterior(grid(), 1, 3), 0xFF0000), 0);
}

TEST_F(AppearanceSurface, MousePointerIsTheControlsOwnCursor)
{
    grid().setMousePointer(11);
    EXPECT_EQ(grid().cursor().shape(), Qt::WaitCursor);
    grid().setMousePointer(0);
    EXPECT_EQ(grid().MousePointer(), 0);
}

TEST_F(AppearanceSurface, SixteenBitStylesOverflow)
{
    const auto border = errorOf([&] { grid().setBorderStyle(static_cast<BorderStyles>(70000)); });
    EXPECT_EQ(border.Source, "TabulaControl.Tabula.BorderStyle");
    EXPECT_EQ(grid().BorderStyle(), TabulaControl::Single);

    const auto fixed = errorOf([&] { grid().setFixedStyle(static_cast<FixedStyles>(-40000)); });
    EXPECT_EQ(fixed.Source, "TabulaControl.Tabula.FixedStyle");
    EXPECT_EQ(grid().FixedStyle(), TabulaControl::ThreeD);
}

// Shared colours ----------------------------------------------------------

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

// Fonts ---------------------------------------------------------------------

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

TEST_F(AppearanceSurface, AFontChangedThroughTheObjectShowsAtTheNextRepaint)
{
    grid().setTextMatrix(1, 3, "WWWW");
    FontRef font = copyOf(grid().Font());
    grid().setFont(font);
    const QRect cell = cellInterior(grid(), 1, 3);
    const int plain = pixelsOfColour(picture(), cell, 0x000000);
    ASSERT_GT(plain, 0);

    font->Bold = true;
    EXPECT_EQ(pixelsOfColour(picture(), cell, 0x000000), plain);
    grid().Refresh();

    EXPECT_EQ(grid().Font(), font);
    EXPECT_GT(pixelsOfColour(picture(), cell, 0x000000), plain);
}

TEST_F(AppearanceSurface, FixedFontIsUsedForTheHeaders)
{
    grid().setFormatString("WWWW");
    const QPoint header = cellOrigin(grid(), 0, 1);
    const QRect caption(header.x() + 2, 3, grid().ColWidth(1) - 4, grid().RowHeight(0) - 4);
    const int bold = pixelsOfColour(picture(), caption, 0x000000);

    FontRef plain = copyOf(grid().FontFixed());
    plain->Bold = false;
    grid().setFontFixed(plain);

    EXPECT_LT(pixelsOfColour(picture(), caption, 0x000000), bold);
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

INSTANTIATE_TEST_SUITE_P(
    Members, NullFont,
    ::testing::Values(NullFontCase{"Font", [](Tabula& g, FontRef f) { g.setFont(f); }, [](Tabula& g) { return g.Font(); }},
                      NullFontCase{"FontEdit", [](Tabula& g, FontRef f) { g.setFontEdit(f); },
                                   [](Tabula& g) { return g.FontEdit(); }},
                      NullFontCase{"FontFixed", [](Tabula& g, FontRef f) { g.setFontFixed(f); },
                                   [](Tabula& g) { return g.FontFixed(); }}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
