#include "tests/navigation/NavigationFixture.h"

#include <QClipboard>
#include <QListWidget>
#include <QUndoStack>

using TabulaControl::Tabula;

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
    QString cells()
    {
        QStringList rows;
        for (int32_t row = 1; row <= grid().Rows(); ++row)
            rows << rowTexts(row).join(' ');
        return rows.join('/');
    }
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
};

class Undo : public Sheet, public ::testing::WithParamInterface<UndoCase> {};

const char* const initial = "1,1 1,2 1,3/2,1 2,2 2,3/3,1 3,2 3,3";

const UndoCase undoCases[] = {
    {"editor_commit", [](Sheet& t) {
         QTest::keyClick(t.surface(), 'a');
         t.key(t.editor(), Qt::Key_Return);
     }, "1,1a 1,2 1,3/2,1 2,2 2,3/3,1 3,2 3,3", 1},
    {"check_mark_toggle", [](Sheet& t) { QTest::keyClick(t.surface(), ' '); }, "1 1,2 1,3/0 2,2 2,3/0 3,2 3,3", 1},
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
    if (QString(c.name).startsWith("check"))
        grid().setColMask(1, TabulaControl::checkmark);
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
    EXPECT_FALSE(afterEdits().isEmpty());
    onSurface(Qt::Key_Y, Qt::ControlModifier);
    const QString changed = cells();
    onSurface(Qt::Key_Z, Qt::ControlModifier);
    onSurface(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(cells(), changed);
}

INSTANTIATE_TEST_SUITE_P(Sheet, Undo, ::testing::ValuesIn(undoCases), TabulaTest::caseName);

TEST_F(Sheet, UndoOfAnAutoNewRowEditRemovesTheRowWithItsText)
{
    grid().setAutoNewRow(true);
    grid().setRows(4);
    moveTo(4, 2);
    QTest::keyClick(surface(), 'n');
    key(editor(), Qt::Key_Return);
    ASSERT_EQ(grid().Rows(), 5);
    EXPECT_EQ(grid().undoStack()->count(), 1);
    grid().undoStack()->undo();
    EXPECT_EQ(grid().Rows(), 4);
    grid().undoStack()->redo();
    EXPECT_EQ(grid().Rows(), 5);
    EXPECT_EQ(grid().TextMatrix(4, 2), "n");
    EXPECT_EQ(afterEdits(), QStringList({"AfterEdit(4,2,n)", "AfterEdit(4,2,)", "AfterEdit(4,2,n)"}));
}

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

TEST_F(Sheet, CornerKeysMoveAndEscapeAndLockedCellsStayPut)
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
}

TEST_F(Sheet, OffTheKeysKeepTheirMeaning)
{
    grid().setSpreadsheetKeys(false);
    onSurface(Qt::Key_F2);
    onSurface(Qt::Key_Delete);
    EXPECT_EQ(cells(), QString(initial));
    onSurface(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(current(), "3,1");
}

}  // namespace
