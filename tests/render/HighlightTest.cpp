#include "tests/render/RenderSupport.h"

#include <array>

namespace {

constexpr uint32_t White = 0xFFFFFF, Black = 0x000000, Face = 0xC0C0C0, InvertedGridLine = 0x3F3F3F;

// Ten rows of 64 x 15 cells; cell (r, c) starts at (34 + 65 (c - 1), 17 + 16 (r - 1)).
class Highlight : public TabulaTest::PaintFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setRows(10);
    }
    uint32_t centreOf(int32_t row, int32_t col) { return pixel(cell(row, col).center().x(), cell(row, col).center().y()); }
    void refreshSelecting(int32_t row1, int32_t col1, int32_t row2, int32_t col2)
    {
        s().mRow1 = row1;
        s().mCol1 = col1;
        s().mRow2 = row2;
        s().mCol2 = col2;
        g().Refresh();
    }
};

}  // namespace

TEST_F(Highlight, RefreshInvertsTheBlockReachingTwoPixelsPastItAndShowsTheAnchorInNormalColours)
{
    refreshSelecting(1, 1, 3, 2);
    EXPECT_EQ(centreOf(1, 1), White);
    for (auto [r, c] : {std::pair{1, 2}, {2, 1}, {2, 2}, {3, 1}, {3, 2}})
        EXPECT_EQ(centreOf(r, c), Black) << r << "," << c;
    EXPECT_EQ(centreOf(4, 1), White);
    EXPECT_EQ(centreOf(1, 3), White);
    const int y = cell(2, 1).center().y();
    EXPECT_EQ(pixel(163, y), InvertedGridLine);
    EXPECT_EQ(pixel(164, y), Black);
    EXPECT_EQ(pixel(165, y), White);
    EXPECT_EQ(pixel(50, 64), InvertedGridLine);
    EXPECT_EQ(pixel(50, 65), Black);
    EXPECT_EQ(pixel(50, 66), White);
    EXPECT_EQ(pixel(98, cell(1, 1).center().y()), Face) << "the anchor's own reach is inverted twice";
}

TEST_F(Highlight, WithoutGridTheInversionEndsAtTheLastCell)
{
    s().mShowGrid = false;
    refreshSelecting(1, 1, 2, 2);
    // Columns of 64 from 33, rows of 15 from 16: column 2 ends at 160, row 2 at 45.
    EXPECT_EQ(pixel(160, 40), Black);
    EXPECT_EQ(pixel(161, 40), White);
    EXPECT_EQ(pixel(120, 45), Black);
    EXPECT_EQ(pixel(120, 46), White);
}

TEST_F(Highlight, SelectionDrawnTwiceLeavesTheSurfaceAsItWas)
{
    const QImage before = image();
    g().HilightSelection(2, 2, 4, 3);
    EXPECT_NE(image(), before);
    g().HilightSelection(2, 2, 4, 3);
    EXPECT_EQ(image(), before);
}

TEST_F(Highlight, OnlyTheVisiblePartOfABlockScrolledOffTheTopIsInverted)
{
    g().setRows(30);
    s().mTopRow = 5;
    g().Refresh();
    const QImage before = image();
    g().HilightSelection(1, 1, 4, 2);
    EXPECT_EQ(image(), before);
    g().HilightSelection(2, 1, 6, 1);
    EXPECT_EQ(centreOf(5, 1), Black);
    EXPECT_EQ(centreOf(6, 1), Black);
    EXPECT_EQ(centreOf(7, 1), White);
}

TEST_F(Highlight, FocusRectangleTogglesOnTheCellBorder)
{
    const QImage before = image();
    g().HilightCell(2, 2);
    const QImage marked = image();
    const QRect r = cell(2, 2);
    int changed = 0;
    for (int y = 0; y < marked.height(); ++y)
        for (int x = 0; x < marked.width(); ++x) {
            if (marked.pixel(x, y) == before.pixel(x, y))
                continue;
            ++changed;
            const bool onBorder = x == r.left() || x == r.right() || y == r.top() || y == r.bottom();
            EXPECT_TRUE(onBorder && r.contains(x, y)) << x << "," << y;
        }
    EXPECT_GT(changed, 40);
    g().HilightCell(2, 2);
    EXPECT_EQ(image(), before);
}

TEST_F(Highlight, HeaderCellsAndCellsLeftOfTheScrolledColumnsGetNoMark)
{
    const QImage before = image();
    g().HilightCell(0, 1);
    g().HilightCell(1, 0);
    s().mLeftCol = 2;
    g().HilightCell(1, 1);
    EXPECT_EQ(image(), before);
}

TEST_F(Highlight, MarkPlacesTheHiddenEditorOverTheCell)
{
    s().mColEditWidth(2) = 12;
    g().HilightCell(2, 2);
    auto& editor = g().ui.txtEdit;
    EXPECT_EQ(editor.Left(), 99 + 3);
    EXPECT_EQ(editor.Top(), 33 + 2);
    EXPECT_EQ(editor.Width(), 61);
    EXPECT_EQ(editor.Height(), 15);
    EXPECT_EQ(editor.MaxLength(), 12);
    EXPECT_FALSE(editor.Visible());
    s().mColWidth(2) = 2;
    g().HilightCell(2, 2);
    EXPECT_EQ(editor.Width(), 0);
}

TEST_F(Highlight, SelectionModesWidenToTheWholeCurrentRowOrColumn)
{
    s().mSelectionMode = TabulaControl::SelectionByRow;
    s().mRow = 4;
    s().mCol = 3;
    g().Refresh();
    EXPECT_EQ((std::array{s().mRow1, s().mRow2, s().mCol1, s().mCol2}), (std::array{4, 4, 0, 5}));
    EXPECT_TRUE(s().mRowsSelected);
    for (int32_t c = 1; c <= 5; ++c)
        EXPECT_EQ(centreOf(4, c), Black) << c;
    EXPECT_EQ(centreOf(3, 3), White);

    s().mSelectionMode = TabulaControl::SelectionByCol;
    s().mCol = 2;
    g().CheckHighlight();
    EXPECT_EQ((std::array{s().mRow1, s().mRow2, s().mCol1, s().mCol2}), (std::array{0, 10, 2, 2}));
    EXPECT_TRUE(s().mColumnsSelected);
}
