#pragma once

#include "surface/host/LiveControl.h"

#include <QAccessible>

namespace zan::surface {

/// What assistive tools say of a control or of a surface.
struct Spoken
{
    QString name;        ///< never empty for a control
    QString value;       ///< with its units; empty where the name says all
    QString description; ///< what the tool tip says
    bool acts = false;   ///< a click on it does something
};

/// Asks the owner of the control's surface, who may take both away: whoever goes on with them looks first.
Spoken spokenOf(LiveControl& control);
/// The name of a surface; empty when its owner has none for it. The surface may be gone afterwards.
QString spokenNameOf(const Surface& surface);
/// The toolkit's word for a role of ours.
QAccessible::Role toolkitRole(AccessibleRole role);
/// Whether a control that has an input widget is named by us: where its caption, or the widget itself, has a name it is
/// not.
bool isNamedByOwner(const LiveControl& control);

} // namespace zan::surface
