#include "tests/support/GridFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <stdexcept>

using TabulaControl::Tabula;

namespace {

// A grid of 3 rows and 3 columns whose cells read "r,c".
class Clipboard : public TabulaTest::GridFixture {
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        fillWithPositions(3, 3);
        log().clear();
    }
    static QClipboard* clipboard() { return QApplication::clipboard(); }
};

TEST_F(Clipboard, CopiesTheSelectedBlockOrElseTheCurrentCellAsTextAndHtml)
{
    moveTo(2, 3);
    select(2, 3, 2, 3);
    ASSERT_TRUE(QMetaObject::invokeMethod(&grid(), "copySelection"));
    EXPECT_EQ(clipboard()->text(), "2,3\n");

    select(3, 2, 2, 0);
    grid().setTextMatrix(2, 1, "a\tb \"q\"");
    grid().setTextMatrix(3, 2, "<b>");
    grid().copySelection();
    EXPECT_EQ(clipboard()->text(), "\"a\tb \"\"q\"\"\"\t2,2\n3,1\t<b>\n");
    EXPECT_EQ(clipboard()->mimeData()->html(),
              "<table><tr><td>a\tb &quot;q&quot;</td><td>2,2</td></tr><tr><td>3,1</td><td>&lt;b&gt;</td></tr></table>");
}

struct PasteCase {
    const char* name;
    const char* text;
    int32_t row, col;
    const char* cells;
    int32_t dropped;
    std::function<void(Tabula&)> prepare;
};

const PasteCase pasteCases[] = {
    {"a_block_from_the_current_cell", "a\tb\nc\td\n", 2, 2, "1,1 1,2 1,3/2,1 a b/3,1 c d", 0, nullptr},
    {"quoted_cells_keep_tabs_and_line_breaks", "\"x\ty\"\t\"p\nq\"", 1, 1, "x\ty p\nq 1,3/2,1 2,2 2,3/3,1 3,2 3,3", 0, nullptr},
    {"cells_beyond_the_grid_are_reported", "a\tb\tc\nd\te\tf\n", 3, 2, "1,1 1,2 1,3/2,1 2,2 2,3/3,1 a b", 4, nullptr},
    {"the_column_mask_shapes_the_value", "abc\t1a-2.b\t3/7/24", 1, 1, "ABC 1-2. 03/07/2024/2,1 2,2 2,3/3,1 3,2 3,3", 0,
     [](Tabula& g) {
         g.setColMask(1, TabulaControl::Uppercase);
         g.setColMask(2, TabulaControl::NumericOnly);
         g.setColMask(3, TabulaControl::DateOnly);
     }},
    {"the_edit_width_limits_the_value", "abcdef", 1, 1, "abc 1,2 1,3/2,1 2,2 2,3/3,1 3,2 3,3", 0,
     [](Tabula& g) { g.setColEditWidth(1, 3); }},
    {"a_column_that_allows_no_edit_keeps_its_text", "a\tb", 1, 1, "1,1 b 1,3/2,1 2,2 2,3/3,1 3,2 3,3", 0,
     [](Tabula& g) { g.setColAllowEdit(1, false); }},
};

class Paste : public Clipboard, public ::testing::WithParamInterface<PasteCase> {};

TEST_P(Paste, StoresEachCellAsAnEditWould)
{
    const PasteCase& c = GetParam();
    if (c.prepare)
        c.prepare(grid());
    moveTo(c.row, c.col);
    clipboard()->setText(c.text);
    QSignalSpy clipped(&grid(), &Tabula::pasteClipped);
    EXPECT_EQ(grid().paste(), c.dropped);
    EXPECT_EQ(cells(), c.cells);
    EXPECT_EQ(clipped.size(), c.dropped > 0 ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Clipboard, Paste, ::testing::ValuesIn(pasteCases), TabulaTest::caseName);

TEST_F(Clipboard, PasteRaisesTheEditEventsAndACancelledCellKeepsItsText)
{
    log().onBeforeEdit = [](int32_t, int32_t col, bool& cancel) { cancel = col == 2; };
    clipboard()->setText("a\tb");
    grid().paste();
    EXPECT_EQ(cells().section('/', 0, 0), "a 1,2 1,3");
    EXPECT_EQ(log().entries, QStringList({"BeforeEdit(1,1)", "AfterEdit(1,1,a)", "BeforeEdit(1,2)"}));
}

TEST_F(Clipboard, CtrlCAndCtrlVReachTheGridUntilTheShortcutsAreTurnedOn)
{
    EXPECT_FALSE(grid().clipboardShortcuts());
    clipboard()->setText("pasted");
    QTest::keyClick(surface(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(log().only({"KeyPress", "BeforeEdit"}), QStringList({"KeyPress(99)", "BeforeEdit(1,1)"}));
    EXPECT_EQ(clipboard()->text(), "pasted");
    QTest::keyClick(child("txtEdit"), Qt::Key_Escape);

    grid().setClipboardShortcuts(true);
    EXPECT_TRUE(grid().clipboardShortcuts());
    moveTo(2, 2);
    log().clear();
    QTest::keyClick(surface(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(surface(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(log().entries, QStringList({"KeyDown(17,2)", "BeforeEdit(2,2)", "AfterEdit(2,2,pasted)", "KeyUp(17,0)",
                                          "KeyDown(17,2)", "KeyUp(17,0)"}));
    EXPECT_EQ(clipboard()->text(), "pasted\n");
}

TEST_F(Clipboard, PasteIsASlotThatReportsTheFailureOfItsSignal)
{
    const auto reported = errorSources();
    QObject::connect(&grid(), &Tabula::BeforeEdit, [] { throw std::runtime_error("host failure"); });
    QAction paste;
    QObject::connect(&paste, SIGNAL(triggered()), &grid(), SLOT(paste()));
    clipboard()->setText("a");
    paste.trigger();
    EXPECT_EQ(*reported, QStringList{"TabulaControl.Tabula.paste"});
}

}  // namespace
