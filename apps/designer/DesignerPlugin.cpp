#include "designer/DesignerPlugin.h"

#include "designer/ControlSheet.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QExtensionManager>

namespace zan::designer {

DesignerPlugin::DesignerPlugin(QObject* parent)
    : QObject(parent)
{
    for (const DesignedClass& row : designedClasses())
        m_controls.append(new ControlPlugin(row, this));
}

QString ControlPlugin::name() const
{
    return QString::fromLatin1(m_row.className);
}

QString ControlPlugin::group() const
{
    return QStringLiteral("ZanBench");
}

QString ControlPlugin::toolTip() const
{
    return QString::fromLatin1(m_row.toolTip);
}

QString ControlPlugin::whatsThis() const
{
    return toolTip();
}

QString ControlPlugin::includeFile() const
{
    return QStringLiteral("ZanBenchWindow.h");
}

QIcon ControlPlugin::icon() const
{
    return iconOf(m_row);
}

bool ControlPlugin::isContainer() const
{
    return false;
}

QWidget* ControlPlugin::createWidget(QWidget* parent)
{
    return m_row.create(parent);
}

void ControlPlugin::initialize(QDesignerFormEditorInterface* core)
{
    if (m_isInitialized)
        return;
    m_isInitialized = true;
    // One factory does for all controls of ours.
    QExtensionManager* const manager = core->extensionManager();
    if (!manager || manager->findChild<ControlSheets*>())
        return;
    auto* const sheets = new ControlSheets(manager);
    manager->registerExtensions(sheets, Q_TYPEID(QDesignerPropertySheetExtension));
    manager->registerExtensions(sheets, Q_TYPEID(QDesignerDynamicPropertySheetExtension));
}

QString ControlPlugin::domXml() const
{
    return QStringLiteral(
               R"(<ui language="c++" displayname="%5"><widget class="%1" name="%2"><property name="geometry"><rect><x>0</x>
<y>0</y><width>%3</width><height>%4</height></rect></property></widget></ui>)")
        .arg(name(), QString::fromLatin1(m_row.objectName))
        .arg(m_row.width)
        .arg(m_row.height)
        .arg(shortNameOf(m_row));
}

} // namespace zan::designer
