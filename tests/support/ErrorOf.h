#pragma once

#include "values/RuntimeError.h"

#include <utility>

namespace zan::test {

/// Number of the run-time error that the call raises, 0 when it raises none.
template <class Call>
int errorOf(Call&& call)
{
    try {
        std::forward<Call>(call)();
    } catch (const values::RuntimeError& error) {
        return error.number();
    }
    return 0;
}

} // namespace zan::test
