#include "tests/support/GridFixture.h"

#include <QScrollBar>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

namespace {

using TabulaTest::GridFixture;

// Takes edits in the edit role only, as a database's model does, and
// refuses any text ending in "bad".
class Refusing : public QStandardItemModel {
public:
    using QStandardItemModel::QStandardItemModel;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        return role == Qt::EditRole && !value.toString().endsWith("bad")
            && QStandardItemModel::setData(index, value, role);
    }
};

// Ten million rows, each text made when asked; counts the cells read.
class Computed : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& = {}) const override { return 10'000'000; }
    int columnCount(const QModelIndex& = {}) const override { return 3; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        ++reads;
        return QString("%1:%2").arg(index.row()).arg(index.column());
    }
    mutable int reads = 0;
};

class Bound : public GridFixture {
public:
    void SetUp() override
    {
        GridFixture::SetUp();
        items.setHorizontalHeaderLabels({"A", "B", "C"});
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 3; ++c)
                items.setItem(r, c, new QStandardItem(QString("%1,%2").arg(r).arg(c)));
        grid().setTextMatrix(1, 1, "own");
        grid().setModel(&items);
        log().clear();
    }
    void typeInto(int32_t row, int32_t col, const char* keys)
    {
        moveTo(row, col);
        QTest::keyClick(surface(), keys[0]);
        QTest::keyClicks(child("txtEdit"), keys + 1);
        QTest::keyClick(child("txtEdit"), Qt::Key_Return);
    }
    // "rows x cols at the current row: its text | the model's first column | AfterEdit events".
    QString state()
    {
        QStringList column;
        for (int r = 0; r < items.rowCount(); ++r)
            column << items.index(r, 0).data().toString();
        return QString("%1x%2 at %3: %4 | %5 | %6").arg(grid().Rows()).arg(grid().Cols()).arg(grid().Row())
            .arg(grid().Text(), column.join(' '), log().only({"AfterEdit"}).join(' '));
    }
    using GridFixture::grid;
    using GridFixture::moveTo;
    Refusing items{4, 3};
};

struct HostCase {
    const char* name;
    std::function<void(Bound&)> act;
    const char* state;
};

class HostOperation : public Bound, public ::testing::WithParamInterface<HostCase> {};

const char* const bound = "4x3 at 1: 0,0 | 0,0 1,0 2,0 3,0 | ";
const char* const own = "1x5 at 1: own | 0,0 1,0 2,0 3,0 | ";

// Unbinds, leaves the own cells in view's scroll position and binds again.
void rebind(Bound& t, void (*view)(TabulaControl::Tabula&))
{
    t.grid().setModel(nullptr);
    t.grid().setRows(1), t.grid().setCols(5);
    view(t.grid());
    t.grid().setModel(&t.items);
    t.moveTo(1, 1);
}

const HostCase hostCases[] = {
    {"unbinding_shows_the_own_cells", [](Bound& t) { t.grid().setModel(nullptr); }, own},
    {"a_deleted_model_leaves_the_own_cells",
     [](Bound& t) { t.grid().setModel(std::make_unique<QStandardItemModel>(7, 2).get()); }, own},
    {"binding_from_a_view_scrolled_down_starts_at_the_top",
     [](Bound& t) { rebind(t, [](TabulaControl::Tabula& g) { g.setRows(200), g.setRow(187); }); }, bound},
    {"binding_from_a_view_scrolled_right_starts_at_the_left",
     [](Bound& t) { rebind(t, [](TabulaControl::Tabula& g) { g.setCols(40), g.setLeftCol(30); }); }, bound},
    {"rows_inserted_above_keep_the_current_record", [](Bound& t) { t.moveTo(3, 1), t.items.insertRows(0, 2); },
     "6x3 at 5: 2,0 |   0,0 1,0 2,0 3,0 | "},
    {"rows_removed_above_keep_the_current_record", [](Bound& t) { t.moveTo(3, 1), t.items.removeRows(0, 2); },
     "2x3 at 1: 2,0 | 2,0 3,0 | "},
    {"removing_every_record_leaves_no_current_row", [](Bound& t) { t.moveTo(3, 1), t.items.removeRows(0, 4); },
     "0x3 at 0: A |  | "},
    {"a_changed_item_is_shown", [](Bound& t) { t.items.item(2, 0)->setText("changed"); },
     "4x3 at 1: 0,0 | 0,0 1,0 changed 3,0 | "},
    {"sorting_orders_the_models_rows_and_keeps_the_current_record",
     [](Bound& t) { t.moveTo(2, 1), t.grid().sort(2, Qt::DescendingOrder); }, "4x3 at 3: 1,0 | 3,0 2,0 1,0 0,0 | "},
    {"a_user_edit_goes_through_the_model", [](Bound& t) { t.typeInto(2, 1, "x"); },
     "4x3 at 2: 1,0x | 0,0 1,0x 2,0 3,0 | AfterEdit(2,1,1,0x)"},
    {"host_edits_go_through_the_model",
     [](Bound& t) { t.grid().setTextMatrix(1, 1, "host"), t.grid().AddItem("a\tb"), t.grid().RemoveItem(2); },
     "4x3 at 1: host | host 2,0 3,0 a | "},
    {"clear_empties_the_model", [](Bound& t) { t.grid().Clear(); }, "0x3 at 0: A |  | "},
};

// The picture changes exactly when what the grid shows does.
TEST_P(HostOperation, ReachesTheModelAndTheGridFollows)
{
    EXPECT_EQ(grid().model(), &items);
    EXPECT_EQ(grid().TextMatrix(0, 2), "B");
    const QImage before = picture();
    GetParam().act(*this);
    QApplication::processEvents();
    EXPECT_EQ(state(), QString(GetParam().state));
    EXPECT_EQ(picture() == before, state() == QString(bound));
}

INSTANTIATE_TEST_SUITE_P(Bound, HostOperation, ::testing::ValuesIn(hostCases), TabulaTest::caseName);

TEST_F(Bound, ARefusedEditKeepsTheTextAndSaysWhyAndBindingOrUnbindingForgetsTheEdits)
{
    const auto reported = errorSources();
    typeInto(1, 1, "bad");
    EXPECT_EQ(items.item(0, 0)->text(), "0,0");
    EXPECT_TRUE(log().only({"AfterEdit"}).isEmpty());
    EXPECT_EQ(reported->size(), 1);
    const auto error = TabulaTest::errorOf([&] { grid().setTextMatrix(1, 1, "bad"); });
    EXPECT_EQ(error.Source, "TabulaControl.Tabula.TextMatrix");
    EXPECT_TRUE(error.causeText().contains("refused")) << error.causeText().toStdString();

    typeInto(2, 2, "x");
    grid().setModel(nullptr);
    EXPECT_FALSE(grid().undoStack()->canUndo()) << "unbinding forgets the undo history";
    typeInto(1, 1, "y");
    grid().setModel(&items);
    EXPECT_FALSE(grid().undoStack()->canUndo()) << "binding forgets the undo history";
}

using BoundMillions = GridFixture;

TEST_F(BoundMillions, EveryRowIsReachableAndOnlyShownCellsAreRead)
{
    Computed computed;
    grid().setModel(&computed);
    QTest::keyClick(surface(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid().Row(), 10'000'000);
    EXPECT_EQ(grid().Text(), "9999999:0");
    grid().setTopRow(9'000'000);
    picture();
    QTest::mouseClick(surface(), Qt::LeftButton, {}, QPoint(100, 40));
    EXPECT_EQ(grid().Row(), 9'000'001);
    grid().findChild<QScrollBar*>("scrVertical")->setValue(9'999'000);
    EXPECT_EQ(grid().TopRow(), 9'999'000);
    EXPECT_LT(computed.reads, 2000);
    grid().setSpreadsheetKeys(true);
    QTest::keyClick(surface(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid().TopRow(), 10'000'000);
}

using BoundDatabase = GridFixture;

TEST_F(BoundDatabase, LoadsRowsAsTheUserNearsTheEnd)
{
    QTemporaryDir dir;
    {
        auto db = QSqlDatabase::addDatabase("QSQLITE", "bound");
        db.setDatabaseName(dir.filePath("orders.db"));
        ASSERT_TRUE(db.open());
        QSqlQuery query(db);
        ASSERT_TRUE(query.exec("create table orders (id integer primary key, item text)"));
        ASSERT_TRUE(query.exec("with recursive n(i) as (select 1 union all select i + 1 from n where i < 600) "
                               "insert into orders select i, 'item ' || i from n"));
        QSqlTableModel orders(nullptr, db);
        orders.setTable("orders");
        orders.select();
        grid().setModel(&orders);
        EXPECT_EQ(grid().Rows(), 256);
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(surface(), Qt::Key_End, Qt::ControlModifier);
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(grid().Rows(), 600);
    }
    QSqlDatabase::removeDatabase("bound");
}

}  // namespace
