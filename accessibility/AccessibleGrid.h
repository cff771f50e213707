#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

namespace TabulaControl {
class Tabula;
}

namespace TabulaControl::detail {

// Makes every Tabula answer to assistive technology as a table; safe to
// call more than once.
void installAccessibleFactory();

// A grid as a table of its data cells: row r and column c of the table are
// row r + 1 and column c + 1 of the grid; the header row and column give the
// captions.
class AccessibleGrid : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit AccessibleGrid(Tabula* grid);
    ~AccessibleGrid() override;

    void* interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int columnCount() const override;
    int rowCount() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    int selectedColumnCount() const override { return int(selectedColumns().size()); }
    int selectedRowCount() const override { return int(selectedRows().size()); }
    QList<int> selectedColumns() const override;
    QList<int> selectedRows() const override;
    bool isColumnSelected(int column) const override { return selectedColumns().contains(column); }
    bool isRowSelected(int row) const override { return selectedRows().contains(row); }
    // Assistive technology reads the selection; it does not change it.
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

    Tabula* grid() const;
    // The interface of a cell of the grid, header cells included; null
    // outside the grid.
    QAccessibleInterface* cell(int32_t row, int32_t col) const;
    int indexOfCell(int32_t row, int32_t col) const;

private:
    mutable QHash<qint64, QAccessible::Id> cells_;
};

}  // namespace TabulaControl::detail
