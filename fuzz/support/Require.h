#pragma once

#include <cstdio>
#include <cstdlib>

namespace zan::fuzz {

/// Ends the program as a finding when what must hold does not.
inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

} // namespace zan::fuzz
