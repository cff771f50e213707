#include "tests/render/RenderSupport.h"

#include <array>

namespace {

// Ten rows of 64 x 15 cells; cell (r, c) starts at (34 + 65 (c - 1), 17 + 16 (r - 1)).
class Highlight : public TabulaTest::PaintFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setRows(10);
    }
};

}  // namespace

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

    s().mSelectionMode = TabulaControl::SelectionByCol;
    s().mCol = 2;
    g().CheckHighlight();
    EXPECT_EQ((std::array{s().mRow1, s().mRow2, s().mCol1, s().mCol2}), (std::array{0, 10, 2, 2}));
    EXPECT_TRUE(s().mColumnsSelected);
}
