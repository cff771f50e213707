#include "layout/PagePlan.h"
#include "tests/support/GridFixture.h"

#include <QBuffer>
#include <QPdfWriter>

using namespace TabulaControl;
using namespace TabulaTest;
namespace layout = TabulaControl::detail::layout;

namespace {

detail::Axis axisOf(const std::vector<int16_t>& sizes)
{
    detail::Axis axis;
    axis.setLastSizedIndex(static_cast<int64_t>(sizes.size()) - 1);
    for (size_t i = 0; i < sizes.size(); ++i)
        axis.setSize(static_cast<int64_t>(i), sizes[i]);
    axis.setCount(static_cast<int32_t>(sizes.size()) - 1);
    return axis;
}

// The pages in order, each side as "line@start ... extent".
std::vector<std::string> pagesOf(const layout::PagePlan& plan)
{
    const auto side = [](const layout::PageLines& lines) {
        std::string text;
        for (const layout::PlacedLine& line : lines.lines)
            text += std::to_string(line.index) + "@" + std::to_string(line.start) + " ";
        return text + std::to_string(lines.extent);
    };
    std::vector<std::string> pages;
    for (size_t i = 0; i < plan.pageCount(); ++i)
        pages.push_back(side(plan.page(i).rows) + " | " + side(plan.page(i).cols));
    return pages;
}

// Rows after the repeated header, the one longer than the room on a page of
// its own; columns without a header; then an axis without lines and no grid
// lines.
TEST(PagePlan, GoesDownThenAcrossEachLineAfterTheOneBefore)
{
    const detail::Axis rows = axisOf({9, 9, 50, 9, 9}), cols = axisOf({9, 9, 9, 9, 9}), none = axisOf({9});
    const std::string left = " | 1@1 2@11 3@21 31", right = " | 4@1 11";
    EXPECT_EQ(pagesOf(layout::PagePlan({rows, true, 30}, {cols, false, 30}, 1)),
              (std::vector<std::string>{"0@1 1@11 21" + left, "0@1 2@11 62" + left, "0@1 3@11 4@21 31" + left,
                                        "0@1 1@11 21" + right, "0@1 2@11 62" + right, "0@1 3@11 4@21 31" + right}));
    EXPECT_EQ(pagesOf(layout::PagePlan({none, true, 30}, {none, false, 30}, 0)), std::vector<std::string>{"0@0 9 | 1"});
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
