#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

class LUMJob;

namespace lum {

class JobIndex;

/// The number that one index, the first to ask, keeps in the job itself.
struct JobPlace {
    std::atomic<const JobIndex*> index { nullptr }; // the one the number belongs to
    std::uint32_t number = 0; // read and written by that index alone
};

/// Finds the number that a list gave to a job, at the same cost for one job and for a million.
///
/// A job stands in one list nearly all its life, so the number is kept in the job and a look-up touches no
/// memory but its own. For a job whose place another index has, there is a hash table with open addressing.
/// Threads: one at a time for one index; a job may be in the indexes of several threads.
class JobIndex {
public:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    /// The number of the job, or kNone.
    std::uint32_t find(const LUMJob& job) const noexcept;
    /// Makes room for one more job, so that the next set() cannot fail. Throws std::bad_alloc.
    void reserveOne();
    /// Gives the job a number, and answers the one it had before, or kNone. The job must be removed before
    /// it, or the index, ends.
    std::uint32_t set(const LUMJob& job, std::uint32_t number) noexcept;
    /// Forgets the job, and answers the number it had, or kNone.
    std::uint32_t remove(const LUMJob& job) noexcept;
    /// Gives the memory back; for when no job is left.
    void clear() noexcept;

private:
    struct Slot {
        const LUMJob* job = nullptr;
        std::uint32_t number = kNone;
    };

    static JobPlace& placeIn(const LUMJob& job) noexcept;
    std::size_t home(const LUMJob* job) const noexcept;
    std::size_t slotOf(const LUMJob* job) const noexcept;
    std::uint32_t removeFromTable(const LUMJob& job) noexcept;
    std::size_t mask() const noexcept { return mSlots.size() - 1; }

    std::vector<Slot> mSlots; // empty, or a power of two; at most half of them in use
    std::size_t mCount = 0; // of the slots in use
    int mShift = 64; // 64 less the binary logarithm of the number of slots
};

}
