#include "tests/navigation/NavigationFixture.h"

#include <QLineEdit>

#include <climits>

using TabulaControl::ComponentError;
using TabulaControl::MemoryPropertyBag;
using TabulaControl::Tabula;

namespace {

class Robustness : public TabulaTest::NavigationFixture {
protected:
    // Puts every count and position back through the public setters, then
    // checks that the grid paints, stores text and follows the keyboard.
    void expectRestorable()
    {
        auto errors = errorSources();
        grid().setAutoRedraw(true);
        grid().setRows(5);
        grid().setCols(3);
        for (auto set : {&Tabula::setTopRow, &Tabula::setLeftCol, &Tabula::setRow, &Tabula::setCol, &Tabula::setRow1,
                         &Tabula::setCol1, &Tabula::setRow2, &Tabula::setCol2})
            (grid().*set)(1);
        grid().Refresh();
        grid().setTextMatrix(2, 2, "back");
        EXPECT_EQ(grid().TextMatrix(2, 2), "back");
        key(Qt::Key_Down);
        EXPECT_EQ(current(), "2,1");
        key(Qt::Key_PageDown);
        EXPECT_EQ(*errors, QStringList());
    }
};

struct Poison {
    const char* name;
    std::function<void(Tabula&)> apply;
};

const Poison poisons[] = {
    {"left_col_minus_one", [](Tabula& g) { g.setLeftCol(-1); }},
    {"left_col_int_min_then_a_page_down",
     [](Tabula& g) {
         g.setLeftCol(INT32_MIN), g.resize(300, 200), g.setLeftCol(2);
         QTest::keyClick(g.findChild<QWidget*>("picGrid"), Qt::Key_PageDown);
     }},
    {"top_row_int_max", [](Tabula& g) { g.setTopRow(INT32_MAX), g.Refresh(); }},
    {"row_negative_then_far_top_row", [](Tabula& g) { g.setRow(-1), g.setTopRow(INT32_MIN), g.setRows(259); }},
    {"col_negative", [](Tabula& g) { g.setCol(-7); }},
    {"row_negative_then_a_typed_key",
     [](Tabula& g) { g.setRow(-1), QTest::keyClick(g.findChild<QWidget*>("picGrid"), Qt::Key_0); }},
    {"editor_open_then_left_col_minus_one",
     [](Tabula& g) { QTest::keyClick(g.findChild<QWidget*>("picGrid"), Qt::Key_A), g.setLeftCol(-1); }},
    {"selection_beyond_the_grid",
     [](Tabula& g) { g.setSelectionMode(TabulaControl::SelectionFree), g.setRow1(-3), g.setCol2(40000), g.Refresh(); }},
    {"rows_negative", [](Tabula& g) { g.setRows(-1); }},
    {"cols_beyond_16_bits", [](Tabula& g) { g.setCols(40000); }},
    {"no_rows_no_cols", [](Tabula& g) { g.setRows(0), g.setCols(0); }},
    {"negative_sizes", [](Tabula& g) { g.setColWidth(1, -300), g.setRowHeight(1, -300); }},
    {"huge_sizes", [](Tabula& g) { g.setColWidth(0, 32767), g.setRowHeight(0, 32767); }},
    {"empty_control", [](Tabula& g) { g.resize(0, 0); }},
};

class RestoreAfter : public Robustness, public ::testing::WithParamInterface<Poison> {};

}  // namespace

TEST_P(RestoreAfter, TheHostCanPutTheGridRightAgain)
{
    grid().setRows(5);
    grid().setCols(3);
    try {
        GetParam().apply(grid());
    } catch (const ComponentError&) {
    }
    grid().resize(400, 300);
    expectRestorable();
}

INSTANTIATE_TEST_SUITE_P(Robustness, RestoreAfter, ::testing::ValuesIn(poisons), TabulaTest::caseName);

struct PageCase {
    const char* name;
    int32_t rows;
    Qt::Key key;
    int32_t from;
    int32_t row;
};

const PageCase pageCases[] = {
    {"up_with_one_row", 1, Qt::Key_PageUp, 1, 1},     {"down_with_one_row", 1, Qt::Key_PageDown, 1, 1},
    {"up_with_two_rows", 2, Qt::Key_PageUp, 2, 2},    {"down_with_two_rows", 2, Qt::Key_PageDown, 1, 1},
    {"home_with_no_rows", 0, Qt::Key_Home, 0, 0},     {"end_with_no_rows", 0, Qt::Key_End, 0, 0},
    {"down_with_no_rows", 0, Qt::Key_PageDown, 0, 0},
};

class PageKeys : public Robustness, public ::testing::WithParamInterface<PageCase> {};

TEST_P(PageKeys, KeepTheCurrentRowInsideTheGrid)
{
    const PageCase& c = GetParam();
    auto errors = errorSources();
    grid().setRows(c.rows);
    if (c.from > 0)
        grid().setRow(c.from);
    key(c.key);
    key(c.key);
    EXPECT_EQ(grid().Row(), c.row);
    EXPECT_LE(grid().TopRow(), std::max(c.rows, 1));
    EXPECT_EQ(*errors, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Robustness, PageKeys, ::testing::ValuesIn(pageCases), TabulaTest::caseName);

struct CorruptSetting {
    const char* name;
    const char* property;
    QVariant value;
};

const CorruptSetting corruptSettings[] = {
    {"negative_rows", "Rows", -5},
    {"colour_as_list", "BackColor", QStringList{"red"}},
    {"huge_format_string", "FormatString", QString(200000, QChar('|'))},
    {"border_beyond_16_bits", "BorderStyle", 1e12},
    {"row_past_the_rows", "Row", 32767},
    {"selection_mode_out_of_range", "SelectionMode", 99},
    {"fixed_style_out_of_range", "FixedStyle", -4},
};

class CorruptSettings : public Robustness, public ::testing::WithParamInterface<CorruptSetting> {};

TEST_P(CorruptSettings, EndInTheComponentErrorOrLoadAndLeaveAUsableGrid)
{
    MemoryPropertyBag bag;
    bag.values.insert(GetParam().property, GetParam().value);
    try {
        Tabula loaded(bag);
        loaded.resize(200, 100);
        loaded.show();
        loaded.setRows(3);
        loaded.setCols(3);
        loaded.setRow(1);
        loaded.setCol(1);
        loaded.Refresh();
        loaded.setTextMatrix(1, 1, "ok");
        EXPECT_EQ(loaded.TextMatrix(1, 1), "ok");
    } catch (const ComponentError& error) {
        EXPECT_TRUE(error.Source.startsWith("TabulaControl.Tabula.")) << error.Source.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Robustness, CorruptSettings, ::testing::ValuesIn(corruptSettings), TabulaTest::caseName);

TEST_F(Robustness, TheEditorNeverCutsTheTextAlreadyInTheCell)
{
    const QString sixty(60, QChar('x'));
    grid().setTextMatrix(1, 1, sixty);
    QTest::mouseDClick(surface(), Qt::LeftButton, {}, centre(1, 1));
    ASSERT_TRUE(editor()->isVisible());
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(grid().TextMatrix(1, 1), sixty);
}

TEST_F(Robustness, TabInTheEditorMovesTheFocusOnAndCommits)
{
    QWidget form;
    QLineEdit next(&form);
    grid().setParent(&form);
    form.show();
    QApplication::setActiveWindow(&form);
    startAt(1, 1);
    key(Qt::Key_A);
    QApplication::processEvents();
    ASSERT_TRUE(editor()->hasFocus());
    QTest::keyClick(editor(), Qt::Key_B);
    QTest::keyClick(editor(), Qt::Key_Tab);
    QApplication::processEvents();
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(grid().TextMatrix(1, 1), "ab");
    EXPECT_TRUE(log().entries.contains("AfterEdit(1,1,ab)")) << log().entries.join(' ').toStdString();
    grid().setParent(nullptr);
}

TEST_F(Robustness, TheViewFollowsItsScrollBarWhenRowsGoAway)
{
    grid().setRows(50);
    vertical()->setValue(50);
    grid().RemoveItem(50);
    EXPECT_EQ(grid().TopRow(), vertical()->value());

    vertical()->setValue(30);
    grid().Clear();
    grid().AddItem("first");
    EXPECT_EQ(grid().TopRow(), 1);
    EXPECT_EQ(vertical()->value(), 1);
    EXPECT_NE(pixel(centre(1, 1).x(), centre(1, 1).y()), 0x808080u);
}

TEST_F(Robustness, ALongCellPaintsExactlyAsTheTextThatShowsOfIt)
{
    const QString tail = "tail end";
    for (int32_t align : {0, 2}) {
        grid().setColAlign(1, align);
        grid().setTextMatrix(1, 1, QString(300, 'w') + tail);
        const QImage shortCell = picture();
        grid().setTextMatrix(1, 1, QString(99000, 'w') + tail);
        EXPECT_EQ(picture(), shortCell) << "alignment " << align;
    }
}

TEST_F(Robustness, ADragThatStartsOnNoBorderRaisesNothing)
{
    auto errors = errorSources();
    grid().setRows(20);
    hover(QPoint(60, 8));
    grid().setMousePointer(9);
    click(QPoint(60, 100));
    EXPECT_EQ(*errors, QStringList());
}

TEST_F(Robustness, TypingOnTheLastRowOfAFullGridEditsWithoutAddingARow)
{
    auto errors = errorSources();
    grid().setAutoNewRow(true);
    grid().setRows(32767);
    grid().setRow(32767);
    key(Qt::Key_A);
    QApplication::processEvents();
    EXPECT_EQ(*errors, QStringList());
    EXPECT_EQ(grid().Rows(), 32767);
    EXPECT_TRUE(editor()->isVisible());
}

// A layout is skipped while nothing it reads has changed; these change what
// it reads past where a grid line per row or column would let it show.
TEST_F(Robustness, ShortRowsWithoutGridLinesStillBringTheScrollBarWhenRowsAreAdded)
{
    grid().setShowGrid(false);
    grid().setRows(63);
    for (int32_t row = 1; row <= 63; ++row)
        grid().setRowHeight(row, 4);
    ASSERT_FALSE(vertical()->isVisible());
    grid().AddItem("a");
    grid().AddItem("b");
    EXPECT_TRUE(vertical()->isVisible());
}

TEST_F(Robustness, AColumnPulledIntoViewByANegativeHeaderWidthMovesItsResizeZone)
{
    grid().setColWidth(0, -32768);
    grid().setColWidth(1, 32767);
    grid().setColWidth(2, 100);
    hover(QPoint(101, 8));
    drag(QPoint(101, 8), QPoint(150, 8));
    EXPECT_NE(grid().ColWidth(2), 100);
}
