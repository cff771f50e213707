#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPluginLoader>
#include <QPushButton>
#include <QUiLoader>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include "ui_form.h"

#include <TabulaControl/Tabula.h>

#include <gtest/gtest.h>

// The plugin as Designer and QUiLoader load it.
namespace {

const QString pluginFile = QStringLiteral(TABULA_DESIGNER_PLUGIN);

QDesignerCustomWidgetInterface* plugin()
{
    static QPluginLoader loader(pluginFile);
    return qobject_cast<QDesignerCustomWidgetInterface*>(loader.instance());
}

std::unique_ptr<QWidget> loadForm(QByteArray ui)
{
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(QFileInfo(pluginFile).path());
    QBuffer buffer(&ui);
    std::unique_ptr<QWidget> form(loader.load(&buffer));
    EXPECT_NE(form, nullptr) << qPrintable(loader.errorString());
    return form;
}

QDialog* openDialog()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == "tabulaGeneralDialog" && widget->isVisible())
            return static_cast<QDialog*>(widget);
    }
    return nullptr;
}

}  // namespace

TEST(DesignerPlugin, PutsTabulaIntoItsOwnGroupOfTheWidgetBox)
{
    ASSERT_NE(plugin(), nullptr);
    EXPECT_EQ(plugin()->name(), "TabulaControl::Tabula");
    EXPECT_EQ(plugin()->group(), "Tabula");
    EXPECT_EQ(plugin()->includeFile(), "TabulaControl/Tabula.h");
    EXPECT_FALSE(plugin()->isContainer());
    EXPECT_FALSE(plugin()->icon().pixmap(32).isNull());

    QWidget parent;
    QWidget* created = plugin()->createWidget(&parent);
    EXPECT_STREQ(created->metaObject()->className(), "TabulaControl::Tabula");
    EXPECT_EQ(created->parentWidget(), &parent);

    const auto dropped = loadForm(plugin()->domXml().toUtf8());
    ASSERT_NE(dropped, nullptr);
    EXPECT_STREQ(dropped->metaObject()->className(), "TabulaControl::Tabula");
    EXPECT_EQ(dropped->size(), QSize(320, 200));
}

// Designer's form editor, headless, with the test form open in it.
TEST(Designer, SavesWhatAFormLoaderRestoresAndItsTaskMenuEditsTheGridOnTheGeneralPage)
{
    QCoreApplication::addLibraryPath(QFileInfo(pluginFile).path() + "/..");
    const std::unique_ptr<QDesignerFormEditorInterface> core(QDesignerComponents::createFormEditor(nullptr));
    QDesignerComponents::initializePlugins(core.get());
    new QDesignerIntegration(core.get(), core.get());
    const std::unique_ptr<QDesignerFormWindowInterface> window(core->formWindowManager()->createFormWindow());
    QFile file(QStringLiteral(TABULA_TEST_DATA "/designer/form.ui"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QString error;
    ASSERT_TRUE(window->setContents(&file, &error)) << qPrintable(error);
    QWidget* grid = window->mainContainer()->findChild<QWidget*>("grid");
    ASSERT_NE(grid, nullptr);

    const auto form = loadForm(window->contents().toUtf8());
    ASSERT_NE(form, nullptr);
    QWidget* loaded = form->findChild<QWidget*>("grid");
    ASSERT_NE(loaded, nullptr);
    QWidget compiled;
    Ui::Form ui;
    ui.setupUi(&compiled);
    const QMetaObject& meta = TabulaControl::Tabula::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const char* name = meta.property(i).name();
        if (meta.property(i).isDesignable()) {
            EXPECT_EQ(loaded->property(name).toString(), ui.grid->property(name).toString()) << name;
        }
    }
#ifndef TABULACONTROL_STATIC
    // The plugin shares the application's library: the grid is of the application's own class.
    EXPECT_EQ(form->findChildren<TabulaControl::Tabula*>(), QList{qobject_cast<TabulaControl::Tabula*>(loaded)});
#endif

    auto* menu = qt_extension<QDesignerTaskMenuExtension*>(core->extensionManager(), grid);
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->taskActions().size(), 1);
    EXPECT_EQ(menu->preferredEditAction(), menu->taskActions().first());

    menu->preferredEditAction()->trigger();
    QDialog* dialog = openDialog();
    ASSERT_NE(dialog, nullptr);
    auto* rows = dialog->findChild<QLineEdit*>("txtRows");
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->text(), "30");
    rows->setText("7");
    dialog->findChild<QCheckBox*>("chkShowGrid")->click();
    dialog->findChild<QCheckBox*>("chkAutoNewRow")->click();
    EXPECT_EQ(grid->property("Rows").toInt(), 30);
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();

    EXPECT_EQ(openDialog(), nullptr);
    EXPECT_EQ(grid->property("Rows").toInt(), 7);
    EXPECT_TRUE(grid->property("ShowGrid").toBool());
    const auto edited = loadForm(window->contents().toUtf8());
    ASSERT_NE(edited, nullptr);
    QWidget* saved = edited->findChild<QWidget*>("grid");
    EXPECT_EQ(saved->property("Rows").toInt(), 7);
    EXPECT_TRUE(saved->property("ShowGrid").toBool());
    EXPECT_FALSE(saved->property("AutoNewRow").toBool());
}
