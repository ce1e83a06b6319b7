#include "jobs/processor_count.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <thread>

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

}
