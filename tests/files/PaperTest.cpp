#include "layout/PagePlan.h"
#include "tests/support/GridFixture.h"

#include <QBuffer>
#include <QPdfWriter>

using namespace TabulaControl;
using namespace TabulaTest;
namespace layout = TabulaControl::detail::layout;

namespace {

struct SplitCase {
    const char* name;
    std::vector<int16_t> sizes;  // the header line first
    bool header;
    int32_t room;
    std::vector<layout::LineRun> runs;
};

class PageSplit : public ::testing::TestWithParam<SplitCase> {};

TEST_P(PageSplit, RunsFitTheRoomAfterTheHeader)
{
    detail::Axis axis;
    axis.setLastSizedIndex(static_cast<int64_t>(GetParam().sizes.size()) - 1);
    for (size_t i = 0; i < GetParam().sizes.size(); ++i)
        axis.setSize(static_cast<int64_t>(i), GetParam().sizes[i]);
    axis.setCount(static_cast<int32_t>(GetParam().sizes.size()) - 1);
    EXPECT_EQ(layout::splitLines(axis, GetParam().header, GetParam().room, 1), GetParam().runs);
}

INSTANTIATE_TEST_SUITE_P(Cases, PageSplit, ::testing::Values(
    SplitCase{"header_repeated", {9, 9, 9, 9, 9}, true, 30, {{1, 2}, {3, 4}}},
    SplitCase{"without_header", {9, 9, 9, 9, 9}, false, 30, {{1, 3}, {4, 4}}},
    SplitCase{"line_longer_than_the_room", {9, 50, 9}, true, 30, {{1, 1}, {2, 2}}},
    SplitCase{"no_lines", {9}, true, 30, {{1, 0}}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PagePlan, GoesDownThenAcross)
{
    const auto pages = layout::planPages({{1, 2}, {3, 4}}, {{1, 5}, {6, 6}});
    EXPECT_EQ(pages, (std::vector<layout::PrintedPage>{{{1, 2}, {1, 5}}, {{3, 4}, {1, 5}}, {{1, 2}, {6, 6}},
                                                        {{3, 4}, {6, 6}}}));
}

class Paper : public GridFixture {
protected:
    int printedPages()
    {
        QBuffer pdf;
        pdf.open(QIODevice::WriteOnly);
        QPdfWriter writer(&pdf);
        writer.setResolution(96);
        grid().print(&writer);
        return static_cast<int>(pdf.data().count("/Type /Page\n"));
    }
};

// An A4 page at 96 dpi holds 66 rows of 15 pixels under the header and 11
// columns of 64 pixels beside it, both with their grid lines.
TEST_F(Paper, PagesSplitBetweenRowsAndColumns)
{
    grid().setCols(11);
    grid().setRows(66);
    EXPECT_EQ(printedPages(), 1);
    grid().setRows(67);
    EXPECT_EQ(printedPages(), 2);
    grid().setCols(12);
    EXPECT_EQ(printedPages(), 4);
}

TEST_F(Paper, FollowPaletteTakesSystemColoursFromThePalette)
{
    grid().setRows(2);
    grid().setBackColorBkg(0x80000005);  // the window's base colour
    const QPoint past = {380, 200};
    QPalette dark = grid().palette();
    dark.setColor(QPalette::Base, QColor(0x202020));
    grid().setPalette(dark);
    EXPECT_EQ(pixel(past.x(), past.y()), 0xFFFFFFu);
    grid().setFollowPalette(true);
    EXPECT_EQ(pixel(past.x(), past.y()), 0x202020u);
    dark.setColor(QPalette::Base, QColor(0x102030));
    grid().setPalette(dark);
    EXPECT_EQ(pixel(past.x(), past.y()), 0x102030u);
    grid().setFollowPalette(false);
    EXPECT_EQ(pixel(past.x(), past.y()), 0xFFFFFFu);
}

TEST_F(Paper, LayoutRestoresWhatFits)
{
    grid().setCols(3);
    grid().setRows(2);
    grid().setColWidth(2, 90);
    grid().setColAlign(3, 2);
    grid().setRowHeight(1, 30);
    const QByteArray layout = grid().saveLayout();
    grid().setColWidth(2, 10);
    EXPECT_FALSE(grid().restoreLayout("garbage"));
    EXPECT_FALSE(grid().restoreLayout(layout.chopped(1)));
    EXPECT_EQ(grid().ColWidth(2), 10);
    EXPECT_TRUE(grid().restoreLayout(layout));
    EXPECT_EQ(grid().ColWidth(2), 90);
    grid().setCols(2);
    grid().setColWidth(2, 10);
    grid().setRows(1);
    grid().setRowHeight(1, 15);
    EXPECT_FALSE(grid().restoreLayout(layout));
    EXPECT_EQ(grid().ColWidth(2), 90);
    EXPECT_EQ(grid().RowHeight(1), 30);
}

}  // namespace
