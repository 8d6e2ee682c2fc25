#pragma once

#include <cstdlib>

/// What must hold whatever a fuzzer gives.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}
