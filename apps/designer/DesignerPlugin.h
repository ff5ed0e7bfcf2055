#pragma once

#include "designer/DesignedClasses.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <QObject>

namespace zan::designer {

/// One control in the form designer's box of widgets.
class ControlPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    ControlPlugin(const DesignedClass& row, QObject* parent)
        : QObject(parent)
        , m_row(row)
    {}
    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override { return m_isInitialized; }
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override;

private:
    const DesignedClass& m_row;
    bool m_isInitialized = false;
};

/// Every control of ours, for the form designer and for the loader of its forms.
class DesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    explicit DesignerPlugin(QObject* parent = nullptr);
    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return m_controls; }

private:
    QList<QDesignerCustomWidgetInterface*> m_controls;
};

} // namespace zan::designer
