#include "core/Facade.h"

namespace TabulaControl {

bool Tabula::ColHeader() const { return grid_->s.mColHeader; }
void Tabula::setColHeader(bool value) { call("ColHeader", [&] { grid_->setColHeader(value); }); }

bool Tabula::RowHeader() const { return grid_->s.mRowHeader; }
void Tabula::setRowHeader(bool value) { call("RowHeader", [&] { grid_->setRowHeader(value); }); }

bool Tabula::ShowGrid() const { return grid_->s.mShowGrid; }
void Tabula::setShowGrid(bool value) { call("ShowGrid", [&] { grid_->setShowGrid(value); }); }

bool Tabula::GridSolid() const { return grid_->s.mGridSolid; }
void Tabula::setGridSolid(bool value) { call("GridSolid", [&] { grid_->setGridSolid(value); }); }

OleColor Tabula::GridLineColor() const { return grid_->s.mGridLineColor; }
void Tabula::setGridLineColor(OleColor value)
{
    call("GridLineColor", [&] { grid_->setGridLineColor(value); });
}

BorderStyles Tabula::BorderStyle() const { return static_cast<BorderStyles>(grid_->s.mBorderStyle); }
void Tabula::setBorderStyle(BorderStyles value) { call("BorderStyle", [&] { grid_->setBorderStyle(value); }); }

int16_t Tabula::MousePointer() const { return grid_->ui.window.MousePointer(); }
void Tabula::setMousePointer(int16_t value) { call("MousePointer", [&] { grid_->setMousePointer(value); }); }

bool Tabula::UseBackColorAlt() const { return grid_->s.mUseBackColorAlt; }
void Tabula::setUseBackColorAlt(bool value)
{
    call("UseBackColorAlt", [&] { grid_->setUseBackColorAlt(value); });
}

OleColor Tabula::BackColor() const { return detail::SharedBackColor; }
void Tabula::setBackColor(OleColor value) { call("BackColor", [&] { grid_->setBackColor(value); }); }

OleColor Tabula::BackColorAlt() const { return grid_->s.mBackColorAlt; }
void Tabula::setBackColorAlt(OleColor value) { call("BackColorAlt", [&] { grid_->setBackColorAlt(value); }); }

OleColor Tabula::BackColorFixed() const { return grid_->s.mBackColorFixed; }
void Tabula::setBackColorFixed(OleColor value)
{
    call("BackColorFixed", [&] { grid_->setBackColorFixed(value); });
}

OleColor Tabula::ForeColor() const { return detail::SharedForeColor; }
void Tabula::setForeColor(OleColor value) { call("ForeColor", [&] { grid_->setForeColor(value); }); }

OleColor Tabula::ForeColorFixed() const { return grid_->s.mForeColorFixed; }
void Tabula::setForeColorFixed(OleColor value)
{
    call("ForeColorFixed", [&] { grid_->setForeColorFixed(value); });
}

FixedStyles Tabula::FixedStyle() const { return static_cast<FixedStyles>(grid_->s.mFixedStyle); }
void Tabula::setFixedStyle(FixedStyles value) { call("FixedStyle", [&] { grid_->setFixedStyle(value); }); }

FontRef Tabula::Font() const { return grid_->s.mFont; }
void Tabula::setFont(FontRef value) { call("Font", [&] { grid_->setFont(std::move(value)); }); }

FontRef Tabula::FontEdit() const { return grid_->s.mFontEdit; }
void Tabula::setFontEdit(FontRef value) { call("FontEdit", [&] { grid_->setFontEdit(std::move(value)); }); }

FontRef Tabula::FontFixed() const { return grid_->s.mFontFixed; }
void Tabula::setFontFixed(FontRef value) { call("FontFixed", [&] { grid_->setFontFixed(std::move(value)); }); }

OleColor Tabula::BackColorBkg() const { return grid_->s.mBackColorBkg; }
void Tabula::setBackColorBkg(OleColor value) { call("BackColorBkg", [&] { grid_->setBackColorBkg(value); }); }

QString Tabula::FormatString() const { return grid_->s.mFormatString; }
void Tabula::setFormatString(const QString& value)
{
    call("FormatString", [&] { grid_->setFormatString(value); });
}

void Tabula::AutoSetup(const QVariant& NRows, const QVariant& NCols, bool vRowHeader, bool vColHeader,
                       const QVariant& vFormatString)
{
    call("AutoSetup", [&] { grid_->AutoSetup(NRows, NCols, vRowHeader, vColHeader, vFormatString); });
}

}  // namespace TabulaControl
