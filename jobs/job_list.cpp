#include "jobs/job_list.h"

#include <algorithm>
#include <stdexcept>

namespace lum {

namespace {

constexpr std::size_t kFewestPlaces = 16;
constexpr std::size_t kKeptPlaces = 4096; // memory that an empty list holds on to

}

JobList::~JobList()
{
    // The index lets go of the jobs before the places do.
    forEach([this](const NSRef<LUMJob>& job) { mIndex.remove(*job); });
}

void JobList::append(const NSRef<LUMJob>& job)
{
    reserveOne();
    const std::uint32_t at = takeFreePlace();
    Place& place = mPlaces[at];
    place.job = job;
    place.next = kNone;
    place.previous = mLast;
    place.sameJob = mIndex.set(*job, at);
    (mLast == kNone ? mFirst : mPlaces[mLast].next) = at;
    mLast = at;
    ++mSize;
}

void JobList::removeEvery(const LUMJob& job) noexcept
{
    for (std::uint32_t at = mIndex.remove(job); at != kNone;) {
        const std::uint32_t same = mPlaces[at].sameJob;
        unlink(at);
        at = same;
    }
    if (mSize != 0 || mPlaces.empty())
        return;
    // Start again from the front, where places lie in the order they are used.
    mPlaces.clear();
    mFree = kNone;
    if (mPlaces.capacity() > kKeptPlaces) {
        mPlaces.shrink_to_fit();
        mIndex.clear();
    }
}

NSRef<LUMJob> JobList::firstExcept(const std::vector<const LUMJob*>& others) const
{
    for (std::uint32_t at = mFirst; at != kNone; at = mPlaces[at].next) {
        const NSRef<LUMJob>& job = mPlaces[at].job;
        if (std::ranges::find(others, job.get()) == others.end())
            return job;
    }
    return nullptr;
}

void JobList::reserveOne()
{
    mIndex.reserveOne();
    if (mFree != kNone || mPlaces.size() < mPlaces.capacity())
        return;
    if (mPlaces.size() >= kNone)
        throw std::length_error("a job queue holds too many jobs");
    mPlaces.reserve(std::max(kFewestPlaces, mPlaces.size() * 2));
}

std::uint32_t JobList::takeFreePlace() noexcept
{
    if (mFree == kNone) {
        mPlaces.emplace_back();
        return static_cast<std::uint32_t>(mPlaces.size() - 1);
    }
    const std::uint32_t at = mFree;
    mFree = mPlaces[at].next;
    return at;
}

void JobList::unlink(std::uint32_t at) noexcept
{
    Place& place = mPlaces[at];
    (place.previous == kNone ? mFirst : mPlaces[place.previous].next) = place.next;
    (place.next == kNone ? mLast : mPlaces[place.next].previous) = place.previous;
    place.job = nullptr;
    place.next = mFree;
    mFree = at;
    --mSize;
}

}
