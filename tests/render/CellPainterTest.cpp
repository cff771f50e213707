#include "tests/render/RenderSupport.h"

using TabulaControl::checkmark;
using TabulaTest::caseName;

namespace {

constexpr uint32_t White = 0xFFFFFF, Black = 0x000000, Face = 0xC0C0C0, Shadow = 0x808080, Magenta = 0xFF00FF;

// Cells painted one at a time over a magenta ground, so that every pixel a
// cell covers is recognisable.
class CellPainter : public TabulaTest::PaintFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setRows(6);
        g().surface.fill({0, 0, 395, 295}, Magenta);
    }
    QRect draw(int32_t row, int32_t col)
    {
        const QRect r = cell(row, col);
        g().drawCell(row, col, r.x(), r.y(), r.width(), r.height());
        return r;
    }
    void setText(int16_t row, int16_t col, const QString& text) { s().mCells.setText(row, col, text); }
    const QFont& font() { return g().surface.font(); }
};

struct BackgroundCase {
    const char* name;
    bool useAlternate;
    int16_t row;
    int32_t cellBackColor;
    uint32_t expected;
};
class Background : public CellPainter, public ::testing::WithParamInterface<BackgroundCase> {};

struct ButtonCase {
    const char* name;
    int16_t value;
    uint32_t leftEdge, rightEdge;
};
class ButtonFace : public CellPainter, public ::testing::WithParamInterface<ButtonCase> {};

struct CheckBoxCase {
    const char* name;
    int16_t width;
    const char* text;
    int32_t left;
    bool checked;
};
class CheckBox : public CellPainter, public ::testing::WithParamInterface<CheckBoxCase> {};

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

INSTANTIATE_TEST_SUITE_P(
    CellPainter, Background,
    ::testing::Values(BackgroundCase{"plain", false, 1, -1, White}, BackgroundCase{"odd_row_alternate", true, 1, -1, 0xFFFF00},
                      BackgroundCase{"even_row_normal", true, 2, -1, White},
                      BackgroundCase{"own_colour_in_odd_row", true, 1, 0x0000FF, 0xFF0000},
                      BackgroundCase{"own_colour_in_even_row", true, 2, 0x0000FF, 0xFF0000},
                      BackgroundCase{"system_colour_counts_as_unset", false, 2, static_cast<int32_t>(0x80000001u), White}),
    caseName<BackgroundCase>);

TEST_P(ButtonFace, DataCellOfButtonStyleCoversItsGridLines)
{
    s().mCells.setStyle(2, 2, 1);
    s().mCells.setValue(2, 2, GetParam().value);
    const QRect r = draw(2, 2);
    const int midY = r.top() + 5;
    EXPECT_EQ(pixel(r.left(), midY), GetParam().leftEdge);
    EXPECT_EQ(pixel(r.left() + 5, r.top()), GetParam().leftEdge);
    EXPECT_EQ(pixel(r.right() + 1, midY), GetParam().rightEdge);
    EXPECT_EQ(pixel(r.left() + 5, r.bottom() + 1), GetParam().rightEdge);
    EXPECT_EQ(pixel(r.left() + 5, midY), Face);
    EXPECT_EQ(pixel(r.right() + 2, midY), Magenta);
}

INSTANTIATE_TEST_SUITE_P(CellPainter, ButtonFace,
                         ::testing::Values(ButtonCase{"raised", 0, White, Black}, ButtonCase{"pressed", -1, Black, White},
                                           ButtonCase{"flat_face", 1, Face, Face}),
                         caseName<ButtonCase>);

TEST_P(CheckBox, SitsAtTheRoundedCentreAndIsCheckedOnlyByOne)
{
    const CheckBoxCase& c = GetParam();
    g().setColMask(1, checkmark);
    g().surface.fill({0, 0, 395, 295}, Magenta);
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
    EXPECT_EQ(count(QRect(c.left + 2, top + 2, 11, 11), Black) > 0, c.checked);
    EXPECT_EQ(count(QRect(r.left(), r.top(), c.left - r.left(), r.height()), White), (c.left - r.left()) * r.height())
        << "no text beside the box";
}

// Left edge round(34 + width / 2 - 7), halves to even.
INSTANTIATE_TEST_SUITE_P(CellPainter, CheckBox,
                         ::testing::Values(CheckBoxCase{"checked", 64, "1", 59, true},
                                           CheckBoxCase{"zero_is_empty", 64, "0", 59, false},
                                           CheckBoxCase{"empty_text_is_empty", 64, "", 59, false},
                                           CheckBoxCase{"half_rounds_up_to_even", 65, "1", 60, true},
                                           CheckBoxCase{"half_rounds_down_to_even", 63, "1", 58, true}),
                         caseName<CheckBoxCase>);

TEST_F(CellPainter, TextColourIsTheCellsOwnThenTheGridsThenTheFixedOne)
{
    for (auto [r, c] : {std::pair{1, 1}, {1, 2}, {0, 1}})
        setText(int16_t(r), int16_t(c), "WWWW");
    s().mCells.setForeColor(1, 1, 0x0000FF);
    s().mForeColorFixed = 0x00FF00;
    EXPECT_GT(count(draw(1, 1), 0xFF0000), 0);
    const QRect plain = draw(1, 2);
    EXPECT_GT(count(plain, Black), 0);
    EXPECT_EQ(count(plain, 0xFF0000), 0);
    EXPECT_GT(count(draw(0, 1), 0x00FF00), 0);
    EXPECT_EQ(g().surface.textColor(), 0x00FF00u);
}

TEST_F(CellPainter, FixedCellsTakeTheFixedFontDataCellsTheSharedGridFontReadAtPaintTime)
{
    s().mFontFixed->Name = "DejaVu Serif";
    draw(1, 0);
    EXPECT_EQ(font().family(), "DejaVu Serif");
    EXPECT_TRUE(font().bold());
    s().mFont->Name = "DejaVu Sans";
    s().mFont->Italic = true;
    draw(1, 1);
    EXPECT_EQ(font().family(), "DejaVu Sans");
    EXPECT_FALSE(font().bold());
    EXPECT_TRUE(font().italic());
}

TEST_F(CellPainter, CellFontReplacesTheGridFontOnlyWithAName)
{
    s().mCells.setFontBold(1, 1, true);
    s().mCells.setFontSize(1, 1, 20);
    draw(1, 1);
    EXPECT_FALSE(font().bold());
    EXPECT_EQ(font().pointSizeF(), s().mFont->Size);
    s().mCells.setFontName(1, 1, "DejaVu Serif");
    s().mCells.setFontUnderline(1, 1, true);
    draw(1, 1);
    EXPECT_EQ(font().family(), "DejaVu Serif");
    EXPECT_TRUE(font().bold());
    EXPECT_TRUE(font().underline());
    EXPECT_EQ(font().pointSizeF(), 20.0);
}

TEST_F(CellPainter, WidthFourLeavesNoRoomForText)
{
    setText(1, 1, "WWW");
    g().drawCell(1, 1, 34, 17, 4, 15);
    EXPECT_EQ(count(QRect(34, 17, 4, 15), White), 60);
    EXPECT_EQ(pixel(38, 20), Magenta);
}
