#pragma once

#include "component/ZanBenchComponent.h"
#include "values/Failure.h"

#include <utility>

namespace zan::component {

/// Raises an error of the component's own, as it is told to a caller in C.
[[noreturn]] void fail(ZanError number, const char* description);

/// Keeps what ended a call for zanErrorDescription(), and gives its number. Takes no memory.
ZanResult remember(const values::RuntimeError& error) noexcept;
ZanResult lastError() noexcept;
const char* lastDescription() noexcept;

/// Runs the body of a C function: whatever it throws becomes the function's result.
template <class Step>
ZanResult atCallBoundary(Step&& step) noexcept
{
    try {
        std::forward<Step>(step)();
        return ZAN_OK;
    } catch (...) {
        try {
            return remember(values::currentError());
        } catch (...) { // not even memory for the words
            return ZanResult(values::ErrorNumber::OutOfMemory);
        }
    }
}

/// Raises unless the pointer points somewhere.
template <class T>
T& due(T* pointer)
{
    if (!pointer)
        fail(ZAN_E_POINTER, "A null pointer was given where something is due.");
    return *pointer;
}

} // namespace zan::component
