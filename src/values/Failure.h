#pragma once

#include "values/Ref.h"
#include "values/RuntimeError.h"

#include <utility>

namespace zan::values {

// Loggers, schemes and channels are code of the host. A call of theirs may give Nothing where something is due, and may
// throw whatever C++ can throw. Two rules keep that from mattering: what must be there goes through given(), and every
// place that traps or reports errors takes all of them, not only those that our own code raises.

/// What a call has to give: raises 91 for Nothing.
template <class T>
Ref<T> given(Ref<T> object)
{
    if (!object)
        raise(ErrorNumber::ObjectNotSet);
    return object;
}

/// The exception that is being handled, as the platform's error: one of ours is itself, a lack of memory is 7, and any
/// other is 507 with the words that it brings along. For catch clauses only.
RuntimeError currentError();

/// Runs a step that may fail without consequence: whatever it throws ends it and is forgotten. True when it came to its
/// end.
template <class Step>
bool attempt(Step&& step)
{
    try {
        std::forward<Step>(step)();
        return true;
    } catch (...) {
        return false;
    }
}

/// Runs a step where the toolkit or a logger calls us, who must not see an exception: an error goes to `report` as a
/// RuntimeError. True when the step came to its end.
template <class Step, class Report>
bool atBoundary(Step&& step, Report&& report)
{
    try {
        std::forward<Step>(step)();
        return true;
    } catch (...) {
        std::forward<Report>(report)(currentError());
        return false;
    }
}

} // namespace zan::values
