#pragma once

#include "values/Failure.h"
#include "wrappers/iBenchControl.h"

#include <QString>

namespace zan::livedata {

/// What stands for a value of the past that is not stored.
inline const QString NotStored = QStringLiteral("-");

/// The live control behind a wrapper, held while it is written to. Raises 91 when there is none.
inline binding::Ref<binding::Object> liveTarget(const wrappers::iBenchControl& control)
{
    return values::given(control.Control());
}

} // namespace zan::livedata
