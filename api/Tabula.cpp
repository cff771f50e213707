#include "accessibility/AccessibleGrid.h"
#include "api/Facade.h"
#include "api/MetaCallGuard.h"
#include "widgets/AboutBox.h"

#include <QResizeEvent>

namespace TabulaControl {

Tabula::Tabula(QWidget* parent)
    : QWidget(parent), events_(new TabulaEvents(this)), grid_(std::make_unique<detail::Grid>(*this, *events_))
{
    wireGrid();
    call("UserControl_InitProperties", [&] { grid_->applyDefaultProperties(); });
}

Tabula::Tabula(const PropertyBag& saved, QWidget* parent)
    : QWidget(parent), events_(new TabulaEvents(this)), grid_(std::make_unique<detail::Grid>(*this, *events_))
{
    wireGrid();
    call("UserControl_ReadProperties", [&] { grid_->readProperties(saved); });
}

void Tabula::wireGrid()
{
    grid_->onPropertyChanged = [this](const QString& name) { emit propertyChanged(name); };
    detail::installAccessibleFactory();
    grid_->onPaintFailure = [this](const std::exception_ptr& cause) { reportPaintFailure(cause); };
    wireChildren();
    wireEditor();
    wireSheetEditing();
    detail::guardMetaCalls(*this);
    call("UserControl_Initialize", [&] { grid_->initialize(); });
}

void Tabula::WriteProperties(PropertyBag& store) const
{
    call("UserControl_WriteProperties", [&] { grid_->writeProperties(store); });
}

bool Tabula::UserMode() const { return grid_->ui.window.UserMode(); }
void Tabula::setUserMode(bool value) { call("UserMode", [&] { grid_->ui.window.setUserMode(value); }); }

Tabula::~Tabula()
{
    grid_->model.setListener(nullptr);
    delete binding_;
    binding_ = nullptr;
    notify("UserControl_Terminate", [&] { grid_->shutDown(); });
}

void Tabula::notify(const char* procedure, const std::function<void()>& body)
{
    try {
        call(procedure, body);
    } catch (const ComponentError& error) {
        detail::report(*this, error);
    }
}

void Tabula::reportPaintFailure(const std::exception_ptr& cause)
{
    notify("Refresh", [&] { std::rethrow_exception(cause); });
}

void Tabula::resizeEvent(QResizeEvent*)
{
    notify("UserControl_Resize", [&] { grid_->fitToControl(); });
}

// A grid moved to a screen of another device pixel ratio paints itself
// again at the new ratio, after this paint.
void Tabula::paintEvent(QPaintEvent* event)
{
    grid_->ui.window.paint(event->region());
    if (devicePixelRatioF() == grid_->surface.devicePixelRatio())
        return;
    QMetaObject::invokeMethod(this, [this] {
        notify("UserControl_Paint", [&] {
            grid_->surface.setDevicePixelRatio(devicePixelRatioF());
            grid_->Refresh();
        });
    }, Qt::QueuedConnection);
}

int32_t Tabula::Rows() const { return grid_->model.rows().count(); }
void Tabula::setRows(int32_t value) { repaintingChange("Rows", [&] { grid_->setRows(value); }); }
int32_t Tabula::Cols() const { return grid_->model.cols().count(); }
void Tabula::setCols(int32_t value) { repaintingChange("Cols", [&] { grid_->setCols(value); }); }
int32_t Tabula::Row() const { return grid_->selection.row(); }
void Tabula::setRow(int32_t value) { change("Row", [&] { grid_->setRow(value); }); }
int32_t Tabula::Col() const { return grid_->selection.col(); }
void Tabula::setCol(int32_t value) { change("Col", [&] { grid_->setCol(value); }); }

QString Tabula::Text() const { return call("Text", [&] { return grid_->Text(); }); }
void Tabula::setText(const QString& value) { repaintingCall("Text", [&] { grid_->setText(value); }); }

QString Tabula::TextMatrix(int32_t Row, int32_t Col) const
{
    return call("TextMatrix", [&] { return grid_->TextMatrix(Row, Col); });
}
void Tabula::setTextMatrix(int32_t Row, int32_t Col, const QString& value)
{
    repaintingCall("TextMatrix", [&] { grid_->setTextMatrix(Row, Col, value); });
}

QString Tabula::CellTag(int32_t Row, int32_t Col) const
{
    return call("CellTag", [&] { return grid_->model.cells().Tag(detail::to16(Row), detail::to16(Col)); });
}
void Tabula::setCellTag(int32_t Row, int32_t Col, const QString& value)
{
    call("CellTag", [&] { grid_->model.cells().setTag(detail::to16(Row), detail::to16(Col), value); });
}

bool Tabula::AutoRedraw() const { return grid_->autoRedraw(); }
void Tabula::setAutoRedraw(bool value) { repaintingChange("AutoRedraw", [&] { grid_->setAutoRedraw(value); }); }

int32_t Tabula::RowHeight(int32_t Row) const
{
    return call("RowHeight", [&] { return int32_t{grid_->model.rows().size(Row)}; });
}
void Tabula::setRowHeight(int32_t Row, int32_t value)
{
    repaintingCall("RowHeight", [&] { grid_->setRowHeight(Row, value); });
}

QVariant Tabula::RowBookmark(int32_t Row) const
{
    return call("RowBookmark", [&] { return grid_->model.bookmark(Row); });
}
void Tabula::setRowBookmark(int32_t Row, const QVariant& value)
{
    call("RowBookmark", [&] { grid_->model.setBookmark(Row, value); });
}

int32_t Tabula::ColWidth(int32_t Col) const
{
    return call("ColWidth", [&] { return int32_t{grid_->model.cols().size(Col)}; });
}
void Tabula::setColWidth(int32_t Col, int32_t value) { repaintingCall("ColWidth", [&] { grid_->setColWidth(Col, value); }); }

int32_t Tabula::ColAlign(int32_t Col) { return call("ColAlign", [&] { return grid_->ColAlign(Col); }); }
void Tabula::setColAlign(int32_t Col, int32_t value) { repaintingCall("ColAlign", [&] { grid_->setColAlign(Col, value); }); }

int16_t Tabula::ColMask(int32_t Col) const { return call("ColMask", [&] { return grid_->model.columns().mask(Col); }); }
void Tabula::setColMask(int32_t Col, int32_t value) { repaintingCall("ColMask", [&] { grid_->setColMask(Col, value); }); }

// MouseRow is 16-bit: over a bound table's rows past 32767 it stays at 32767.
int16_t Tabula::MouseRow() const { return detail::saturate16(grid_->pointer.row()); }
int16_t Tabula::MouseCol() const { return grid_->pointer.col(); }

QVariant Tabula::RowEmpty(int32_t Row) const
{
    return call("RowEmpty", [&] { return QVariant(grid_->model.rowEmpty(Row)); });
}

void Tabula::AddItem(const QString& RowData, const QVariant& BackColor, const QVariant& ForeColor)
{
    repaintingChange("AddItem", [&] {
        // A row that fails half-stored must leave the picture as it was.
        if (!grid_->itemFits(RowData))
            grid_->flushPaint();
        grid_->AddItem(RowData, BackColor, ForeColor);
    });
}
void Tabula::RemoveItem(int32_t Row) { repaintingChange("RemoveItem", [&] { grid_->RemoveItem(Row); }); }
void Tabula::Clear() { repaintingChange("Clear", [&] { grid_->Clear(); }); }

bool Tabula::Enabled() const { return isEnabled(); }
void Tabula::setEnabled(bool value)
{
    call("Enabled", [&] {
        QWidget::setEnabled(value);
        emit propertyChanged(QStringLiteral("Enabled"));
    });
}

QImage Tabula::Picture() const { return grid_->surface.picture(); }

void Tabula::ShowAboutBox()
{
    call("ShowAboutBox", [&] { platform::showAboutBox(this); });
}

int32_t Tabula::TopRow() const { return grid_->viewport.topRow(); }
void Tabula::setTopRow(int32_t value) { call("TopRow", [&] { grid_->viewport.setTopRow(value); }); }
int32_t Tabula::Row1() const { return grid_->selection.block().row1; }
void Tabula::setRow1(int32_t value) { call("Row1", [&] { grid_->selection.setRow1(value); }); }
int32_t Tabula::Col1() const { return grid_->selection.block().col1; }
void Tabula::setCol1(int32_t value) { call("Col1", [&] { grid_->selection.setCol1(value); }); }
int32_t Tabula::Row2() const { return grid_->selection.block().row2; }
void Tabula::setRow2(int32_t value) { call("Row2", [&] { grid_->selection.setRow2(value); }); }
int32_t Tabula::Col2() const { return grid_->selection.block().col2; }
void Tabula::setCol2(int32_t value) { call("Col2", [&] { grid_->selection.setCol2(value); }); }

bool Tabula::BlockSelected() const { return grid_->selection.isBlock(); }

SelectModes Tabula::SelectionMode() const { return static_cast<SelectModes>(grid_->selection.mode()); }
void Tabula::setSelectionMode(SelectModes value)
{
    changeProperty("SelectionMode", [&] { grid_->selection.setMode(detail::to16(value)); });
}

bool Tabula::AllowSelection() const { return grid_->selection.allowed(); }
void Tabula::setAllowSelection(bool value)
{
    changeProperty("AllowSelection", [&] { grid_->selection.setAllowed(value); });
}

bool Tabula::AllowUserResizing() const { return grid_->resizeZones.enabled(); }
void Tabula::setAllowUserResizing(bool value)
{
    changeProperty("AllowUserResizing", [&] { grid_->resizeZones.setEnabled(value); });
}

}  // namespace TabulaControl
