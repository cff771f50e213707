#include "tests/support/EngineFixture.h"

using TabulaControl::TabulaEvents;

class RefreshEngine : public TabulaTest::EngineFixture {};

TEST_F(RefreshEngine, OpenEditIsCommittedFirst)
{
    g().setRows(3);
    QStringList log;
    QObject::connect(&events_, &TabulaEvents::BeforeEdit,
                     [&](int32_t r, int32_t c, bool&) { log.append(QString("BeforeEdit(%1,%2)").arg(r).arg(c)); });
    QObject::connect(&events_, &TabulaEvents::AfterEdit, [&](int32_t r, int32_t c, QString v) {
        log.append(QString("AfterEdit(%1,%2,%3)").arg(r).arg(c).arg(v));
    });
    g().startEdit(0);
    ASSERT_TRUE(s().mEditing);
    g().ui.txtEdit.setText("typed");
    log.clear();
    g().Refresh();
    EXPECT_EQ(log, QStringList({"BeforeEdit(1,1)", "AfterEdit(1,1,typed)"}));
    EXPECT_FALSE(s().mEditing);
    EXPECT_FALSE(g().ui.txtEdit.Visible());
    EXPECT_EQ(s().mCells.Text(1, 1), "typed");
}
