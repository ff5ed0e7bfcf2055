#pragma once

#include "wrappers/iBenchControl.h"

namespace zan::livedata {

/// The live control behind a wrapper, held while it is written to. Raises 91 when there is none.
inline binding::Ref<binding::Object> liveTarget(const wrappers::iBenchControl& control)
{
    binding::Ref<binding::Object> live = control.Control();
    if (!live)
        values::raise(values::ErrorNumber::ObjectNotSet);
    return live;
}

} // namespace zan::livedata
