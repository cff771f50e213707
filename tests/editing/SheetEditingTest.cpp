#include "tests/navigation/NavigationFixture.h"

#include <QClipboard>
#include <QListWidget>
#include <QUndoStack>

namespace {

// A grid of 3 x 3 cells reading "r,c", spreadsheet keys on.
class Sheet : public TabulaTest::NavigationFixture {
public:
    void SetUp() override
    {
        NavigationFixture::SetUp();
        fillWithPositions(3, 3);
        grid().setSpreadsheetKeys(true);
        moveTo(1, 1);
        log().clear();
    }
    void key(QWidget* target, Qt::Key k, Qt::KeyboardModifiers mods = {}) { QTest::keyClick(target, k, mods); }
    void onSurface(Qt::Key k, Qt::KeyboardModifiers mods = {}) { key(surface(), k, mods); }
    QStringList afterEdits() { return log().only({"AfterEdit"}); }
    using NavigationFixture::editor;
    using NavigationFixture::grid;
    using NavigationFixture::moveTo;
    using NavigationFixture::select;
    using NavigationFixture::surface;
};

struct UndoCase {
    const char* name;
    std::function<void(Sheet&)> act;
    const char* changed;
    int commands;
    std::function<void(Sheet&)> prepare = nullptr;
    const char* undoRedoEdits = nullptr;  // the AfterEdit events of an undo and a redo
};

class Undo : public Sheet, public ::testing::WithParamInterface<UndoCase> {};

const UndoCase undoCases[] = {
    {"editor_commit", [](Sheet& t) {
         QTest::keyClick(t.surface(), 'a');
         t.key(t.editor(), Qt::Key_Return);
     }, "1,1a 1,2 1,3/2,1 2,2 2,3/3,1 3,2 3,3", 1},
    {"check_mark_toggle", [](Sheet& t) { QTest::keyClick(t.surface(), ' '); }, "1 1,2 1,3/0 2,2 2,3/0 3,2 3,3", 1,
     [](Sheet& t) { t.grid().setColMask(1, TabulaControl::checkmark); }},
    {"edit_that_added_a_row", [](Sheet& t) {
         QTest::keyClick(t.surface(), 'n');
         t.key(t.editor(), Qt::Key_Return);
         t.grid().setRow2(5);
     }, "1,1 1,2 1,3/2,1 2,2 2,3/3,1 3,2 3,3/ n /  ", 1,
     [](Sheet& t) { t.grid().setAutoNewRow(true), t.grid().setRows(4), t.moveTo(4, 2); },
     "AfterEdit(4,2,) AfterEdit(4,2,n)"},
    {"list_pick", [](Sheet& t) {
         t.grid().AddLookup(1, "pick");
         t.grid().setCol(1);
         QTest::mouseClick(t.grid().findChild<QWidget*>("cmdLookup"), Qt::LeftButton);
         auto* list = t.grid().findChild<QListWidget*>("List1");
         t.key(list, Qt::Key_Home);
         t.key(list, Qt::Key_Return);
     }, "pick 1,2 1,3/2,1 2,2 2,3/3,1 3,2 3,3", 1},
    {"paste_block", [](Sheet& t) {
         QApplication::clipboard()->setText("p\tq\nr\ts");
         t.onSurface(Qt::Key_V, Qt::ControlModifier);
     }, "p q 1,3/r s 2,3/3,1 3,2 3,3", 1},
    {"delete_clears_the_block", [](Sheet& t) {
         t.select(2, 2, 3, 3);
         t.onSurface(Qt::Key_Delete);
     }, "1,1 1,2 1,3/2,1  /3,1  ", 1},
    {"cut", [](Sheet& t) { t.onSurface(Qt::Key_X, Qt::ControlModifier); },
     " 1,2 1,3/2,1 2,2 2,3/3,1 3,2 3,3", 1},
    {"host_changes_are_not_recorded", [](Sheet& t) { t.grid().setTextMatrix(1, 1, "host"); },
     "host 1,2 1,3/2,1 2,2 2,3/3,1 3,2 3,3", 0},
};

TEST_P(Undo, EachUserChangeIsOneCommandThatUndoAndRedoRestoreWithAfterEdit)
{
    const UndoCase& c = GetParam();
    if (c.prepare)
        c.prepare(*this);
    const QString before = cells();
    c.act(*this);
    QApplication::processEvents();
    EXPECT_EQ(cells(), QString(c.changed));
    ASSERT_EQ(grid().undoStack()->count(), c.commands);
    if (c.commands == 0)
        return;
    log().clear();
    onSurface(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cells(), before);
    EXPECT_LE(grid().Row2(), grid().Rows()) << "the block keeps within the rows";
    EXPECT_FALSE(afterEdits().isEmpty());
    onSurface(Qt::Key_Y, Qt::ControlModifier);
    if (c.undoRedoEdits) {
        EXPECT_EQ(afterEdits().join(' '), c.undoRedoEdits);
    }
    const QString changed = cells();
    onSurface(Qt::Key_Z, Qt::ControlModifier);
    onSurface(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(cells(), changed);
}

INSTANTIATE_TEST_SUITE_P(Sheet, Undo, ::testing::ValuesIn(undoCases), TabulaTest::caseName);

TEST_F(Sheet, F2EditsWithTheCaretAtTheEndAndEnterAndTabCommitAndMove)
{
    grid().setSelectText(true);
    onSurface(Qt::Key_F2);
    ASSERT_TRUE(editor()->isVisible());
    EXPECT_EQ(editor()->text(), "1,1");
    EXPECT_EQ(editor()->cursorPosition(), 3);
    EXPECT_FALSE(editor()->hasSelectedText());
    QTest::keyClicks(editor(), "x");
    key(editor(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(grid().TextMatrix(1, 1), "1,1x");
    EXPECT_EQ(current(), "2,1");

    const struct { int32_t col; Qt::Key key; const char* to; } tabs[] = {
        {2, Qt::Key_Tab, "2,3"}, {3, Qt::Key_Tab, "3,1"}, {1, Qt::Key_Backtab, "1,3"}};
    for (const auto& tab : tabs) {
        moveTo(2, tab.col);
        onSurface(Qt::Key_F2);
        key(editor(), tab.key, tab.key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QApplication::processEvents();
        EXPECT_FALSE(editor()->isVisible());
        EXPECT_EQ(current(), tab.to) << tab.col;
    }
}

TEST_F(Sheet, CornerKeysMoveAndEscapeAndLockedCellsStayPutButOffTheKeysKeepTheirMeaning)
{
    onSurface(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(current(), "3,3");
    onSurface(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(current(), "1,1");
    onSurface(Qt::Key_Escape);
    EXPECT_FALSE(editor()->isVisible());
    grid().setColAllowEdit(2, false);
    log().onBeforeEdit = [](int32_t row, int32_t, bool& cancel) { cancel = row == 1; };
    select(1, 1, 2, 2);
    onSurface(Qt::Key_Delete);
    EXPECT_EQ(cells(), QString("1,1 1,2 1,3/ 2,2 2,3/3,1 3,2 3,3"));

    grid().setSpreadsheetKeys(false);
    log().onBeforeEdit = nullptr;
    select(2, 2, 2, 3);
    onSurface(Qt::Key_F2);
    EXPECT_FALSE(editor()->isVisible());
    onSurface(Qt::Key_Delete);
    EXPECT_EQ(cells(), QString("1,1 1,2 1,3/ 2,2 2,3/3,1 3,2 3,3"));
    onSurface(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(current(), "3,1");
}

struct SortCase {
    const char* name;
    QStringList keys;
    int32_t mask;
    Qt::SortOrder order;
    const char* rows;  // the rows' old numbers in their new order
    int headerClicks = 0;  // none: sorted by sort()
};

class Sorting : public TabulaTest::NavigationFixture, public ::testing::WithParamInterface<SortCase> {
protected:
    // Column 1 holds the keys; column 2, the tag of column 3 and the
    // bookmark hold each row's old number.
    void fill(const QStringList& keys, int32_t mask)
    {
        grid().setRows(static_cast<int32_t>(keys.size()));
        grid().setColMask(1, mask);
        for (int32_t row = 1; row <= grid().Rows(); ++row) {
            grid().setTextMatrix(row, 1, keys[row - 1]);
            grid().setTextMatrix(row, 2, QString::number(row));
            grid().setCellTag(row, 3, QString::number(row));
            grid().setRowBookmark(row, row);
        }
    }
    // The old numbers in row order; each row's tag and bookmark agree.
    QString rows()
    {
        QStringList numbers;
        for (int32_t row = 1; row <= grid().Rows(); ++row) {
            numbers << grid().TextMatrix(row, 2);
            EXPECT_EQ(grid().CellTag(row, 3), numbers.last());
            EXPECT_EQ(grid().RowBookmark(row).toString(), numbers.last());
        }
        return numbers.join(' ');
    }
    QImage header() { return picture().copy(cell(0, 1)); }
};

const SortCase sortCases[] = {
    {"numbers_by_value", {"10", "9", "", "100", "-1.5"}, 0, Qt::AscendingOrder, "5 2 1 4 3"},
    {"numbers_descending_keep_empty_last", {"10", "", "9", "100"}, 0, Qt::DescendingOrder, "4 1 3 2"},
    {"numeric_mask_puts_non_numbers_after_numbers", {"x", "2", "1"}, TabulaControl::NumericOnly,
     Qt::AscendingOrder, "3 2 1"},
    {"text_in_locale_with_numbers_inside", {"item10", "item9", "banana", "Apple"}, 0, Qt::AscendingOrder,
     "4 3 2 1"},
    {"dates_by_day", {"12/01/2020", "", "01/15/2021", "02/03/2019"}, TabulaControl::DateOnly,
     Qt::AscendingOrder, "4 1 3 2"},
    {"stable_for_equal_keys", {"b", "a", "b", "a"}, 0, Qt::DescendingOrder, "1 3 2 4"},
    {"header_click_ascending", {"b", "c", "a"}, 0, Qt::AscendingOrder, "3 1 2", 1},
    {"second_header_click_descending", {"b", "c", "a"}, 0, Qt::DescendingOrder, "2 1 3", 2},
};

TEST_P(Sorting, OrdersRowsStablyByKindWithEmptyCellsLastTakingTheirDataAlongAndUndoPutsThemBack)
{
    const SortCase& c = GetParam();
    fill(c.keys, c.mask);
    const QString before = rows();
    const QImage unsorted = header();
    if (c.headerClicks > 0) {
        click(centre(0, 1));
        EXPECT_EQ(rows(), before) << "off by default";
        grid().setSortOnHeaderClick(true);
    }
    moveTo(1, 2);
    select(1, 2, 1, 3);
    for (int i = 0; i < c.headerClicks; ++i) {
        const QImage arrow = header();
        click(centre(0, 1));
        EXPECT_NE(header(), arrow) << "click " << i;
    }
    if (c.headerClicks == 0)
        grid().sort(1, c.order);
    EXPECT_EQ(rows(), c.rows);
    EXPECT_NE(header(), unsorted);
    EXPECT_EQ(where(), QString("%1,2 in %1,2:%1,3").arg(QString(c.rows).split(' ').indexOf("1") + 1));
    for (int i = 0; i < std::max(1, c.headerClicks); ++i)
        grid().undoStack()->undo();
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(current(), "1,2");
    EXPECT_EQ(TabulaTest::errorOf([&] { grid().sort(3 + grid().Cols()); }).Source, "TabulaControl.Tabula.sort");
}

INSTANTIATE_TEST_SUITE_P(Sheet, Sorting, ::testing::ValuesIn(sortCases), TabulaTest::caseName);

}  // namespace
