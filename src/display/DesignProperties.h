#pragma once

#include "binding/Object.h"

#include <QObject>
#include <QVariant>

#include <vector>

namespace zan::binding {
struct Member;
}

namespace zan::display {

using values::Ref;
using values::Variant;

/// What makes the late-bound properties of a control properties of its widget, for forms that a form designer has made:
/// a loader sets what it finds in a form by name, and what the toolkit does not know becomes a dynamic property, which
/// is handed on to the control. A value that the control refuses stays without effect.
class DesignProperties : public QObject
{
public:
    /// Watches the widget and goes with it.
    DesignProperties(QWidget& widget, const Ref<binding::Object>& control);
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// The design values that a form can hold: those that a bag keeps and the toolkit has a type for.
    static std::vector<const binding::Member*> of(const binding::Object& control);
    /// A value as a form has it: colours and fonts in the toolkit's types. Invalid for what has none.
    static QVariant toForm(const binding::Member& member, const Variant& value);
    /// Gives the control a value of a form and draws it. A value that it refuses stays without effect.
    static void apply(binding::Object& control, const binding::Member& member, const QVariant& value);
    static Variant fromForm(const binding::Member& member, const QVariant& value);

private:
    Ref<binding::Object> m_control;
};

} // namespace zan::display
