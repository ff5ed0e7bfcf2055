#pragma once

#include "surface/Forward.h"
#include "values/Ref.h"

#include <QStringView>

namespace zan::surface {

/// Makes one control, not yet placed.
using ProvidedCreator = values::Ref<LiveControl> (*)();

// Types of control that come from a library of their own, which a panel does not link: a program that wants them has
// the library enter its creators here, before it makes a panel. Until then their keys are unknown types.

/// Enters the creator of a type key; a later one takes its place. The key must outlive the process.
void provideControl(QStringView key, ProvidedCreator creator);
/// The creator of a type key, or null.
ProvidedCreator providedControl(QStringView key) noexcept;

} // namespace zan::surface
