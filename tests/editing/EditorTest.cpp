#include "tests/support/EngineFixture.h"

#include <QLineEdit>
#include <QTest>

using TabulaControl::TabulaEvents;

namespace {

// The engine with its editor wired as the control wires it, and the edit
// events recorded in order.
class Editor : public TabulaTest::EngineFixture {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        g().setRows(3);
        auto& editor = g().ui.txtEdit;
        editor.onKeyDown = [this](int16_t code, int16_t shift) { g().EditKeyDown(code, shift); };
        editor.onKeyPress = [this](int16_t& ascii) { g().txtEdit_KeyPress(ascii); };
        editor.onLostFocus = [this] { g().txtEdit_LostFocus(); };
        QObject::connect(&events_, &TabulaEvents::BeforeEdit, [this](int32_t r, int32_t c, bool& cancel) {
            log.append(QString("BeforeEdit(%1,%2)").arg(r).arg(c));
            cancel = cancelEdit;
        });
        QObject::connect(&events_, &TabulaEvents::AfterEdit, [this](int32_t r, int32_t c, QString v) {
            log.append(QString("AfterEdit(%1,%2,%3)").arg(r).arg(c).arg(v));
        });
        QObject::connect(&events_, &TabulaEvents::BeforeAddRow, [this](bool&) { log.append("BeforeAddRow"); });
        QObject::connect(&events_, &TabulaEvents::AfterAddRow,
                         [this](int32_t r) { log.append(QString("AfterAddRow(%1)").arg(r)); });
    }

    QLineEdit* edit() { return static_cast<QLineEdit*>(g().ui.txtEdit.widget()); }
    void press(int key) { QTest::keyClick(edit(), static_cast<Qt::Key>(key)); }

    QStringList log;
    bool cancelEdit = false;
};

}  // namespace

TEST_F(Editor, TypedKeyOpensTheEditorWithThatCharacterAppended)
{
    s().mCells.setText(1, 1, "ab");
    g().GridEdit('x');
    EXPECT_TRUE(s().mEditing);
    EXPECT_TRUE(g().ui.txtEdit.Visible());
    EXPECT_EQ(edit()->text(), "abx");
    EXPECT_EQ(log, QStringList({"BeforeEdit(1,1)"}));
}

TEST_F(Editor, SelectTextReplacesTheOldText)
{
    s().mCells.setText(1, 1, "old");
    s().mSelectText = true;
    g().GridEdit('x');
    EXPECT_EQ(edit()->text(), "x");
}

TEST_F(Editor, SpecialCharactersAreTypedAsThemselves)
{
    g().GridEdit('+');
    press(Qt::Key_ParenLeft);
    EXPECT_EQ(edit()->text(), "+(");
}

TEST_F(Editor, EnterCommitsAndRaisesAfterEdit)
{
    g().GridEdit('a');
    press(Qt::Key_Return);
    EXPECT_FALSE(s().mEditing);
    EXPECT_FALSE(g().ui.txtEdit.Visible());
    EXPECT_EQ(s().mCells.Text(1, 1), "a");
    EXPECT_EQ(log, QStringList({"BeforeEdit(1,1)", "BeforeEdit(1,1)", "AfterEdit(1,1,a)"}));
}

TEST_F(Editor, CancelledCommitKeepsTheOldTextButStillRaisesAfterEdit)
{
    s().mCells.setText(1, 1, "old");
    g().GridEdit('z');
    cancelEdit = true;
    press(Qt::Key_Return);
    EXPECT_EQ(s().mCells.Text(1, 1), "old");
    EXPECT_EQ(log.last(), "AfterEdit(1,1,old)");
    EXPECT_FALSE(g().ui.txtEdit.Visible());
}

TEST_F(Editor, EscapeDiscardsWithoutEvents)
{
    g().GridEdit('q');
    log.clear();
    press(Qt::Key_Escape);
    EXPECT_FALSE(s().mEditing);
    EXPECT_EQ(s().mCells.Text(1, 1), "");
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(Editor, CancelledOpeningOrALockedColumnOpensNothing)
{
    cancelEdit = true;
    g().GridEdit('a');
    EXPECT_FALSE(s().mEditing);
    cancelEdit = false;
    s().mColAllowEdit(1) = false;
    g().GridEdit('a');
    EXPECT_FALSE(g().ui.txtEdit.Visible());
    EXPECT_EQ(log, QStringList({"BeforeEdit(1,1)", "BeforeEdit(1,1)"}));
}

TEST_F(Editor, AutoNewRowAddsARowBelowAnEmptyLastRowOnce)
{
    g().setRows(1);
    s().mAutoNewRow = true;
    g().GridEdit(32);
    EXPECT_EQ(s().mRows, 2);
    EXPECT_EQ(log, QStringList({"BeforeEdit(1,1)", "BeforeAddRow", "AfterAddRow(2)"}));
    press(Qt::Key_Escape);
    g().GridEdit(32);
    EXPECT_EQ(s().mRows, 2);
}

TEST_F(Editor, MasksFilterTypedKeys)
{
    struct Case {
        int16_t mask;
        const char* typed;
        const char* shown;
    };
    const Case cases[] = {
        {TabulaControl::Uppercase, "ab1-", "AB1-"},
        {TabulaControl::NumericOnly, "1a-2.3.x4", "1-2.3.4"},
        {TabulaControl::NoMask, "aZ", "aZ"},
    };
    for (const Case& c : cases) {
        s().mColMask(1) = c.mask;
        s().mCells.setText(1, 1, "");
        g().GridEdit(32);
        QTest::keyClicks(edit(), c.typed);
        EXPECT_EQ(edit()->text(), c.shown) << c.typed;
        press(Qt::Key_Escape);
    }
}

TEST_F(Editor, ColEditWidthLimitsTheTextAndIgnoresBadArguments)
{
    g().setColEditWidth(1, 3);
    g().GridEdit('a');
    QTest::keyClicks(edit(), "bcdef");
    EXPECT_EQ(edit()->text(), "abc");
    press(Qt::Key_Escape);
    g().setColEditWidth(9, 4);
    g().setColEditWidth(1, -1);
    EXPECT_EQ(s().mColEditWidth(1), 3);
}

TEST_F(Editor, HideEditCommitsAndReportsTheStoredText)
{
    g().GridEdit('k');
    log.clear();
    g().HideEdit();
    EXPECT_EQ(s().mCells.Text(1, 1), "k");
    EXPECT_FALSE(s().mEditing);
    EXPECT_EQ(log, QStringList({"BeforeEdit(1,1)", "AfterEdit(1,1,k)"}));
}

TEST_F(Editor, DateColumnsAreMaskedWhileTypedAndStoreNormalisedDatesOrNothing)
{
    s().mColMask(1) = TabulaControl::DateOnly;
    g().GridEdit(32);
    QTest::keyClicks(edit(), "3/7/24/");
    EXPECT_EQ(edit()->text(), "03/07/2024");
    press(Qt::Key_Return);
    EXPECT_EQ(s().mCells.Text(1, 1), "03/07/2024");
    g().GridEdit(32);
    edit()->setText("13/45/2000");
    press(Qt::Key_Return);
    EXPECT_EQ(s().mCells.Text(1, 1), "");
}
