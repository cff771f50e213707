#include "api/Facade.h"

#include <QEvent>

namespace TabulaControl {

void Tabula::Refresh() { repaintingCall("Refresh", [&] { grid_->Refresh(); }); }

bool Tabula::ColHeader() const { return grid_->appearance.showsColumnHeader(); }
void Tabula::setColHeader(bool value) { repaintingChange("ColHeader", [&] { grid_->setColHeader(value); }); }

bool Tabula::RowHeader() const { return grid_->appearance.showsRowHeader(); }
void Tabula::setRowHeader(bool value) { repaintingChange("RowHeader", [&] { grid_->setRowHeader(value); }); }

bool Tabula::ShowGrid() const { return grid_->appearance.showsGridLines(); }
void Tabula::setShowGrid(bool value) { repaintingChange("ShowGrid", [&] { grid_->setShowGrid(value); }); }

bool Tabula::GridSolid() const { return grid_->appearance.gridLinesSolid(); }
void Tabula::setGridSolid(bool value) { repaintingChange("GridSolid", [&] { grid_->setGridSolid(value); }); }

OleColor Tabula::GridLineColor() const { return grid_->appearance.gridLineColor(); }
void Tabula::setGridLineColor(OleColor value)
{
    repaintingChange("GridLineColor", [&] { grid_->setGridLineColor(value); });
}

BorderStyles Tabula::BorderStyle() const { return static_cast<BorderStyles>(grid_->appearance.borderStyle()); }
void Tabula::setBorderStyle(BorderStyles value) { change("BorderStyle", [&] { grid_->setBorderStyle(value); }); }

int16_t Tabula::MousePointer() const { return grid_->ui.window.MousePointer(); }
void Tabula::setMousePointer(int16_t value) { change("MousePointer", [&] { grid_->setMousePointer(value); }); }

bool Tabula::UseBackColorAlt() const { return grid_->appearance.alternatesRowColors(); }
void Tabula::setUseBackColorAlt(bool value)
{
    repaintingChange("UseBackColorAlt", [&] { grid_->setUseBackColorAlt(value); });
}

OleColor Tabula::BackColor() const { return detail::SharedBackColor; }
void Tabula::setBackColor(OleColor value) { repaintingChange("BackColor", [&] { grid_->setBackColor(value); }); }

OleColor Tabula::BackColorAlt() const { return grid_->appearance.alternateRowColor(); }
void Tabula::setBackColorAlt(OleColor value) { repaintingChange("BackColorAlt", [&] { grid_->setBackColorAlt(value); }); }

OleColor Tabula::BackColorFixed() const { return grid_->appearance.headerBackColor(); }
void Tabula::setBackColorFixed(OleColor value)
{
    repaintingChange("BackColorFixed", [&] { grid_->setBackColorFixed(value); });
}

OleColor Tabula::ForeColor() const { return detail::SharedForeColor; }
void Tabula::setForeColor(OleColor value) { change("ForeColor", [&] { grid_->setForeColor(value); }); }

OleColor Tabula::ForeColorFixed() const { return grid_->appearance.headerForeColor(); }
void Tabula::setForeColorFixed(OleColor value)
{
    repaintingChange("ForeColorFixed", [&] { grid_->setForeColorFixed(value); });
}

FixedStyles Tabula::FixedStyle() const { return static_cast<FixedStyles>(grid_->appearance.headerStyle()); }
void Tabula::setFixedStyle(FixedStyles value) { repaintingChange("FixedStyle", [&] { grid_->setFixedStyle(value); }); }

FontRef Tabula::Font() const { return grid_->appearance.font(); }
void Tabula::setFont(FontRef value) { repaintingChange("Font", [&] { grid_->setFont(std::move(value)); }); }

FontRef Tabula::FontEdit() const { return grid_->appearance.editorFont(); }
void Tabula::setFontEdit(FontRef value) { repaintingChange("FontEdit", [&] { grid_->setFontEdit(std::move(value)); }); }

FontRef Tabula::FontFixed() const { return grid_->appearance.headerFont(); }
void Tabula::setFontFixed(FontRef value) { repaintingChange("FontFixed", [&] { grid_->setFontFixed(std::move(value)); }); }

QFont Tabula::fontValue() const { return Font()->toQFont(); }
void Tabula::setFont(const QFont& value) { setFont(StdFont::fromQFont(value)); }
QFont Tabula::fontEditValue() const { return FontEdit()->toQFont(); }
void Tabula::setFontEdit(const QFont& value) { setFontEdit(StdFont::fromQFont(value)); }
QFont Tabula::fontFixedValue() const { return FontFixed()->toQFont(); }
void Tabula::setFontFixed(const QFont& value) { setFontFixed(StdFont::fromQFont(value)); }

// A font set on the grid as a widget (QWidget::setFont, a form loader's
// "font") becomes its Font. An inherited one (parent, application) passes only
// where it changes the font so set: it never replaces the default Font, nor
// brings back a set font that the host has since replaced.
void Tabula::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && followPalette())
        applyPalette();
    if (event->type() != QEvent::FontChange || !testAttribute(Qt::WA_SetFont))
        return;
    FontRef set = StdFont::fromQFont(QWidget::font());
    if (*set == widgetFont_)
        return;
    widgetFont_ = *set;
    notify("UserControl_FontChanged", [&] { setFont(std::move(set)); });
}

OleColor Tabula::BackColorBkg() const { return grid_->appearance.backgroundColor(); }
void Tabula::setBackColorBkg(OleColor value) { repaintingChange("BackColorBkg", [&] { grid_->setBackColorBkg(value); }); }

QString Tabula::FormatString() const { return grid_->model.formatString(); }
void Tabula::setFormatString(const QString& value)
{
    repaintingChange("FormatString", [&] {
        // Parsing can fail half-way; the picture must then be the old one.
        grid_->flushPaint();
        grid_->setFormatString(value);
    });
}

void Tabula::AutoSetup(const QVariant& NRows, const QVariant& NCols, bool vRowHeader, bool vColHeader,
                       const QVariant& vFormatString)
{
    repaintingChange("AutoSetup", [&] {
        grid_->flushPaint();
        grid_->AutoSetup(NRows, NCols, vRowHeader, vColHeader, vFormatString);
    });
}

}  // namespace TabulaControl
