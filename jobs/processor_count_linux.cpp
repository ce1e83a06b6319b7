#include "jobs/processor_count.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <sched.h>
#include <unistd.h>

namespace lum {

namespace {

struct FreeSet {
    void operator()(cpu_set_t* set) const { CPU_FREE(set); }
};

/// The processors that the affinity of the calling thread allows; 0 when they do not fit or the call fails.
int allowedProcessors(int capacity) noexcept
{
    std::unique_ptr<cpu_set_t, FreeSet> set(CPU_ALLOC(static_cast<std::size_t>(capacity)));
    if (!set)
        return 0;
    const std::size_t size = CPU_ALLOC_SIZE(static_cast<std::size_t>(capacity));
    CPU_ZERO_S(size, set.get());
    return sched_getaffinity(0, size, set.get()) == 0 ? CPU_COUNT_S(size, set.get()) : 0;
}

}

unsigned availableProcessors() noexcept
{
    // The affinity is what a container or taskset leaves us. The kernel refuses a set smaller than its own,
    // so grow it until it fits.
    constexpr int kLargest = 1 << 16;
    for (int capacity = CPU_SETSIZE; capacity <= kLargest; capacity *= 2) {
        if (int allowed = allowedProcessors(capacity); allowed > 0)
            return static_cast<unsigned>(allowed);
    }
    return static_cast<unsigned>(std::max(1L, sysconf(_SC_NPROCESSORS_ONLN)));
}

}
