#pragma once

#include "binding/PropertyBag.h"

#include <QStringList>

namespace zan::host {

/// A property bag as lines "Name=Kind:text", in the bag's order, for a settings file that a person can read. A font
/// is one line per attribute, "Font.Size=Currency:9.75". Values that have no lasting form (a picture, which its
/// file name brings back) are left out.
QStringList bagToText(const binding::PropertyBag& bag);

/// The bag that these lines make. Lines that cannot be read are left out: the property then has its default.
binding::PropertyBag bagFromText(const QStringList& lines);

} // namespace zan::host
