#include "display/DesignProperties.h"

#include "binding/MemberTable.h"
#include "surface/text/FontObject.h"
#include "values/Colour.h"

#include <QApplication>
#include <QColor>
#include <QDynamicPropertyChangeEvent>
#include <QFont>
#include <QPalette>
#include <QWidget>

namespace zan::display {

using binding::Member;
using binding::ValueType;
using surface::FontObject;

namespace {

/// The one kind of object that a form knows.
bool isFont(const Member& member)
{
    static const values::Name font("Font");
    return member.type == ValueType::Object && member.name.equalsIgnoringCase(font);
}

bool hasFormType(const Member& member)
{
    return isFont(member) || (member.type != ValueType::Object && member.type != ValueType::None);
}

} // namespace

DesignProperties::DesignProperties(QWidget& widget, const Ref<binding::Object>& control)
    : QObject(&widget)
    , m_control(control)
{
    widget.installEventFilter(this);
}

std::vector<const Member*> DesignProperties::of(const binding::Object& control)
{
    std::vector<const Member*> members;
    for (const Member* member : control.members().stored()) {
        if (hasFormType(*member))
            members.push_back(member);
    }
    return members;
}

bool DesignProperties::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::DynamicPropertyChange)
        return false;
    const QByteArray name = static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName();
    const QVariant value = watched->property(name.constData());
    const Member* member = m_control->members().find(values::Name(name.constData()));
    if (!member || !member->isStored || !member->put || !hasFormType(*member) || !value.isValid())
        return false;
    if (value.userType() >= QMetaType::User)
        return false; // the designer's own types; what it shows is set by its sheet
    apply(*m_control, *member, value);
    return false;
}

void DesignProperties::apply(binding::Object& control, const Member& member, const QVariant& value)
{
    control.tryPut(member.name, fromForm(member, value));
    // Some properties show in the next picture only, and a form has no later one.
    static const values::Name refresh("Refresh");
    Variant nothing;
    static_cast<void>(control.tryGet(refresh, nothing));
}

QVariant DesignProperties::toForm(const Member& member, const Variant& value)
{
    using values::Kind;
    if (isFont(member)) {
        auto* const font = value.isObject() ? dynamic_cast<FontObject*>(value.object()) : nullptr;
        if (!font)
            return {};
        // A form has no sizes in pixels, and the name is that of the font that was asked for.
        QFont written = font->qfont();
        written.setFamily(font->name());
        written.setPointSizeF(font->points());
        return written;
    }
    if (member.type == ValueType::Colour)
        return value.is(Kind::Long) ? QVariant(values::toQColor({value.longInteger()}, QApplication::palette()))
                                    : QVariant();
    if (value.is(Kind::Boolean))
        return value.boolean();
    if (value.isText())
        return value.text();
    if (value.is(Kind::Integer) || value.is(Kind::Long) || value.is(Kind::Byte))
        return int(values::toLong(value));
    return value.isNumber() ? QVariant(values::toDouble(value)) : QVariant();
}

Variant DesignProperties::fromForm(const Member& member, const QVariant& value)
{
    if (isFont(member))
        return Variant(FontObject::fromQFont(value.value<QFont>()));
    if (member.type == ValueType::Colour && value.typeId() == QMetaType::QColor)
        return Variant(values::fromQColor(value.value<QColor>()).code);
    switch (value.typeId()) {
    case QMetaType::Bool:
        return Variant(value.toBool());
    case QMetaType::Int:
        return Variant(std::int32_t(value.toInt()));
    case QMetaType::Double:
    case QMetaType::Float:
        return Variant(value.toDouble());
    default:
        return Variant(value.toString());
    }
}

} // namespace zan::display
