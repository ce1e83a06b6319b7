#include "jobs/processor_count.h"

#include "LUMFoundation/LUMJobQueue.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sched.h>
#include <thread>
#include <unistd.h>
#include <vector>

// The linker gives these to all that is linked into the test (see CMakeLists.txt).
extern "C" {
int __real_sched_getaffinity(pid_t, std::size_t, cpu_set_t*) noexcept;
int __wrap_sched_getaffinity(pid_t, std::size_t, cpu_set_t*) noexcept;
long __real_sysconf(int) noexcept;
long __wrap_sysconf(int) noexcept;
}

namespace {

/// What the system refuses to tell while one of these lives.
class Refusal {
public:
    Refusal() { sCurrent = this; }
    ~Refusal() { sCurrent = nullptr; }
    Refusal(const Refusal&) = delete;
    Refusal& operator=(const Refusal&) = delete;
    static Refusal* current() { return sCurrent; }

    int affinityError = 0;
    std::size_t smallestSet = 0; // in bytes; smaller ones are EINVAL
    std::vector<std::size_t> askedSets;
    bool tellsNoneOnline = false;

private:
    static inline thread_local Refusal* sCurrent = nullptr;
};

}

int __wrap_sched_getaffinity(pid_t thread, std::size_t size, cpu_set_t* set) noexcept
{
    if (Refusal* refusal = Refusal::current()) {
        refusal->askedSets.push_back(size);
        errno = refusal->affinityError ? refusal->affinityError : EINVAL;
        if (refusal->affinityError || size < refusal->smallestSet)
            return -1;
    }
    return __real_sched_getaffinity(thread, size, set);
}

long __wrap_sysconf(int name) noexcept
{
    const Refusal* refusal = Refusal::current();
    if (refusal && refusal->tellsNoneOnline && name == _SC_NPROCESSORS_ONLN)
        return -1;
    return __real_sysconf(name);
}

namespace {

TEST(ProcessorCountTest, CountsThoseTheAffinityAllows)
{
    cpu_set_t all;
    ASSERT_EQ(sched_getaffinity(0, sizeof all, &all), 0);
    EXPECT_EQ(lum::availableProcessors(), static_cast<unsigned>(CPU_COUNT(&all)));
}

TEST(ProcessorCountTest, CountsOneWhenTheThreadIsBoundToOne)
{
    std::thread bound([] {
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(static_cast<std::size_t>(sched_getcpu()), &one);
        ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
        EXPECT_EQ(lum::availableProcessors(), 1u);
    });
    bound.join();
}

TEST(ProcessorCountTest, OffersALargerSetUntilTheKernelTakesIt)
{
    const unsigned expected = lum::availableProcessors();
    Refusal refusal;
    refusal.smallestSet = CPU_ALLOC_SIZE(4 * CPU_SETSIZE);
    EXPECT_EQ(lum::availableProcessors(), expected);
    EXPECT_EQ(refusal.askedSets,
        (std::vector<std::size_t> {
            CPU_ALLOC_SIZE(CPU_SETSIZE), CPU_ALLOC_SIZE(2 * CPU_SETSIZE), CPU_ALLOC_SIZE(4 * CPU_SETSIZE) }));
}

TEST(ProcessorCountTest, CountsThoseOnlineWhenTheAffinityIsNotTold)
{
    Refusal refusal;
    refusal.affinityError = EPERM;
    EXPECT_EQ(lum::availableProcessors(), static_cast<unsigned>(sysconf(_SC_NPROCESSORS_ONLN)));
}

TEST(ProcessorCountTest, CountsOneWhenTheSystemTellsNothing)
{
    Refusal refusal;
    refusal.affinityError = EPERM;
    refusal.tellsNoneOnline = true;
    EXPECT_EQ(lum::availableProcessors(), 1u);
    EXPECT_EQ(LUMJobQueue::numCores(), 1u);
}

}
