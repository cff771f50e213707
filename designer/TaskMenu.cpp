#include "designer/TaskMenu.h"

#include "designer/GeneralDialog.h"

#include <TabulaControl/Tabula.h>

#include <QAction>

namespace TabulaControl::designer {

TaskMenu::TaskMenu(Tabula* grid, QObject* parent)
    : QObject(parent), grid_(grid), editGeneral_(new QAction(tr("Edit General Properties..."), this))
{
    connect(editGeneral_, &QAction::triggered, this, &TaskMenu::openGeneralPage);
}

void TaskMenu::openGeneralPage()
{
    auto* dialog = new GeneralDialog(grid_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

QObject* TaskMenuFactory::createExtension(QObject* object, const QString& iid, QObject* parent) const
{
    auto* grid = qobject_cast<Tabula*>(object);
    if (!grid || iid != Q_TYPEID(QDesignerTaskMenuExtension))
        return nullptr;
    return new TaskMenu(grid, parent);
}

}  // namespace TabulaControl::designer
