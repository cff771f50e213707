#include "tests/support/GridFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>


namespace {

QStringList accessibleEvents;

QString eventOf(QAccessible::Event type, int child = -1)
{
    return QString::number(type, 16) + (child >= 0 ? QString(":%1").arg(child) : QString());
}

void recordEvent(QAccessibleEvent* event) { accessibleEvents << eventOf(event->type(), event->child()); }

// A grid of 4 rows and 3 columns with captions, cells reading "r,c".
class Accessibility : public TabulaTest::GridFixture {
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        fillWithPositions(4, 3);
        grid().setFormatString("<Name|^Qty|>Price");
        for (int32_t row = 1; row <= 4; ++row)
            grid().setTextMatrix(row, 0, QString("R%1").arg(row));
        table_ = QAccessible::queryAccessibleInterface(&grid());
        ASSERT_NE(table_, nullptr);
        ASSERT_NE(table(), nullptr);
    }
    void TearDown() override
    {
        QAccessible::installUpdateHandler(nullptr);
        setActive(false);
        GridFixture::TearDown();
    }
    // As a screen reader does when it starts listening.
    static void setActive(bool active)
    {
        if (QPlatformAccessibility* platform = QGuiApplicationPrivate::platformIntegration()->accessibility())
            platform->setActive(active);
    }
    QAccessibleTableInterface* table() { return table_->tableInterface(); }
    void listen()
    {
        accessibleEvents.clear();
        QAccessible::installUpdateHandler(recordEvent);
        setActive(true);
    }

    QAccessibleInterface* table_ = nullptr;
};

}  // namespace

TEST_F(Accessibility, TheGridIsATableOfItsDataCellsWithCaptionsCheckMarksAndTheSelection)
{
    EXPECT_EQ(table_->role(), QAccessible::Table);
    EXPECT_EQ(table()->rowCount(), 4);
    EXPECT_EQ(table()->columnCount(), 3);
    EXPECT_EQ(table_->childCount(), 12);
    EXPECT_EQ(table()->columnDescription(1), "Qty");
    EXPECT_EQ(table()->rowDescription(2), "R3");

    QAccessibleInterface* cell = table()->cellAt(2, 1);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->role(), QAccessible::Cell);
    EXPECT_EQ(cell->text(QAccessible::Name), "3,2");
    EXPECT_EQ(cell, table_->child(7));
    EXPECT_EQ(table_->indexOfChild(cell), 7);
    EXPECT_EQ(cell->parent(), table_);
    QAccessibleTableCellInterface* place = cell->tableCellInterface();
    ASSERT_NE(place, nullptr);
    EXPECT_EQ(QPoint(place->rowIndex(), place->columnIndex()), QPoint(2, 1));
    ASSERT_EQ(place->columnHeaderCells().size(), 1);
    EXPECT_EQ(place->columnHeaderCells().first()->text(QAccessible::Name), "Qty");
    EXPECT_EQ(place->rowHeaderCells().first()->role(), QAccessible::RowHeader);
    grid().setColMask(2, TabulaControl::checkmark);
    grid().setTextMatrix(1, 2, "1");
    EXPECT_TRUE(cell->state().checkable && !cell->state().checked && cell->text(QAccessible::Name).isEmpty());
    EXPECT_TRUE(table()->cellAt(0, 1)->state().checked && !table()->cellAt(0, 0)->state().checkable);

    EXPECT_FALSE(cell->rect().isEmpty());
    EXPECT_TRUE(table_->rect().contains(cell->rect()));
    EXPECT_EQ(table_->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
    EXPECT_EQ(table()->cellAt(4, 0), nullptr);

    // The selection is the block, or else the current cell.
    moveTo(2, 3);
    EXPECT_EQ(table()->selectedCellCount(), 1);
    EXPECT_EQ(table_->focusChild(), table()->cellAt(1, 2));
    EXPECT_TRUE(table()->cellAt(1, 2)->tableCellInterface()->isSelected());
    select(2, 0, 3, 3);
    EXPECT_EQ(table()->selectedCellCount(), 6);
    EXPECT_EQ(table()->selectedRows(), QList<int>({1, 2}));
    EXPECT_TRUE(table()->selectedColumns().isEmpty());
    EXPECT_TRUE(table()->cellAt(2, 0)->state().selected);
    EXPECT_FALSE(table()->cellAt(0, 0)->state().selected);

    grid().setRows(2);
    EXPECT_FALSE(cell->isValid());
}

TEST_F(Accessibility, FocusSelectionAndValueChangesAreAnnounced)
{
    grid().setSelectionMode(TabulaControl::SelectionByRow);
    grid().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid()));
    surface()->setFocus();
    listen();
    QTest::keyClick(surface(), Qt::Key_Down);
    QApplication::processEvents();
    EXPECT_TRUE(accessibleEvents.contains(eventOf(QAccessible::Focus, 3))) << accessibleEvents.join(' ').toStdString();
    EXPECT_TRUE(accessibleEvents.contains(eventOf(QAccessible::SelectionWithin)));
    EXPECT_TRUE(table_->focusChild()->state().focused);

    accessibleEvents.clear();
    QTest::keyClicks(surface(), "x");
    QTest::keyClick(child("txtEdit"), Qt::Key_Return);
    EXPECT_TRUE(accessibleEvents.contains(eventOf(QAccessible::TableModelChanged)));
    EXPECT_TRUE(accessibleEvents.contains(eventOf(QAccessible::NameChanged, 3)));
    EXPECT_EQ(table()->cellAt(1, 0)->text(QAccessible::Name), "2,1x");
}
