#include "jobs/job_schedule.h"

#include "LUMFoundation/LUMJob.h"
#include "tests/fixture.h"

#include <thread>

namespace {

using lum::JobSchedule;

struct JobScheduleTest : ObjectTest {
    JobSchedule schedule;
    NSRef<LUMJob> a = NSMake<LUMJob>();
    NSRef<LUMJob> b = NSMake<LUMJob>();
};

TEST_F(JobScheduleTest, CountsPendingAndActivePlaces)
{
    schedule.added(a);
    schedule.added(a);
    schedule.added(b);
    EXPECT_EQ(schedule.count(), 3u);
    schedule.started(a);
    EXPECT_EQ(schedule.count(), 2u);
    schedule.resumed(a);
    EXPECT_EQ(schedule.count(), 3u);
    schedule.ended(*a);
    EXPECT_EQ(schedule.count(), 1u);
    schedule.ended(*b);
    EXPECT_EQ(schedule.count(), 0u);
}

TEST_F(JobScheduleTest, NeverCountsAJobAsNoneWhileItStarts)
{
    std::atomic<bool> stops = false;
    schedule.added(b);
    std::thread mover([&] {
        while (!stops) {
            schedule.started(b);
            schedule.added(a);
            schedule.ended(*b);
            schedule.started(a);
            schedule.added(b);
            schedule.ended(*a);
        }
    });
    for (int look = 0; look < 200'000; ++look)
        ASSERT_GE(schedule.count(), 1u);
    stops = true;
    mover.join();
}

}
