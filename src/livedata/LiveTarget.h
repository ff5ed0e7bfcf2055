#pragma once

#include "values/Failure.h"
#include "wrappers/iBenchControl.h"

namespace zan::livedata {

/// The live control behind a wrapper, held while it is written to. Raises 91 when there is none.
inline binding::Ref<binding::Object> liveTarget(const wrappers::iBenchControl& control)
{
    return values::given(control.Control());
}

} // namespace zan::livedata
