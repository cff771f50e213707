#include <TabulaControl/Tabula.h>

#include "state/Errors.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>

#include <utility>
#include <vector>

namespace TabulaControl::detail {

struct CheckField {
    QCheckBox* box;
    bool (Tabula::*get)() const;
    void (Tabula::*set)(bool);
};

struct GeneralControls {
    QLineEdit* txtRows;
    QLineEdit* txtCols;
    QLineEdit* txtListBoxRows;
    QComboBox* cboBorderStyle;
    QComboBox* cboFixedStyle;
    QComboBox* cboSelectionMode;
    QCheckBox* chkSelectText;
    std::vector<CheckField> checks;  // in the order the page loads and applies them
};

}  // namespace TabulaControl::detail

namespace TabulaControl {

namespace {

template <class W>
W* named(W* widget, const char* name)
{
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QComboBox* listOf(const char* name, const QStringList& entries)
{
    auto* box = named(new QComboBox, name);
    box->addItems(entries);
    return box;
}

template <class F>
void pageTrap(const char* procedure, F&& body, std::source_location where = std::source_location::current())
{
    detail::trap("General", procedure, where.line(), std::forward<F>(body));
}

int32_t numberIn(const QLineEdit* field)
{
    bool ok = false;
    const double value = field->text().trimmed().toDouble(&ok);
    if (!ok)
        detail::raise(detail::RuntimeError::TypeMismatch);
    return detail::roundTo32(value);
}

// A check box shows a property as checked when its value, as -1 or 0, has
// the lowest bit set; only a fully checked box applies True.
void load(QCheckBox* box, bool value) { box->setCheckState(value ? Qt::Checked : Qt::Unchecked); }
bool applied(const QCheckBox* box) { return box->checkState() == Qt::Checked; }

}  // namespace

General::General(QWidget* parent) : QWidget(parent), controls_(std::make_unique<detail::GeneralControls>())
{
    setObjectName(QStringLiteral("General"));
    auto& c = *controls_;
    c.txtRows = named(new QLineEdit, "txtRows");
    c.txtCols = named(new QLineEdit, "txtCols");
    c.txtListBoxRows = named(new QLineEdit, "txtListBoxRows");
    c.cboBorderStyle = listOf("cboBorderStyle", {"0 - None", "1 - Single", "2 - Thin raised", "3 - Thin inset"});
    c.cboFixedStyle = listOf("cboFixedStyle", {"0 - Flat", "1 - 3D"});
    c.cboSelectionMode = listOf("cboSelectionMode", {"0 - Free", "1 - By row", "2 - By column"});
    c.chkSelectText = named(new QCheckBox(QStringLiteral("Select text on edit")), "chkSelectText");
    auto check = [&](const char* name, const char* caption, bool (Tabula::*get)() const, void (Tabula::*set)(bool)) {
        c.checks.push_back({named(new QCheckBox(QLatin1String(caption)), name), get, set});
    };
    check("chkUseItemData", "Use item data", &Tabula::UseItemData, &Tabula::setUseItemData);
    check("chkAutoNewRow", "Automatic new row", &Tabula::AutoNewRow, &Tabula::setAutoNewRow);
    check("chkAllowUserResizing", "Allow user resizing", &Tabula::AllowUserResizing, &Tabula::setAllowUserResizing);
    check("chkEnabled", "Enabled", &Tabula::Enabled, &Tabula::setEnabled);
    check("chkUseBackColorAlt", "Alternate row colour", &Tabula::UseBackColorAlt, &Tabula::setUseBackColorAlt);
    check("chkAllowSelection", "Allow selection", &Tabula::AllowSelection, &Tabula::setAllowSelection);
    check("chkAutoRedraw", "Redraw after changes", &Tabula::AutoRedraw, &Tabula::setAutoRedraw);
    check("chkGridSolid", "Solid grid lines", &Tabula::GridSolid, &Tabula::setGridSolid);
    check("chkShowGrid", "Show grid lines", &Tabula::ShowGrid, &Tabula::setShowGrid);
    check("chkRowHeader", "Row headers", &Tabula::RowHeader, &Tabula::setRowHeader);
    check("chkColHeader", "Column headers", &Tabula::ColHeader, &Tabula::setColHeader);
    check("chkSpreadsheetKeys", "Spreadsheet keys", &Tabula::spreadsheetKeys, &Tabula::setSpreadsheetKeys);
    check("chkSortOnHeaderClick", "Sort on header click", &Tabula::sortOnHeaderClick, &Tabula::setSortOnHeaderClick);

    auto* form = new QFormLayout(this);
    form->addRow(QStringLiteral("Rows"), c.txtRows);
    form->addRow(QStringLiteral("Cols"), c.txtCols);
    form->addRow(QStringLiteral("List box rows"), c.txtListBoxRows);
    form->addRow(QStringLiteral("Border style"), c.cboBorderStyle);
    form->addRow(QStringLiteral("Fixed style"), c.cboFixedStyle);
    form->addRow(QStringLiteral("Selection mode"), c.cboSelectionMode);
    form->addRow(c.chkSelectText);
    for (const auto& field : c.checks)
        form->addRow(field.box);

    for (QLineEdit* text : {c.txtRows, c.txtCols, c.txtListBoxRows})
        connect(text, &QLineEdit::textEdited, this, &General::markChanged);
    for (QComboBox* list : {c.cboBorderStyle, c.cboFixedStyle, c.cboSelectionMode})
        connect(list, &QComboBox::activated, this, &General::markChanged);
    connect(c.chkSelectText, &QCheckBox::clicked, this, &General::markChanged);
    for (const auto& field : c.checks)
        connect(field.box, &QCheckBox::clicked, this, &General::markChanged);
}

General::~General() = default;

void General::markChanged() { setChanged(true); }

void General::setChanged(bool changed)
{
    if (changed_ == changed)
        return;
    changed_ = changed;
    emit changedChanged(changed);
}

void General::PropertyPage_SelectionChanged(const QList<Tabula*>& selectedControls)
{
    selected_ = selectedControls;
    if (selected_.isEmpty() || !selected_.first())
        return;
    pageTrap("PropertyPage_SelectionChanged", [&] {
        const Tabula& grid = *selected_.first();
        auto& c = *controls_;
        c.txtListBoxRows->setText(QString::number(grid.ListBoxRows()));
        for (const auto& field : c.checks)
            load(field.box, (grid.*field.get)());
        c.txtCols->setText(QString::number(grid.Cols()));
        c.txtRows->setText(QString::number(grid.Rows()));
        c.cboBorderStyle->setCurrentIndex(grid.BorderStyle());
        c.cboFixedStyle->setCurrentIndex(grid.FixedStyle());
        c.cboSelectionMode->setCurrentIndex(grid.SelectionMode());
        load(c.chkSelectText, grid.SelectText());
    });
    setChanged(false);
}

void General::PropertyPage_ApplyChanges()
{
    if (selected_.isEmpty() || !selected_.first())
        return;
    pageTrap("PropertyPage_ApplyChanges", [&] {
        Tabula& grid = *selected_.first();
        auto& c = *controls_;
        grid.setListBoxRows(detail::to16(numberIn(c.txtListBoxRows)));
        for (const auto& field : c.checks)
            (grid.*field.set)(applied(field.box));
        grid.setCols(numberIn(c.txtCols));
        grid.setRows(numberIn(c.txtRows));
        grid.setBorderStyle(static_cast<BorderStyles>(c.cboBorderStyle->currentIndex()));
        grid.setFixedStyle(static_cast<FixedStyles>(c.cboFixedStyle->currentIndex()));
        grid.setSelectionMode(static_cast<SelectModes>(c.cboSelectionMode->currentIndex()));
        grid.setSelectText(applied(c.chkSelectText));
    });
    setChanged(false);
}

}  // namespace TabulaControl
