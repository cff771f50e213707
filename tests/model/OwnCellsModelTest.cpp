#include "tests/support/GridFixture.h"

#include <QAbstractItemModelTester>
#include <QDataWidgetMapper>
#include <QLineEdit>
#include <QSortFilterProxyModel>

namespace {

using TabulaControl::Tabula;

class OwnCellsModel : public TabulaTest::WithRows<TabulaTest::GridFixture, 3> {
protected:
    QAbstractItemModel& model() { return *grid().model(); }
    QString at(int row, int col) { return model().index(row, col).data().toString(); }
};

TEST_F(OwnCellsModel, MapsCellsAndHeadersCountsTheDataLinesAndSignalsEveryChangeToProxies)
{
    QAbstractItemModelTester tester(&model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    grid().setTextMatrix(0, 2, "Name");
    grid().setTextMatrix(2, 0, "two");
    grid().setTextMatrix(2, 2, "b");
    EXPECT_EQ(QString("%1x%2").arg(model().rowCount()).arg(model().columnCount()), "3x5");
    EXPECT_EQ(at(1, 1), "b");
    EXPECT_EQ(model().headerData(1, Qt::Horizontal).toString(), "Name");
    EXPECT_EQ(model().headerData(1, Qt::Vertical).toString(), "two");
    EXPECT_TRUE(model().setData(model().index(0, 4), "x"));
    EXPECT_EQ(grid().TextMatrix(1, 5), "x");
    grid().setColMask(3, TabulaControl::checkmark);
    EXPECT_EQ(model().index(0, 2).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_TRUE(model().setData(model().index(0, 2), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(grid().TextMatrix(1, 3), "1");

    QSortFilterProxyModel sorted;
    sorted.setSourceModel(&model());
    sorted.sort(0);
    QStringList seen;
    QObject::connect(&model(), &QAbstractItemModel::dataChanged,
                     [&](const QModelIndex& at) { seen << QString("changed %1,%2").arg(at.row()).arg(at.column()); });
    QObject::connect(&model(), &QAbstractItemModel::rowsInserted,
                     [&](const QModelIndex&, int first) { seen << QString("inserted %1").arg(first); });
    QObject::connect(&model(), &QAbstractItemModel::rowsRemoved,
                     [&](const QModelIndex&, int first) { seen << QString("removed %1").arg(first); });
    QObject::connect(&model(), &QAbstractItemModel::modelReset, [&] { seen << "reset"; });
    grid().AddItem("c\tz");
    grid().AddItem("a\ty");
    grid().setText("m");
    grid().RemoveItem(2);
    EXPECT_EQ(sorted.index(sorted.rowCount() - 2, 0).data().toString(), "c");
    grid().Clear();
    EXPECT_EQ(sorted.rowCount(), 0);
    grid().setCols(2);
    EXPECT_EQ(seen, QStringList({"inserted 3", "changed 3,0", "changed 3,1", "inserted 4", "changed 4,0",
                                 "changed 4,1", "changed 0,0", "removed 1", "reset", "reset"}));
}

TEST_F(OwnCellsModel, DataWidgetMapperEditsTheCurrentRecord)
{
    grid().setTextMatrix(2, 1, "before");
    QLineEdit editor;
    QDataWidgetMapper mapper;
    mapper.setModel(&model());
    mapper.addMapping(&editor, 0);
    mapper.setCurrentIndex(1);
    EXPECT_EQ(editor.text(), "before");
    editor.setText("after");
    EXPECT_TRUE(mapper.submit());
    EXPECT_EQ(grid().TextMatrix(2, 1), "after");
    grid().setTextMatrix(2, 1, "host");
    EXPECT_EQ(editor.text(), "host");
}

}  // namespace
