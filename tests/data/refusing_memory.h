#pragma once

#include "data/byte_buffer.h"

/// Memory that runs out: after `grants` blocks or changes of size, each further one is refused.
class RefusingMemory {
public:
    explicit RefusingMemory(int grants) { sGrants = grants; }

    static void* reallocate(void* block, std::size_t size)
    {
        return sGrants-- > 0 ? std::realloc(block, size) : nullptr;
    }
    /// In the form zlib asks for.
    static void* allocate(void*, unsigned count, unsigned size)
    {
        return sGrants-- > 0 ? std::calloc(count, size) : nullptr;
    }
    static void free(void*, void* block) { std::free(block); }

private:
    static inline thread_local int sGrants = 0;
};
