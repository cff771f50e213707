#include "tests/navigation/NavigationFixture.h"

namespace {

class Editor : public TabulaTest::WithRows<TabulaTest::NavigationFixture, 3> {
protected:
    QStringList editEvents() { return log().only({"BeforeEdit", "AfterEdit", "BeforeAddRow", "AfterAddRow"}); }
};

class EditorEnd;

struct EndCase {
    const char* name;
    std::function<void(EditorEnd&)> close;
    bool hostCancels;
    const char *stored, *current;
    QStringList events;
};

// An editor opened by typing "a" into cell (1, 1) holding "old", on a grid
// with both scroll bars.
class EditorEnd : public TabulaTest::WideGrid, public ::testing::WithParamInterface<EndCase> {
public:
    void type(Qt::Key k) { QTest::keyClick(editor(), k); }
    void step(QScrollBar* bar) { bar->triggerAction(QAbstractSlider::SliderSingleStepAdd); }
    using WideGrid::click;
    using WideGrid::grid;
    using WideGrid::horizontal;
    using WideGrid::key;
    using WideGrid::vertical;
};

using E = EditorEnd&;
const QStringList committed{"BeforeEdit(1,1)", "AfterEdit(1,1,olda)"};

const EndCase endCases[] = {
    {"enter_commits", [](E t) { t.type(Qt::Key_Return); }, false, "olda", "1,1", committed},
    {"cancelled_commit_keeps_the_old_text", [](E t) { t.type(Qt::Key_Return); }, true, "old", "1,1",
     {"BeforeEdit(1,1)", "AfterEdit(1,1,old)"}},
    {"escape_discards_silently", [](E t) { t.type(Qt::Key_Escape); }, false, "old", "1,1", {}},
    {"down_commits_and_moves", [](E t) { t.type(Qt::Key_Down); }, false, "olda", "2,1",
     committed + QStringList{"KeyDown(40,0)", "RowColChange(1,1)", "KeyUp(40,0)"}},
    {"refresh_commits_first", [](E t) { t.grid().Refresh(); }, false, "olda", "1,1", committed},
    {"arrow_on_the_surface_moves_without_after_edit", [](E t) { t.key(Qt::Key_Right); }, false, "old", "1,2",
     {"KeyDown(39,0)", "RowColChange(1,1)", "KeyUp(39,0)"}},
    {"arrow_that_moves_nothing_still_closes", [](E t) { t.key(Qt::Key_Left); }, false, "old", "1,1",
     {"KeyDown(37,0)", "KeyUp(37,0)"}},
    {"vertical_step_drops_the_typed_text", [](E t) { t.step(t.vertical()); }, false, "old", "1,1",
     {"AfterEdit(1,1,old)", "Scroll"}},
    {"horizontal_step_commits", [](E t) { t.step(t.horizontal()); }, false, "olda", "1,1",
     committed + QStringList{"Scroll"}},
    {"cancelled_horizontal_step_keeps_the_old_text", [](E t) { t.step(t.horizontal()); }, true, "old", "1,1",
     {"BeforeEdit(1,1)", "AfterEdit(1,1,old)", "Scroll"}},
    // (130, 56) is the centre of cell (3, 2).
    {"press_elsewhere_commits_first", [](E t) { t.click(QPoint(130, 56)); }, false, "olda", "3,2",
     committed + QStringList{"RowColChange(1,1)", "MouseDown(1,0,130,56)", "MouseUp(1,0,130,56)", "Click"}},
};

TEST_P(EditorEnd, ClosesTheEditorAndStoresByTheWayItEnds)
{
    const EndCase& c = GetParam();
    grid().setTextMatrix(1, 1, "old");
    openEditorWith(Qt::Key_A);
    EXPECT_EQ(editor()->text(), "olda") << "the typed key is appended";
    if (c.hostCancels)
        log().onBeforeEdit = [](int32_t, int32_t, bool& cancel) { cancel = true; };
    c.close(*this);
    QApplication::processEvents();
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(grid().TextMatrix(1, 1), c.stored);
    EXPECT_EQ(current(), c.current);
    EXPECT_EQ(log().entries, c.events);
}

INSTANTIATE_TEST_SUITE_P(Editor, EditorEnd, ::testing::ValuesIn(endCases), TabulaTest::caseName);

TEST_F(Editor, OpensOverTheCurrentCellInsideItsEdgesUnlessCancelledOrLocked)
{
    log().onBeforeEdit = [](int32_t, int32_t, bool& cancel) { cancel = true; };
    key(Qt::Key_A);
    EXPECT_FALSE(editor()->isVisible());
    log().onBeforeEdit = nullptr;
    grid().setColAllowEdit(1, false);
    key(Qt::Key_A);
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_EQ(editEvents(), QStringList({"BeforeEdit(1,1)", "BeforeEdit(1,1)"}));

    grid().setColEditWidth(2, 12);
    grid().setColEditWidth(9, 4);
    grid().setColEditWidth(2, -1);
    EXPECT_EQ(grid().ColEditWidth(2), 12) << "bad arguments are ignored";
    clickCell(2, 2);
    grid().DblClick();
    const QRect r = cell(2, 2);
    const QPoint at = surface()->mapFrom(editor()->parentWidget(), editor()->pos());
    EXPECT_EQ(QRect(at, editor()->size()), QRect(r.left() + 3, r.top() + 2, r.width() - 3, r.height()));
    EXPECT_EQ(editor()->maxLength(), 12);
}

TEST_F(Editor, AutoNewRowAddsARowBelowAnEmptyLastRowOnce)
{
    grid().setRows(1);
    grid().setAutoNewRow(true);
    grid().setTextMatrix(1, 2, "filled");
    grid().DblClick();
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_EQ(grid().Rows(), 1);
    grid().setTextMatrix(1, 2, "");
    log().clear();
    grid().DblClick();
    EXPECT_EQ(grid().Rows(), 2);
    EXPECT_EQ(editEvents(), QStringList({"BeforeEdit(1,1)", "BeforeAddRow", "AfterAddRow(2)"}));
    QTest::keyClick(editor(), Qt::Key_Escape);
    grid().DblClick();
    EXPECT_EQ(grid().Rows(), 2);
}

// With SelectText the key that opens the editor replaces the old text.
TEST_F(Editor, MasksFilterTypedKeysOthersAreTypedAsThemselves)
{
    // What the editor shows is what Enter stores.
    const struct { int32_t mask; const char *typed, *shown; } cases[] = {
        {TabulaControl::NoMask, "+(&", "+(&"},
        {TabulaControl::Uppercase, "ab1-", "AB1-"},
        {TabulaControl::NumericOnly, "1a-2.3.x4", "1-2.3.4"},
    };
    grid().setSelectText(true);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        grid().setColMask(1, c.mask);
        grid().setTextMatrix(1, 1, "old");
        QTest::keyClick(surface(), c.typed[0]);
        QTest::keyClicks(editor(), c.typed + 1);
        EXPECT_EQ(editor()->text(), c.shown);
        QTest::keyClick(editor(), Qt::Key_Return);
        EXPECT_EQ(grid().TextMatrix(1, 1), c.shown);
    }
}

TEST_F(Editor, ADateColumnBuildsTheDateAsItIsTyped)
{
    const std::pair<const char*, const char*> typings[] = {
        {"03072024", "03/07/2024"}, {"372024", "03/07/2024"}, {"1/5/24/", "01/05/2024"}, {"12/31/99/", "12/31/1999"},
        {"13", "1"}, {"0230", "02/03/0"}, {"0229", "02/29/"}, {"0431", "04/3"}, {"1a2", "12/"},
        {"12/31/20245", "12/31/2024"}, {"12/3\b", "12/"}, {"12/\b", "12"}, {"00", "0"}, {"7 Mar 2024", "07/20/24"}};
    grid().setColMask(1, TabulaControl::DateOnly);
    for (const auto& [keys, shown] : typings) {
        grid().DblClick();
        QTest::keyClicks(editor(), keys);
        EXPECT_EQ(editor()->text(), shown) << keys;
        QTest::keyClick(editor(), Qt::Key_Escape);
    }
}

}  // namespace
