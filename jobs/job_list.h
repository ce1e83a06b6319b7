#pragma once

#include "LUMFoundation/LUMJob.h"
#include "jobs/job_index.h"

namespace lum {

/// An ordered list of jobs in which a job equals only itself and may stand several times.
///
/// Appending, finding, and taking out every place of a job cost the same however long the list is (the last,
/// a step for each place). It shares ownership of its jobs. Threads: one at a time.
class JobList {
public:
    JobList() = default;
    ~JobList();
    JobList(const JobList&) = delete;
    JobList& operator=(const JobList&) = delete;

    std::size_t size() const { return mSize; }
    bool contains(const LUMJob& job) const { return mIndex.find(job) != JobIndex::kNone; }

    /// Makes sure that the next append cannot fail.
    void reserveOne();
    /// Adds a place at the end. Throws std::bad_alloc, and std::length_error at four thousand million places;
    /// the list is then as it was.
    void append(const NSRef<LUMJob>& job);
    /// Takes out every place of the job. The caller owns a reference, so that no job ends in here.
    void removeEvery(const LUMJob& job) noexcept;

    /// The first job that is none of `others`; null if there is none.
    NSRef<LUMJob> firstExcept(const std::vector<const LUMJob*>& others) const;
    /// Calls `visit(job)` for each place in order.
    template<typename Visit> void forEach(Visit visit) const
    {
        for (std::uint32_t at = mFirst; at != kNone; at = mPlaces[at].next)
            visit(mPlaces[at].job);
    }

private:
    static constexpr std::uint32_t kNone = JobIndex::kNone;
    struct Place {
        NSRef<LUMJob> job; // null while the place is free
        std::uint32_t next = kNone; // of the free places, too
        std::uint32_t previous = kNone;
        std::uint32_t sameJob = kNone; // another place of the same job
    };

    std::uint32_t takeFreePlace() noexcept;
    void unlink(std::uint32_t at) noexcept;

    std::vector<Place> mPlaces;
    JobIndex mIndex; // the place of each job that was appended last
    std::size_t mSize = 0;
    std::uint32_t mFirst = kNone;
    std::uint32_t mLast = kNone;
    std::uint32_t mFree = kNone;
};

}
