#include "designer/ControlSheet.h"

#include "binding/MemberTable.h"
#include "display/DesignProperties.h"

#include <QtDesigner/QExtensionManager>

namespace zan::designer {

using display::DesignProperties;

namespace {

/// A value as our own code knows it. The editor has texts in a type of its own, which only the toolkit's sheets can read:
/// one of them is given the text of a widget that nobody sees.
QVariant plainValue(QExtensionManager& sheets, const QVariant& value)
{
    if (value.userType() < QMetaType::User)
        return value;
    QWidget reader;
    auto* const sheet = qt_extension<QDesignerPropertySheetExtension*>(&sheets, &reader);
    const int text = sheet ? sheet->indexOf(QStringLiteral("statusTip")) : -1;
    if (text < 0)
        return {};
    sheet->setProperty(text, value);
    return reader.statusTip();
}

} // namespace

ControlSheet::ControlSheet(QWidget& widget, const DesignedClass& row, QObject& sheet, QExtensionManager& sheets,
                           QObject* parent)
    : QObject(parent)
    , m_widget(&widget)
    , m_control(row.control(widget))
    , m_toolkits(*qobject_cast<QDesignerPropertySheetExtension*>(&sheet))
    , m_dynamic(qobject_cast<QDesignerDynamicPropertySheetExtension*>(&sheet))
    , m_sheets(sheets)
{
    const QString group = m_control->members().className();
    for (const binding::Member* member : DesignProperties::of(*m_control))
        m_own.push_back({member, member->name.text().toLatin1(), group});
}

ControlSheet::Own* ControlSheet::own(int index)
{
    const int place = index - m_toolkits.count();
    return place >= 0 && place < int(m_own.size()) ? &m_own[std::size_t(place)] : nullptr;
}

int ControlSheet::count() const
{
    return m_toolkits.count() + int(m_own.size());
}

int ControlSheet::indexOf(const QString& name) const
{
    for (std::size_t place = 0; place < m_own.size(); ++place) {
        if (name == QLatin1String(m_own[place].name))
            return m_toolkits.count() + int(place);
    }
    return m_toolkits.indexOf(name);
}

QString ControlSheet::propertyName(int index) const
{
    const Own* row = own(index);
    return row ? QString::fromLatin1(row->name) : m_toolkits.propertyName(index);
}

QString ControlSheet::propertyGroup(int index) const
{
    const Own* row = own(index);
    return row ? row->group : m_toolkits.propertyGroup(index);
}

void ControlSheet::setPropertyGroup(int index, const QString& group)
{
    if (Own* row = own(index))
        row->group = group;
    else
        m_toolkits.setPropertyGroup(index, group);
}

bool ControlSheet::hasReset(int index) const
{
    return own(index) || m_toolkits.hasReset(index);
}

bool ControlSheet::reset(int index)
{
    Own* row = own(index);
    if (!row)
        return m_toolkits.reset(index);
    if (!m_widget)
        return false;
    m_widget->setProperty(row->name.constData(), QVariant());
    if (!row->member->fallback.isEmpty())
        m_control->tryPut(row->member->name, row->member->fallback);
    row->isChanged = false;
    return true;
}

bool ControlSheet::isVisible(int index) const
{
    const Own* row = own(index);
    return row ? row->isVisible : m_toolkits.isVisible(index);
}

void ControlSheet::setVisible(int index, bool visible)
{
    if (Own* row = own(index))
        row->isVisible = visible;
    else
        m_toolkits.setVisible(index, visible);
}

bool ControlSheet::isAttribute(int index) const
{
    const Own* row = own(index);
    return row ? row->isAttribute : m_toolkits.isAttribute(index);
}

void ControlSheet::setAttribute(int index, bool attribute)
{
    if (Own* row = own(index))
        row->isAttribute = attribute;
    else
        m_toolkits.setAttribute(index, attribute);
}

/// What the form has, or what the control shows where the form has nothing.
QVariant ControlSheet::property(int index) const
{
    const Own* row = own(index);
    if (!row)
        return m_toolkits.property(index);
    const QVariant kept = m_widget ? m_widget->property(row->name.constData()) : QVariant();
    if (kept.isValid())
        return kept;
    binding::Variant value;
    if (m_control->tryGet(row->member->name, value) != binding::AccessStatus::Ok)
        return {};
    return DesignProperties::toForm(*row->member, value);
}

void ControlSheet::setProperty(int index, const QVariant& value)
{
    const Own* row = own(index);
    if (!row) {
        m_toolkits.setProperty(index, value);
        return;
    }
    if (!m_widget)
        return;
    m_widget->setProperty(row->name.constData(), value);
    // The widget hands nothing on while it is in a type of the editor's own.
    const QVariant plain = plainValue(m_sheets, value);
    if (plain.isValid() && plain != value)
        DesignProperties::apply(*m_control, *row->member, plain);
}

bool ControlSheet::isChanged(int index) const
{
    const Own* row = own(index);
    return row ? row->isChanged : m_toolkits.isChanged(index);
}

void ControlSheet::setChanged(int index, bool changed)
{
    if (Own* row = own(index))
        row->isChanged = changed;
    else
        m_toolkits.setChanged(index, changed);
}

bool ControlSheet::isEnabled(int index) const
{
    return own(index) || m_toolkits.isEnabled(index);
}

bool ControlSheet::dynamicPropertiesAllowed() const
{
    return m_dynamic && m_dynamic->dynamicPropertiesAllowed();
}

int ControlSheet::addDynamicProperty(const QString& name, const QVariant& value)
{
    return m_dynamic ? m_dynamic->addDynamicProperty(name, value) : -1;
}

bool ControlSheet::removeDynamicProperty(int index)
{
    return !own(index) && m_dynamic && m_dynamic->removeDynamicProperty(index);
}

/// Dynamic ones are always stored, whatever else the editor knows of them: a form has only what was changed.
bool ControlSheet::isDynamicProperty(int index) const
{
    if (const Own* row = own(index))
        return row->isChanged;
    return m_dynamic && m_dynamic->isDynamicProperty(index);
}

bool ControlSheet::canAddDynamicProperty(const QString& name) const
{
    return indexOf(name) < 0 && m_dynamic && m_dynamic->canAddDynamicProperty(name);
}

QObject* ControlSheets::createExtension(QObject* object, const QString& iid, QObject* parent) const
{
    auto* const widget = qobject_cast<QWidget*>(object);
    const DesignedClass* const row = widget ? designedClassOf(*widget) : nullptr;
    if (!row || m_isAsking)
        return nullptr;
    // One sheet for both questions: what was changed is known to it.
    if (iid == Q_TYPEID(QDesignerDynamicPropertySheetExtension))
        return qobject_cast<ControlSheet*>(
            extensionManager()->extension(object, Q_TYPEID(QDesignerPropertySheetExtension)));
    m_isAsking = true;
    QObject* const toolkits = extensionManager()->extension(object, iid);
    m_isAsking = false;
    if (!toolkits || !qobject_cast<QDesignerPropertySheetExtension*>(toolkits))
        return nullptr;
    return new ControlSheet(*widget, *row, *toolkits, *extensionManager(), parent);
}

} // namespace zan::designer
