#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace TabulaControl::designer {

// Puts Tabula into Qt Designer's widget box and, once Designer initialises
// it, offers the General page on the grid's task menu.
class TabulaPlugin : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetInterface")
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    using QObject::QObject;

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override { return initialized_; }
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override;

private:
    bool initialized_ = false;
};

}  // namespace TabulaControl::designer
