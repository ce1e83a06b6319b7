#pragma once

#include <cstdlib>

/// Ends the fuzzer's run on this input: what it found breaks a law.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}
