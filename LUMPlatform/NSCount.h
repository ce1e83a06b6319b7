#pragma once

#include <atomic>
#include <cstdint>

/// From the C library, declared here because public headers include no header of the system: true while no
/// second thread can run.
extern "C" char __libc_single_threaded;

/// Counts of references. With one thread in the process a plain addition does, in a fraction of the time that
/// the locked one of several threads takes. Both return the count before.
inline std::uint64_t NSCountUp(std::atomic<std::uint64_t>& count) noexcept
{
    if (!__libc_single_threaded)
        return count.fetch_add(1, std::memory_order_relaxed);
    auto before = count.load(std::memory_order_relaxed);
    count.store(before + 1, std::memory_order_relaxed);
    return before;
}

inline std::uint64_t NSCountDown(std::atomic<std::uint64_t>& count) noexcept
{
    if (!__libc_single_threaded)
        return count.fetch_sub(1, std::memory_order_acq_rel);
    auto before = count.load(std::memory_order_relaxed);
    count.store(before - 1, std::memory_order_relaxed);
    return before;
}
