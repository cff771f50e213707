#include "tests/support/EngineFixture.h"
#include "tests/support/GridFixture.h"

using TabulaControl::TabulaEvents;

class RefreshFacade : public TabulaTest::GridFixture {};
class RefreshEngine : public TabulaTest::EngineFixture {};

TEST_F(RefreshFacade, RepaintsWhatChangedWithoutAutoRedraw)
{
    grid().setRows(3);
    grid().setAutoRedraw(false);
    grid().setTextMatrix(2, 1, QString(20, 'W'));
    const auto inkInCell = [&] {
        int ink = 0;
        for (int y = 34; y < 48; ++y)
            for (int x = 36; x < 96; ++x)
                ink += pixel(x, y) != 0xFFFFFFu ? 1 : 0;
        return ink;
    };
    EXPECT_EQ(inkInCell(), 0);
    grid().Refresh();
    EXPECT_GT(inkInCell(), 0);
    EXPECT_EQ(pixel(98, 40), 0xC0C0C0u);
    EXPECT_EQ(pixel(99, 40), 0xFFFFFFu);
}

TEST_F(RefreshEngine, OpenEditIsCommittedFirst)
{
    g().setRows(3);
    QStringList log;
    QObject::connect(&events_, &TabulaEvents::BeforeEdit,
                     [&](int32_t r, int32_t c, bool&) { log.append(QString("BeforeEdit(%1,%2)").arg(r).arg(c)); });
    QObject::connect(&events_, &TabulaEvents::AfterEdit, [&](int32_t r, int32_t c, QString v) {
        log.append(QString("AfterEdit(%1,%2,%3)").arg(r).arg(c).arg(v));
    });
    g().GridEdit(0);
    ASSERT_TRUE(s().mEditing);
    g().ui.txtEdit.setText("typed");
    log.clear();
    g().Refresh();
    EXPECT_EQ(log, QStringList({"BeforeEdit(1,1)", "AfterEdit(1,1,typed)"}));
    EXPECT_FALSE(s().mEditing);
    EXPECT_FALSE(g().ui.txtEdit.Visible());
    EXPECT_EQ(s().mCells.Text(1, 1), "typed");
}
