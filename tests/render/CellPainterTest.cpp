#include "tests/support/EngineFixture.h"

#include <QRect>

using TabulaControl::checkmark;
using TabulaControl::OleColor;

namespace {

constexpr uint32_t White = 0xFFFFFF;
constexpr uint32_t Black = 0x000000;
constexpr uint32_t Face = 0xC0C0C0;
constexpr uint32_t Shadow = 0x808080;
constexpr uint32_t Magenta = 0xFF00FF;
constexpr OleColor MagentaOle = 0xFF00FF;

// Cells painted one at a time on the engine's surface, over a magenta
// ground so that every pixel a cell covers is recognisable.
class CellPainter : public TabulaTest::EngineFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setRows(6);
        g().surface.fill({0, 0, 395, 295}, MagentaOle);
    }

    QRect cell(int32_t row, int32_t col)
    {
        int32_t x = 0, y = 0;
        g().GetCellCoordinates(row, col, x, y);
        if (row == 0)
            y = 1;
        if (col == 0)
            x = 1;
        return QRect(x, y, s().mColWidth(col), s().mRowHeight(row));
    }

    QRect draw(int32_t row, int32_t col)
    {
        const QRect r = cell(row, col);
        g().DrawCell(row, col, r.x(), r.y(), r.width(), r.height());
        return r;
    }

    void setText(int16_t row, int16_t col, const QString& text) { s().mCells.setText(row, col, text); }

    int count(const QRect& area, uint32_t rgb)
    {
        int n = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                n += pixel(x, y) == rgb ? 1 : 0;
        return n;
    }

    // Bounding box of the pixels of area that are not `ground`.
    QRect inkOf(const QRect& area, uint32_t ground)
    {
        QRect ink;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                if (pixel(x, y) != ground)
                    ink = ink.united(QRect(x, y, 1, 1));
        return ink;
    }
};

struct BackgroundCase {
    const char* name;
    bool useAlternate;
    int16_t row;
    int32_t cellBackColor;
    uint32_t expected;
};

const BackgroundCase backgroundCases[] = {
    {"plain", false, 1, -1, White},
    {"odd_row_alternate", true, 1, -1, 0xFFFF00},
    {"even_row_normal", true, 2, -1, White},
    {"own_colour_in_odd_row", true, 1, 0x0000FF, 0xFF0000},
    {"own_colour_in_even_row", true, 2, 0x0000FF, 0xFF0000},
    {"system_colour_counts_as_unset", false, 2, static_cast<int32_t>(0x80000001u), White},
};

class Background : public CellPainter, public ::testing::WithParamInterface<BackgroundCase> {};

struct ButtonCase {
    const char* name;
    int16_t value;
    uint32_t leftEdge;
    uint32_t rightEdge;
};

const ButtonCase buttonCases[] = {
    {"raised", 0, White, Black},
    {"pressed", -1, Black, White},
    {"flat_face", 1, Face, Face},
};

class ButtonFace : public CellPainter, public ::testing::WithParamInterface<ButtonCase> {};

struct CheckBoxCase {
    const char* name;
    int16_t width;
    const char* text;
    int32_t left;
    bool checked;
};

// Left edge round(34 + width / 2 - 7), halves to even.
const CheckBoxCase checkBoxCases[] = {
    {"checked", 64, "1", 59, true},
    {"zero_is_empty", 64, "0", 59, false},
    {"empty_text_is_empty", 64, "", 59, false},
    {"half_rounds_up_to_even", 65, "1", 60, true},
    {"half_rounds_down_to_even", 63, "1", 58, true},
};

class CheckBox : public CellPainter, public ::testing::WithParamInterface<CheckBoxCase> {};

template <class Case>
std::string caseName(const ::testing::TestParamInfo<Case>& info)
{
    return info.param.name;
}

}  // namespace

TEST_P(Background, FollowsCellColourThenAlternateRowsThenGridColour)
{
    const BackgroundCase& c = GetParam();
    s().mUseBackColorAlt = c.useAlternate;
    s().mBackColorAlt = 0x00FFFF;
    s().mCells.setBackColor(c.row, 1, c.cellBackColor);
    const QRect r = draw(c.row, 1);
    EXPECT_EQ(count(r, c.expected), r.width() * r.height());
    EXPECT_EQ(pixel(r.right() + 1, r.top()), Magenta) << "the grid line stays untouched";
}

INSTANTIATE_TEST_SUITE_P(CellPainter, Background, ::testing::ValuesIn(backgroundCases),
                         caseName<BackgroundCase>);

TEST_P(ButtonFace, DataCellOfButtonStyleCoversItsGridLines)
{
    const ButtonCase& c = GetParam();
    s().mCells.setStyle(2, 2, 1);
    s().mCells.setValue(2, 2, c.value);
    const QRect r = draw(2, 2);
    const int midY = r.top() + 5;
    EXPECT_EQ(pixel(r.left(), midY), c.leftEdge);
    EXPECT_EQ(pixel(r.left() + 5, r.top()), c.leftEdge);
    EXPECT_EQ(pixel(r.right() + 1, midY), c.rightEdge);
    EXPECT_EQ(pixel(r.left() + 5, r.bottom() + 1), c.rightEdge);
    EXPECT_EQ(pixel(r.left() + 5, midY), Face);
    EXPECT_EQ(pixel(r.right() + 2, midY), Magenta);
}

INSTANTIATE_TEST_SUITE_P(CellPainter, ButtonFace, ::testing::ValuesIn(buttonCases), caseName<ButtonCase>);

TEST_F(CellPainter, FlatHeaderGetsAGridColouredFrameAndTheFixedColour)
{
    s().mFixedStyle = 0;
    s().mBackColorFixed = 0xFF0000;
    s().mGridLineColor = 0x0000FF;
    const QRect r = draw(0, 1);
    EXPECT_EQ(pixel(r.left() - 1, r.top() - 1), 0xFF0000u);
    EXPECT_EQ(pixel(r.right() + 1, r.top() + 5), 0xFF0000u);
    EXPECT_EQ(pixel(r.left() + 5, r.bottom() + 1), 0xFF0000u);
    EXPECT_EQ(pixel(r.left(), r.top()), 0x0000FFu);
    EXPECT_EQ(pixel(r.right(), r.bottom()), 0x0000FFu);
}

TEST_P(CheckBox, SitsAtTheRoundedCentreAndIsCheckedOnlyByOne)
{
    const CheckBoxCase& c = GetParam();
    g().setColMask(1, checkmark);
    g().surface.fill({0, 0, 395, 295}, MagentaOle);
    s().mColWidth(1) = c.width;
    setText(2, 1, c.text);
    const QRect r = draw(2, 1);
    const int top = r.top() + 1;
    EXPECT_EQ(pixel(c.left, top), Shadow);
    EXPECT_EQ(pixel(c.left + 13, top), Shadow);
    EXPECT_EQ(pixel(c.left, top + 13), Shadow);
    EXPECT_EQ(pixel(c.left - 1, top), White);
    EXPECT_EQ(pixel(c.left + 15, top), White);
    EXPECT_EQ(pixel(c.left + 14, top + 14), White) << "the box reaches past the row onto its grid line";
    const QRect interior(c.left + 2, top + 2, 11, 11);
    EXPECT_EQ(count(interior, Black) > 0, c.checked);
    EXPECT_EQ(count(QRect(r.left(), r.top(), c.left - r.left(), r.height()), White), (c.left - r.left()) * r.height())
        << "no text beside the box";
}

INSTANTIATE_TEST_SUITE_P(CellPainter, CheckBox, ::testing::ValuesIn(checkBoxCases), caseName<CheckBoxCase>);

TEST_F(CellPainter, HeaderOfACheckColumnShowsItsCaptionAndNoBox)
{
    g().setColMask(1, checkmark);
    s().mColAlign(1) = 2;
    setText(0, 1, "Done");
    const QRect r = draw(0, 1);
    EXPECT_EQ(pixel(59, r.top() + 1), Face);
    const QRect ink = inkOf(QRect(r.left() + 2, r.top() + 1, r.width() - 4, r.height() - 2), Face);
    ASSERT_FALSE(ink.isEmpty());
    EXPECT_GT(ink.left(), r.left() + r.width() / 3) << "right-aligned caption";
}

TEST_F(CellPainter, TextColourIsTheCellsOwnThenTheGridsThenTheFixedOne)
{
    setText(1, 1, "WWWW");
    setText(1, 2, "WWWW");
    setText(0, 1, "WWWW");
    s().mCells.setForeColor(1, 1, 0x0000FF);
    s().mForeColorFixed = 0x00FF00;
    EXPECT_GT(count(draw(1, 1), 0xFF0000), 0);
    const QRect plain = draw(1, 2);
    EXPECT_GT(count(plain, Black), 0);
    EXPECT_EQ(count(plain, 0xFF0000), 0);
    EXPECT_GT(count(draw(0, 1), 0x00FF00), 0);
    EXPECT_EQ(g().surface.textColor(), 0x00FF00u);
}

TEST_F(CellPainter, FixedCellsTakeTheFixedFontDataCellsTheSharedGridFont)
{
    s().mFontFixed->Name = "DejaVu Serif";
    draw(1, 0);
    EXPECT_EQ(g().surface.font().family(), "DejaVu Serif");
    EXPECT_TRUE(g().surface.font().bold());
    s().mFont->Name = "DejaVu Sans";
    s().mFont->Italic = true;
    draw(1, 1);
    EXPECT_EQ(g().surface.font().family(), "DejaVu Sans");
    EXPECT_FALSE(g().surface.font().bold());
    EXPECT_TRUE(g().surface.font().italic()) << "the font object is read at paint time";
}

TEST_F(CellPainter, CellFontReplacesTheGridFontOnlyWithAName)
{
    s().mCells.setFontBold(1, 1, true);
    s().mCells.setFontSize(1, 1, 20);
    draw(1, 1);
    EXPECT_FALSE(g().surface.font().bold());
    EXPECT_EQ(g().surface.font().pointSizeF(), s().mFont->Size);

    s().mCells.setFontName(1, 1, "DejaVu Serif");
    s().mCells.setFontUnderline(1, 1, true);
    draw(1, 1);
    EXPECT_EQ(g().surface.font().family(), "DejaVu Serif");
    EXPECT_TRUE(g().surface.font().bold());
    EXPECT_TRUE(g().surface.font().underline());
    EXPECT_EQ(g().surface.font().pointSizeF(), 20.0);
}

TEST_F(CellPainter, WidthFourLeavesNoRoomForText)
{
    setText(1, 1, "WWW");
    g().DrawCell(1, 1, 34, 17, 4, 15);
    EXPECT_EQ(count(QRect(34, 17, 4, 15), White), 60);
    EXPECT_EQ(pixel(38, 20), Magenta);
}

