#include "designer/GeneralDialog.h"

#include <TabulaControl/Tabula.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QMetaProperty>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>

namespace TabulaControl::designer {

namespace {

QVariantMap designableValues(const QObject& object)
{
    QVariantMap values;
    const QMetaObject* meta = object.metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (property.isDesignable())
            values.insert(QString::fromLatin1(property.name()), property.read(&object));
    }
    return values;
}

}  // namespace

GeneralDialog::GeneralDialog(Tabula* grid)
    : QDialog(grid->window()), grid_(grid), page_(new General(this)), error_(new QLabel(this))
{
    setObjectName(QStringLiteral("tabulaGeneralDialog"));
    setWindowTitle(tr("General Properties"));
    error_->setObjectName(QStringLiteral("error"));
    error_->setWordWrap(true);
    error_->hide();

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply);
    QPushButton* applyButton = buttons->button(QDialogButtonBox::Apply);
    applyButton->setEnabled(false);
    connect(page_, &General::changedChanged, applyButton, &QWidget::setEnabled);
    connect(applyButton, &QPushButton::clicked, this, &GeneralDialog::apply);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (apply())
            accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(grid, &QObject::destroyed, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(page_);
    layout->addWidget(error_);
    layout->addWidget(buttons);
    page_->PropertyPage_SelectionChanged({grid});
}

// A failure leaves the properties applied before it in place, as the page
// does; they are recorded all the same.
bool GeneralDialog::apply()
{
    if (!grid_)
        return false;
    const QVariantMap before = designableValues(*grid_);
    bool applied = true;
    try {
        page_->PropertyPage_ApplyChanges();
        error_->hide();
    } catch (const ComponentError& error) {
        error_->setText(error.Source + QStringLiteral(": ") + error.Description);
        error_->setToolTip(error.causeText());
        error_->show();
        applied = false;
    }
    recordChanges(before);
    return applied;
}

void GeneralDialog::recordChanges(const QVariantMap& before)
{
    QDesignerFormWindowInterface* form = QDesignerFormWindowInterface::findFormWindow(grid_);
    if (!form)
        return;
    const QVariantMap after = designableValues(*grid_);
    for (auto it = after.cbegin(); it != after.cend(); ++it) {
        if (before.value(it.key()) != it.value())
            form->cursor()->setWidgetProperty(grid_, it.key(), it.value());
    }
}

}  // namespace TabulaControl::designer
