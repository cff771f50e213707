#pragma once

#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionFactory>

class QAction;

namespace TabulaControl {
class Tabula;
}

namespace TabulaControl::designer {

// The grid's entry on Designer's task menu: opens the General page on it.
class TaskMenu : public QObject, public QDesignerTaskMenuExtension {
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
public:
    TaskMenu(Tabula* grid, QObject* parent);

    QAction* preferredEditAction() const override { return editGeneral_; }
    QList<QAction*> taskActions() const override { return {editGeneral_}; }

private:
    void openGeneralPage();

    Tabula* grid_;
    QAction* editGeneral_;
};

class TaskMenuFactory : public QExtensionFactory {
    Q_OBJECT
public:
    using QExtensionFactory::QExtensionFactory;

protected:
    QObject* createExtension(QObject* object, const QString& iid, QObject* parent) const override;
};

}  // namespace TabulaControl::designer
