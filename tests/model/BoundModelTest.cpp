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

// Refuses any text ending in "bad".
class Refusing : public QStandardItemModel {
public:
    using QStandardItemModel::QStandardItemModel;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        return !value.toString().endsWith("bad") && QStandardItemModel::setData(index, value, role);
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
protected:
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
    Refusing items{4, 3};
};

TEST_F(Bound, ShowsTheModelThroughTheMembersAndUnbindingShowsTheOwnCells)
{
    const QImage own = picture();
    EXPECT_EQ(grid().model(), &items);
    EXPECT_EQ(QString("%1x%2 %3 %4").arg(grid().Rows()).arg(grid().Cols()).arg(grid().TextMatrix(0, 2), grid().TextMatrix(4, 3)),
              "4x3 B 3,2");
    grid().setModel(nullptr);
    EXPECT_EQ(QString("%1x%2 %3").arg(grid().Rows()).arg(grid().Cols()).arg(grid().TextMatrix(1, 1)), "1x5 own");
    grid().setModel(&items);
    EXPECT_EQ(picture(), own);
}

TEST_F(Bound, ADeletedModelLeavesTheOwnCellsShown)
{
    auto other = std::make_unique<QStandardItemModel>(7, 2);
    grid().setModel(other.get());
    other.reset();
    EXPECT_EQ(QString("%1x%2 %3").arg(grid().Rows()).arg(grid().Cols()).arg(grid().TextMatrix(1, 1)), "1x5 own");
}

TEST_F(Bound, EditsByTheUserAndTheHostGoThroughTheModel)
{
    typeInto(2, 2, "x");
    EXPECT_EQ(items.item(1, 1)->text(), "1,1x");
    EXPECT_EQ(log().only({"AfterEdit"}), QStringList({"AfterEdit(2,2,1,1x)"}));
    grid().setTextMatrix(1, 1, "host");
    grid().AddItem("a\tb");
    grid().RemoveItem(2);
    QStringList column;
    for (int r = 0; r < items.rowCount(); ++r)
        column << items.item(r, 0)->text();
    EXPECT_EQ(column, QStringList({"host", "2,0", "3,0", "a"}));
    grid().Clear();
    EXPECT_EQ(items.rowCount(), 0);
}

TEST_F(Bound, FollowsTheModelAndKeepsTheCurrentRecordAcrossChangesAboveIt)
{
    moveTo(3, 2);
    items.insertRows(0, 2);
    EXPECT_EQ(grid().Row(), 5);
    items.removeRows(0, 3);
    EXPECT_EQ(QString("%1 %2").arg(grid().Row()).arg(grid().Text()), "2 2,1");
    const QImage before = picture();
    items.item(2, 0)->setText("changed");
    EXPECT_NE(picture(), before);
    items.removeRows(0, 3);
    EXPECT_EQ(grid().Row(), 0);
}

TEST_F(Bound, SortingOrdersTheModelsRows)
{
    grid().sort(2, Qt::DescendingOrder);
    EXPECT_EQ(QString("%1 %2").arg(items.item(0, 1)->text(), grid().TextMatrix(4, 2)), "3,1 0,1");
}

TEST_F(Bound, ARefusedChangeKeepsTheTextRaisesNoAfterEditAndSaysWhy)
{
    const auto reported = errorSources();
    typeInto(1, 1, "bad");
    EXPECT_EQ(items.item(0, 0)->text(), "0,0");
    EXPECT_TRUE(log().only({"AfterEdit"}).isEmpty());
    EXPECT_EQ(reported->size(), 1);
    const auto error = TabulaTest::errorOf([&] { grid().setTextMatrix(1, 1, "bad"); });
    EXPECT_EQ(error.Source, "TabulaControl.Tabula.TextMatrix");
    EXPECT_TRUE(error.causeText().contains("refused")) << error.causeText().toStdString();
}

TEST(BoundMillions, EveryRowIsReachableAndOnlyShownCellsAreRead)
{
    Computed computed;
    TabulaControl::Tabula grid;
    grid.resize(400, 300);
    grid.show();
    grid.setModel(&computed);
    QWidget* surface = grid.findChild<QWidget*>("picGrid");
    QTest::keyClick(surface, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid.Row(), 10'000'000);
    EXPECT_EQ(grid.Text(), "9999999:0");
    grid.setTopRow(9'000'000);
    grid.Picture();
    QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(100, 40));
    EXPECT_EQ(grid.Row(), 9'000'001);
    grid.findChild<QScrollBar*>("scrVertical")->setValue(9'999'000);
    EXPECT_EQ(grid.TopRow(), 9'999'000);
    EXPECT_LT(computed.reads, 2000);
}

TEST(BoundDatabase, LoadsRowsAsTheUserNearsTheEndAndWritesEditsToTheFile)
{
    QTemporaryDir dir;
    {
        auto db = QSqlDatabase::addDatabase("QSQLITE", "bound");
        db.setDatabaseName(dir.filePath("orders.db"));
        ASSERT_TRUE(db.open());
        QSqlQuery query(db);
        query.exec("create table orders (id integer primary key, item text)");
        db.transaction();
        for (int i = 1; i <= 600; ++i)
            query.exec(QString("insert into orders values (%1, 'item %1')").arg(i));
        db.commit();
        QSqlTableModel orders(nullptr, db);
        orders.setTable("orders");
        orders.setEditStrategy(QSqlTableModel::OnManualSubmit);
        orders.select();
        TabulaControl::Tabula grid;
        grid.resize(400, 300);
        grid.show();
        grid.setModel(&orders);
        EXPECT_EQ(grid.Rows(), 256);
        QWidget* surface = grid.findChild<QWidget*>("picGrid");
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(surface, Qt::Key_End, Qt::ControlModifier);
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(grid.Rows(), 600);
        grid.setCol(2);
        QTest::keyClicks(surface, "!");
        QTest::keyClick(grid.findChild<QWidget*>("txtEdit"), Qt::Key_Return);
        ASSERT_TRUE(orders.submitAll());
        query.exec("select item from orders where id = 600");
        ASSERT_TRUE(query.next());
        EXPECT_EQ(query.value(0).toString(), "item 600!");
    }
    QSqlDatabase::removeDatabase("bound");
}

TEST_F(Bound, BindingFromAScrolledViewShowsTheModelFromItsTop)
{
    const QImage fromTop = picture();
    const std::vector<std::pair<const char*, std::function<void(TabulaControl::Tabula&)>>> views{
        {"scrolled down", [](TabulaControl::Tabula& g) { g.setRows(200), g.setRow(187); }},
        {"scrolled right", [](TabulaControl::Tabula& g) { g.setCols(40), g.setLeftCol(30); }},
    };
    for (const auto& [name, scroll] : views) {
        grid().setModel(nullptr);
        grid().setRows(1), grid().setCols(5);
        scroll(grid());
        grid().setModel(&items);
        QApplication::processEvents();
        EXPECT_EQ(QString("%1,%2").arg(grid().TopRow()).arg(grid().LeftCol()), "1,1") << name;
        moveTo(1, 1);
        EXPECT_EQ(picture(), fromTop) << name;
    }
}

TEST_F(Bound, BindingAndUnbindingForgetTheUndoHistory)
{
    typeInto(2, 2, "x");
    grid().setModel(nullptr);
    EXPECT_FALSE(grid().undoStack()->canUndo());
    typeInto(1, 1, "y");
    grid().setModel(&items);
    EXPECT_FALSE(grid().undoStack()->canUndo());
}

}  // namespace
