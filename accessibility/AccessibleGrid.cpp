#include "accessibility/AccessibleGrid.h"

#include "state/TabSeparated.h"
#include "state/Errors.h"

#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QTimer>
#include <QWindow>

namespace TabulaControl::detail {

namespace {

bool hasFocusWithin(const QWidget& widget)
{
    const QWidget* focus = QApplication::focusWidget();
    return focus && (focus == &widget || widget.isAncestorOf(focus));
}

AccessibleGrid* accessibleGridOf(Tabula* grid)
{
    return dynamic_cast<AccessibleGrid*>(QAccessible::queryAccessibleInterface(grid));
}

// One cell of a grid; it reads the grid on every request, so it stays right
// while the grid changes, and is invalid once the grid no longer has it.
class AccessibleCell : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    AccessibleCell(Tabula* grid, int32_t row, int32_t col) : grid_(grid), row_(row), col_(col) {}

    bool isValid() const override { return grid_ && row_ <= grid_->Rows() && col_ <= grid_->Cols(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return grid_ ? grid_->window()->windowHandle() : nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(grid_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text t) const override
    {
        if (!isValid() || (t != QAccessible::Name && t != QAccessible::Value))
            return {};
        // A check-mark cell shows no text: its value is said as its state.
        if (t == QAccessible::Name && isCheckMark())
            return {};
        return grid_->TextMatrix(row_, col_);
    }
    // Cells are changed through the grid's editor, not by assistive technology.
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override
    {
        if (!isValid())
            return {};
        try {
            const QRect local = grid_->cellRect(row_, col_);
            return local.isEmpty() ? QRect() : local.translated(grid_->mapToGlobal(QPoint(0, 0)));
        } catch (const ComponentError& error) {
            // Assistive technology asks from Qt's event loop: nothing may throw there.
            logFailure(error);
            return {};
        }
    }
    QAccessible::Role role() const override
    {
        if (row_ == 0)
            return QAccessible::ColumnHeader;
        return col_ == 0 ? QAccessible::RowHeader : QAccessible::Cell;
    }
    QAccessible::State state() const override
    {
        QAccessible::State st;
        if (!isValid())
            return st;
        st.selectable = st.focusable = role() == QAccessible::Cell;
        st.checkable = isCheckMark();
        st.checked = st.checkable && grid_->TextMatrix(row_, col_) == QLatin1String("1");
        st.selected = isSelected();
        st.focused = isCurrent() && hasFocusWithin(*grid_);
        st.invisible = st.offscreen = rect().isEmpty();
        return st;
    }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this) : nullptr;
    }

    bool isSelected() const override
    {
        return role() == QAccessible::Cell && selectedBlock(*grid_).contains(col_, row_);
    }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return headerCells(0, col_, grid_->ColHeader()); }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return headerCells(row_, 0, grid_->RowHeader()); }
    int columnIndex() const override { return col_ - 1; }
    int rowIndex() const override { return row_ - 1; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    bool isCurrent() const { return grid_->Row() == row_ && grid_->Col() == col_; }
    bool isCheckMark() const { return role() == QAccessible::Cell && grid_->ColMask(col_) == checkmark; }
    QList<QAccessibleInterface*> headerCells(int32_t row, int32_t col, bool shown) const
    {
        AccessibleGrid* table = isValid() && shown && role() == QAccessible::Cell ? accessibleGridOf(grid_) : nullptr;
        QAccessibleInterface* header = table ? table->cell(row, col) : nullptr;
        return header ? QList<QAccessibleInterface*>{header} : QList<QAccessibleInterface*>{};
    }

    QPointer<Tabula> grid_;
    int32_t row_;
    int32_t col_;
};

// Tells assistive technology what the grid's events mean: the current cell
// moved, the selection changed, an edit stored a value, rows came or went.
class AccessibilityNotifier : public QObject {
public:
    static constexpr const char* Name = "accessibilityNotifier";

    static void attachTo(Tabula& grid)
    {
        if (!grid.findChild<QObject*>(QLatin1String(Name), Qt::FindDirectChildrenOnly))
            new AccessibilityNotifier(grid);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn)
            notifyFocus();
        return false;
    }

private:
    explicit AccessibilityNotifier(Tabula& grid) : QObject(&grid), grid_(grid), selection_(selectedBlock(grid))
    {
        setObjectName(QLatin1String(Name));
        if (QWidget* surface = grid.findChild<QWidget*>(QStringLiteral("picGrid")))
            surface->installEventFilter(this);
        const TabulaEvents* events = grid.events();
        connect(events, &TabulaEvents::RowColChange, this, [this] {
            notifyFocus();
            checkSelectionLater();
        });
        for (auto signal : {&TabulaEvents::MouseDown, &TabulaEvents::MouseMove, &TabulaEvents::MouseUp})
            connect(events, signal, this, &AccessibilityNotifier::checkSelectionLater);
        for (auto signal : {&TabulaEvents::KeyDown, &TabulaEvents::KeyUp})
            connect(events, signal, this, &AccessibilityNotifier::checkSelectionLater);
        connect(events, &TabulaEvents::AfterEdit, this, &AccessibilityNotifier::notifyValue);
        connect(events, &TabulaEvents::AfterAddRow, this,
                [this](int32_t row) { notifyTable(QAccessibleTableModelChangeEvent::RowsInserted, row); });
        connect(events, &TabulaEvents::AfterDeleteRow, this,
                [this](int32_t row) { notifyTable(QAccessibleTableModelChangeEvent::RowsRemoved, row); });
    }

    // The child index of a data cell; -1 when assistive technology is off.
    int indexOfCell(int32_t row, int32_t col) const
    {
        const AccessibleGrid* table = QAccessible::isActive() ? accessibleGridOf(&grid_) : nullptr;
        return table ? table->indexOfCell(row, col) : -1;
    }

    // Tells of an event of the data cell with the given child index.
    void notifyCell(QAccessible::Event type, int index)
    {
        QAccessibleEvent event(&grid_, type);
        event.setChild(index);
        QAccessible::updateAccessibility(&event);
    }

    void notifyFocus()
    {
        const int index = indexOfCell(grid_.Row(), grid_.Col());
        if (index >= 0 && hasFocusWithin(grid_))
            notifyCell(QAccessible::Focus, index);
    }

    // The grid's events come before it acts on the input, so the selection
    // is compared once the input is handled.
    void checkSelectionLater()
    {
        if (checkPending_)
            return;
        checkPending_ = true;
        QTimer::singleShot(0, this, [this] {
            checkPending_ = false;
            const QRect selection = selectedBlock(grid_);
            if (selection == selection_)
                return;
            selection_ = selection;
            QAccessibleEvent event(&grid_, QAccessible::SelectionWithin);
            QAccessible::updateAccessibility(&event);
        });
    }

    void notifyValue(int32_t row, int32_t col)
    {
        const int index = indexOfCell(row, col);
        if (index < 0)
            return;
        notifyTable(QAccessibleTableModelChangeEvent::DataChanged, row, col);
        notifyCell(QAccessible::NameChanged, index);
    }

    // Tells of a change to grid row row, or to its cell in column col when
    // one is given (column 0 stands for none, -1 in the table).
    void notifyTable(QAccessibleTableModelChangeEvent::ModelChangeType type, int32_t row, int32_t col = 0)
    {
        if (!QAccessible::isActive())
            return;
        QAccessibleTableModelChangeEvent change(&grid_, type);
        change.setFirstRow(row - 1);
        change.setLastRow(row - 1);
        change.setFirstColumn(col - 1);
        change.setLastColumn(col - 1);
        QAccessible::updateAccessibility(&change);
    }

    Tabula& grid_;
    QRect selection_;
    bool checkPending_ = false;
};

QAccessibleInterface* createAccessible(const QString& className, QObject* object)
{
    if (className != QLatin1String(Tabula::staticMetaObject.className()))
        return nullptr;
    auto* grid = qobject_cast<Tabula*>(object);
    if (!grid)
        return nullptr;
    AccessibilityNotifier::attachTo(*grid);
    return new AccessibleGrid(grid);
}

QList<int> wholeLines(int first, int last, bool whole)
{
    QList<int> lines;
    for (int line = first; whole && line <= last; ++line)
        lines << line - 1;
    return lines;
}

}  // namespace

void installAccessibleFactory()
{
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(createAccessible);
        return true;
    }();
}

AccessibleGrid::AccessibleGrid(Tabula* grid) : QAccessibleWidget(grid, QAccessible::Table) {}

AccessibleGrid::~AccessibleGrid()
{
    for (QAccessible::Id id : std::as_const(cells_))
        QAccessible::deleteAccessibleInterface(id);
}

Tabula* AccessibleGrid::grid() const { return static_cast<Tabula*>(widget()); }

void* AccessibleGrid::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

int AccessibleGrid::rowCount() const { return grid()->Rows(); }
int AccessibleGrid::columnCount() const { return grid()->Cols(); }
int AccessibleGrid::childCount() const { return rowCount() * columnCount(); }

QAccessibleInterface* AccessibleGrid::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    return cell(index / columnCount() + 1, index % columnCount() + 1);
}

QAccessibleInterface* AccessibleGrid::cellAt(int row, int column) const
{
    if (row < 0 || column < 0 || row >= rowCount() || column >= columnCount())
        return nullptr;
    return cell(row + 1, column + 1);
}

int AccessibleGrid::indexOfCell(int32_t row, int32_t col) const
{
    if (row < 1 || col < 1 || row > rowCount() || col > columnCount())
        return -1;
    return (row - 1) * columnCount() + col - 1;
}

int AccessibleGrid::indexOfChild(const QAccessibleInterface* child) const
{
    if (!child || child->parent() != this)
        return -1;
    auto* cell = const_cast<QAccessibleInterface*>(child)->tableCellInterface();
    return cell ? indexOfCell(cell->rowIndex() + 1, cell->columnIndex() + 1) : -1;
}

QAccessibleInterface* AccessibleGrid::childAt(int x, int y) const
{
    const QPoint local = grid()->mapFromGlobal(QPoint(x, y));
    for (int32_t row = grid()->TopRow(); row <= grid()->Rows(); ++row) {
        const QRect first = grid()->cellRect(row, grid()->LeftCol());
        if (first.isEmpty() || first.top() > local.y())
            return nullptr;
        if (first.bottom() < local.y())
            continue;
        for (int32_t col = grid()->LeftCol(); col <= grid()->Cols(); ++col) {
            const QRect r = grid()->cellRect(row, col);
            if (r.isEmpty())
                return nullptr;
            if (r.contains(local))
                return cell(row, col);
        }
        return nullptr;
    }
    return nullptr;
}

QAccessibleInterface* AccessibleGrid::focusChild() const
{
    return indexOfCell(grid()->Row(), grid()->Col()) < 0 ? nullptr : cell(grid()->Row(), grid()->Col());
}

QString AccessibleGrid::columnDescription(int column) const
{
    if (!grid()->ColHeader() || column < 0 || column >= columnCount())
        return {};
    return grid()->TextMatrix(0, column + 1);
}

QString AccessibleGrid::rowDescription(int row) const
{
    if (!grid()->RowHeader() || row < 0 || row >= rowCount())
        return {};
    return grid()->TextMatrix(row + 1, 0);
}

int AccessibleGrid::selectedCellCount() const
{
    const QRect block = selectedBlock(*grid());
    return block.width() * block.height();
}

QList<QAccessibleInterface*> AccessibleGrid::selectedCells() const
{
    const QRect block = selectedBlock(*grid());
    QList<QAccessibleInterface*> cells;
    for (int32_t row = block.top(); row <= block.bottom(); ++row) {
        for (int32_t col = block.left(); col <= block.right(); ++col)
            cells << cell(row, col);
    }
    return cells;
}

QList<int> AccessibleGrid::selectedRows() const
{
    const QRect block = selectedBlock(*grid());
    const bool wholeRows = !block.isEmpty() && block.left() == 1 && block.right() == columnCount();
    return wholeLines(block.top(), block.bottom(), wholeRows);
}

QList<int> AccessibleGrid::selectedColumns() const
{
    const QRect block = selectedBlock(*grid());
    const bool wholeColumns = !block.isEmpty() && block.top() == 1 && block.bottom() == rowCount();
    return wholeLines(block.left(), block.right(), wholeColumns);
}

QAccessibleInterface* AccessibleGrid::cell(int32_t row, int32_t col) const
{
    if (row < 0 || col < 0 || (row == 0 && col == 0) || row > rowCount() || col > columnCount())
        return nullptr;
    const qint64 key = (qint64(row) << 32) | quint32(col);
    if (QAccessibleInterface* known = QAccessible::accessibleInterface(cells_.value(key)))
        return known;
    auto* created = new AccessibleCell(grid(), row, col);
    cells_.insert(key, QAccessible::registerAccessibleInterface(created));
    return created;
}

// Cells read the grid as they are asked, so only those the grid no longer
// has need to go.
void AccessibleGrid::modelChange(QAccessibleTableModelChangeEvent*)
{
    for (auto it = cells_.begin(); it != cells_.end();) {
        QAccessibleInterface* known = QAccessible::accessibleInterface(it.value());
        if (known && known->isValid()) {
            ++it;
            continue;
        }
        if (known)
            QAccessible::deleteAccessibleInterface(it.value());
        it = cells_.erase(it);
    }
}

}  // namespace TabulaControl::detail
