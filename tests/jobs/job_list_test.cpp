#include "jobs/job_list.h"

#include "tests/fixture.h"

#include <algorithm>
#include <array>
#include <memory>
#include <rapidcheck/gtest.h>

namespace {

std::vector<const LUMJob*> contents(const lum::JobList& list)
{
    std::vector<const LUMJob*> jobs;
    list.forEach([&jobs](const NSRef<LUMJob>& job) { jobs.push_back(job.get()); });
    return jobs;
}

NSRef<LUMJob> firstOf(const lum::JobList& list)
{
    return list.firstExcept({});
}

struct JobListTest : ObjectTest {
    NSRef<LUMJob> a = NSMake<LUMJob>();
    NSRef<LUMJob> b = NSMake<LUMJob>();
    NSRef<LUMJob> c = NSMake<LUMJob>();
    lum::JobList list;
};

TEST_F(JobListTest, IsEmptyAtFirst)
{
    EXPECT_EQ(list.size(), 0u);
    EXPECT_FALSE(firstOf(list));
    EXPECT_FALSE(list.contains(*a));
    list.removeEvery(*a);
    EXPECT_EQ(list.size(), 0u);
}

TEST_F(JobListTest, KeepsTheOrderAndEachPlaceOfAJob)
{
    for (const auto& job : { a, b, a, c, a })
        list.append(job);
    EXPECT_EQ(contents(list), (std::vector<const LUMJob*> { a.get(), b.get(), a.get(), c.get(), a.get() }));
    EXPECT_EQ(list.size(), 5u);
    EXPECT_EQ(firstOf(list), a);
}

TEST_F(JobListTest, TakesOutEveryPlaceOfAJobAndLeavesTheRestInOrder)
{
    for (const auto& job : { a, b, a, c, a })
        list.append(job);
    list.removeEvery(*a);
    EXPECT_EQ(contents(list), (std::vector<const LUMJob*> { b.get(), c.get() }));
    EXPECT_FALSE(list.contains(*a));
    EXPECT_TRUE(list.contains(*c));
}

TEST_F(JobListTest, FindsTheFirstExceptSome)
{
    for (const auto& job : { a, a, b, c })
        list.append(job);
    EXPECT_EQ(list.firstExcept({ a.get() }), b);
    EXPECT_EQ(list.firstExcept({ b.get(), a.get() }), c);
    EXPECT_FALSE(list.firstExcept({ a.get(), b.get(), c.get() }));
}

TEST_F(JobListTest, OwnsItsJobsUntilTheyAreTakenOut)
{
    const long live = platform::liveObjectCount();
    {
        lum::JobList owner;
        NSRef<LUMJob> job = NSMake<LUMJob>();
        LUMJob& alone = *job;
        owner.append(job);
        job = nullptr;
        EXPECT_TRUE(owner.contains(alone));
        EXPECT_GT(platform::liveObjectCount(), live);
    }
    EXPECT_EQ(platform::liveObjectCount(), live);
}

TEST_F(JobListTest, GoesOnAfterAHundredThousandJobsHaveGone)
{
    std::vector<NSRef<LUMJob>> many(100'000);
    std::ranges::generate(many, [] { return NSMake<LUMJob>(); });
    for (int round = 0; round < 2; ++round) {
        for (const auto& job : many)
            list.append(job);
        ASSERT_EQ(list.size(), many.size());
        // The second round takes them out from the back.
        for (std::size_t at = 0; at < many.size(); ++at)
            list.removeEvery(*many[round == 0 ? at : many.size() - 1 - at]);
        ASSERT_EQ(list.size(), 0u);
    }
    list.append(b);
    EXPECT_EQ(firstOf(list), b);
}

TEST_F(JobListTest, HoldsAJobThatAnotherListHolds)
{
    auto other = std::make_unique<lum::JobList>();
    other->append(a);
    list.append(b);
    list.append(a);
    list.append(a);
    other->removeEvery(*b);
    other->removeEvery(*a);
    EXPECT_TRUE(list.contains(*a));
    other->append(a);
    list.removeEvery(*a);
    EXPECT_TRUE(other->contains(*a));
    EXPECT_EQ(contents(list), (std::vector<const LUMJob*> { b.get() }));
    other = nullptr; // lets go of the job
    list.append(a);
    EXPECT_TRUE(list.contains(*a));
}

/// Appends and removals of a few jobs in a few lists, so that most meet another place of the same one.
RC_GTEST_PROP(JobListProperty, AgreesWithAPlainVector, ())
{
    constexpr std::size_t kJobs = 40;
    constexpr std::size_t kLists = 3;
    struct Step {
        bool removes;
        std::size_t job;
        std::size_t list;
    };
    const auto steps = *rc::gen::container<std::vector<Step>>(rc::gen::build<Step>(
        rc::gen::set(&Step::removes, rc::gen::weightedElement<bool>({ { 3, false }, { 2, true } })),
        rc::gen::set(&Step::job, rc::gen::inRange<std::size_t>(0, kJobs)),
        rc::gen::set(&Step::list, rc::gen::inRange<std::size_t>(0, kLists))));
    std::vector<NSRef<LUMJob>> jobs(kJobs);
    std::ranges::generate(jobs, [] { return NSMake<LUMJob>(); });
    std::array<lum::JobList, kLists> lists;
    std::array<std::vector<const LUMJob*>, kLists> models;
    for (const Step& step : steps) {
        const NSRef<LUMJob>& job = jobs[step.job];
        lum::JobList& list = lists[step.list];
        std::vector<const LUMJob*>& model = models[step.list];
        if (step.removes) {
            list.removeEvery(*job);
            std::erase(model, job.get());
        } else {
            list.append(job);
            model.push_back(job.get());
        }
        RC_ASSERT(list.size() == model.size());
        RC_ASSERT(contents(list) == model);
        RC_ASSERT(firstOf(list).get() == (model.empty() ? nullptr : model.front()));
        for (const auto& any : jobs)
            RC_ASSERT(list.contains(*any) == (std::ranges::find(model, any.get()) != model.end()));
    }
}

}
