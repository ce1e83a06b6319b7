#include "jobs/job_index.h"

#include "LUMFoundation/LUMJob.h"

#include <utility>

namespace lum {

namespace {

constexpr std::size_t kFewestSlots = 16;

}

std::size_t JobIndex::home(const LUMJob* job) const noexcept
{
    // The golden ratio spreads addresses that lie at equal distances, as those of jobs do, evenly.
    return static_cast<std::size_t>(
        (reinterpret_cast<std::uintptr_t>(job) * 0x9E37'79B9'7F4A'7C15u) >> mShift);
}

/// The slot that holds the job, or the free one where it would go.
std::size_t JobIndex::slotOf(const LUMJob* job) const noexcept
{
    std::size_t slot = home(job);
    while (mSlots[slot].job && mSlots[slot].job != job)
        slot = (slot + 1) & mask();
    return slot;
}

JobPlace& JobIndex::placeIn(const LUMJob& job) noexcept
{
    return job.placeInIndex();
}

std::uint32_t JobIndex::find(const LUMJob& job) const noexcept
{
    // Only this index ever stores itself there, so a relaxed look tells whether the number is its own.
    if (const JobPlace& place = placeIn(job); place.index.load(std::memory_order_relaxed) == this)
        return place.number;
    return mCount == 0 ? kNone : mSlots[slotOf(&job)].number;
}

void JobIndex::reserveOne()
{
    if ((mCount + 1) * 2 <= mSlots.size())
        return;
    std::vector<Slot> old(mSlots.empty() ? kFewestSlots : mSlots.size() * 2);
    old.swap(mSlots);
    mShift = 64 - __builtin_ctzll(mSlots.size());
    for (const Slot& slot : old) {
        if (slot.job)
            mSlots[slotOf(slot.job)] = slot;
    }
}

std::uint32_t JobIndex::set(const LUMJob& job, std::uint32_t number) noexcept
{
    JobPlace& place = placeIn(job);
    if (place.index.load(std::memory_order_relaxed) == this)
        return std::exchange(place.number, number);
    Slot& slot = mSlots[slotOf(&job)];
    if (slot.job)
        return std::exchange(slot.number, number);
    // What the index before wrote into the place is seen to be over.
    const JobIndex* free = nullptr;
    if (place.index.compare_exchange_strong(
            free, this, std::memory_order_acquire, std::memory_order_relaxed)) {
        place.number = number;
    } else {
        slot = { &job, number };
        ++mCount;
    }
    return kNone;
}

std::uint32_t JobIndex::remove(const LUMJob& job) noexcept
{
    JobPlace& place = placeIn(job);
    if (place.index.load(std::memory_order_relaxed) != this)
        return mCount == 0 ? kNone : removeFromTable(job);
    const std::uint32_t number = place.number;
    place.index.store(nullptr, std::memory_order_release);
    return number;
}

std::uint32_t JobIndex::removeFromTable(const LUMJob& job) noexcept
{
    std::size_t hole = slotOf(&job);
    if (!mSlots[hole].job)
        return kNone;
    const std::uint32_t number = mSlots[hole].number;
    // What stands behind the hole moves up into it, unless that is before its home: no run is ever broken,
    // and no marks of the removed pile up however long the queue lives.
    for (std::size_t next = (hole + 1) & mask(); mSlots[next].job; next = (next + 1) & mask()) {
        if (((next - home(mSlots[next].job)) & mask()) >= ((next - hole) & mask())) {
            mSlots[hole] = mSlots[next];
            hole = next;
        }
    }
    mSlots[hole] = Slot();
    --mCount;
    return number;
}

void JobIndex::clear() noexcept
{
    mSlots = {};
    mCount = 0;
}

}
