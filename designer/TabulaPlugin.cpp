#include "designer/TabulaPlugin.h"

#include "designer/TaskMenu.h"

#include <TabulaControl/Tabula.h>

#include <QIcon>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QExtensionManager>

namespace TabulaControl::designer {

QString TabulaPlugin::name() const { return QStringLiteral("TabulaControl::Tabula"); }
QString TabulaPlugin::group() const { return QStringLiteral("Tabula"); }
QString TabulaPlugin::toolTip() const { return QStringLiteral("Editable data grid"); }
QString TabulaPlugin::whatsThis() const
{
    return QStringLiteral("An editable data grid with fixed headers, block selection, column resizing, "
                          "in-place editing, lookup lists and column buttons.");
}
QString TabulaPlugin::includeFile() const { return QStringLiteral("TabulaControl/Tabula.h"); }
QIcon TabulaPlugin::icon() const { return QIcon(QStringLiteral(":/tabula/designer/tabula.png")); }

// Designer initialises the plugin; a form loader at run time does not, and
// its grids run in user mode.
QWidget* TabulaPlugin::createWidget(QWidget* parent)
{
    auto* grid = new Tabula(parent);
    grid->setUserMode(!initialized_);
    return grid;
}

void TabulaPlugin::initialize(QDesignerFormEditorInterface* core)
{
    if (initialized_)
        return;
    if (QExtensionManager* manager = core->extensionManager())
        manager->registerExtensions(new TaskMenuFactory(manager), Q_TYPEID(QDesignerTaskMenuExtension));
    initialized_ = true;
}

QString TabulaPlugin::domXml() const
{
    return QStringLiteral(R"(<ui language="c++">
 <widget class="TabulaControl::Tabula" name="grid">
  <property name="geometry">
   <rect><x>0</x><y>0</y><width>320</width><height>200</height></rect>
  </property>
 </widget>
</ui>
)");
}

}  // namespace TabulaControl::designer
