#include "platform/runloop/main_queue.h"

#include "tests/platform/runloop/fake_wake.h"

#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

namespace {

using namespace std::chrono_literals;

class MainQueueTest : public testing::Test {
protected:
    std::function<void()> say(const char* word)
    {
        return [this, word] { (told += word) += ' '; };
    }

    std::string take() { return std::exchange(told, ""); }
    std::string takeWakes() { return std::exchange(log.story, ""); }

    FakeWake::Log log;
    platform::MainQueue queue { std::make_unique<FakeWake>(log) };
    std::string told;
};

TEST_F(MainQueueTest, RunsCallsInTheOrderTheyCame)
{
    queue.post(say("a"));
    queue.post(say("b"));
    queue.post(say("c"));
    EXPECT_EQ(take(), "");
    queue.drain();
    EXPECT_EQ(take(), "a b c ");
}

TEST_F(MainQueueTest, LeavesACallQueuedByACallToTheNextTurn)
{
    queue.post([this] {
        say("a")();
        queue.post(say("c"));
    });
    queue.post(say("b"));
    queue.drain();
    EXPECT_EQ(take(), "a b ");
    EXPECT_TRUE(log.raised);
    queue.drain();
    EXPECT_EQ(take(), "c ");
}

TEST_F(MainQueueTest, WakesTheLoopOnceForManyCalls)
{
    queue.post(say("a"));
    queue.post(say("b"));
    EXPECT_EQ(takeWakes(), "raise ");
    queue.drain();
    EXPECT_EQ(takeWakes(), "clear ");
}

TEST_F(MainQueueTest, StaysReadableWhileACallRuns)
{
    bool readable = false;
    queue.post([&] { readable = log.raised; });
    queue.drain();
    EXPECT_TRUE(readable);
    EXPECT_FALSE(log.raised);
}

TEST_F(MainQueueTest, RunsTheRestOfATurnInADrainWithinACall)
{
    queue.post([this] {
        say("a(")();
        queue.drain();
        say(")")();
    });
    queue.post(say("b"));
    queue.drain();
    EXPECT_EQ(take(), "a( b ) ");
}

TEST_F(MainQueueTest, RunsACallOfTheMainThreadInlineWhenItWaits)
{
    queue.post(say("queued"));
    auto now = say("inline");
    queue.callAndWait([](void* context) { (*static_cast<std::function<void()>*>(context))(); }, &now);
    EXPECT_EQ(take(), "inline ");
}

TEST_F(MainQueueTest, PassesAnExceptionToTheLoopAndKeepsTheRest)
{
    queue.post([] { throw std::runtime_error("bad"); });
    queue.post(say("next"));
    EXPECT_THROW(queue.drain(), std::runtime_error);
    EXPECT_TRUE(log.raised);
    queue.drain();
    EXPECT_EQ(take(), "next ");
}

TEST_F(MainQueueTest, RunsDelayedCallsByTimeThenByOrder)
{
    queue.postAfter(3s, say("c"));
    queue.postAfter(1s, say("a"));
    queue.postAfter(2s, say("b1"));
    queue.postAfter(2s, say("b2"));
    queue.drain();
    EXPECT_EQ(take(), "");
    log.now += 2s;
    queue.drain();
    EXPECT_EQ(take(), "a b1 b2 ");
    log.now += 1s;
    queue.drain();
    EXPECT_EQ(take(), "c ");
}

TEST_F(MainQueueTest, NeverRunsADelayedCallEarly)
{
    queue.postAfter(1.5s, say("a"));
    log.now += 1499999999ns;
    queue.drain();
    EXPECT_EQ(take(), "");
    log.now += 1ns;
    queue.drain();
    EXPECT_EQ(take(), "a ");
}

TEST_F(MainQueueTest, SetsTheAlarmOnlyForTheEarliestCall)
{
    auto start = log.now;
    queue.postAfter(2s, say("b"));
    queue.postAfter(3s, say("c"));
    EXPECT_EQ(log.alarm, start + 2s);
    queue.postAfter(1s, say("a"));
    EXPECT_EQ(log.alarm, start + 1s);
    log.now = start + 2s;
    queue.drain();
    EXPECT_EQ(log.alarm, start + 3s);
    log.now = start + 3s;
    queue.drain();
    EXPECT_EQ(log.alarm, std::nullopt);
}

TEST_F(MainQueueTest, QueuesDelayZeroLikeAnyOtherCall)
{
    queue.post(say("a"));
    queue.postAfter(0s, say("b"));
    queue.post(say("c"));
    queue.drain();
    EXPECT_EQ(take(), "a b c ");
}

struct OddDelay {
    const char* name;
    double seconds;
    const char* afterOneTurn;
};

class MainQueueDelayTest : public MainQueueTest, public testing::WithParamInterface<OddDelay> { };

TEST_P(MainQueueDelayTest, IsDefined)
{
    queue.postAfter(std::chrono::duration<double>(GetParam().seconds), say("run"));
    queue.drain();
    EXPECT_EQ(take(), GetParam().afterOneTurn);
}

INSTANTIATE_TEST_SUITE_P(Odd, MainQueueDelayTest,
    testing::Values(OddDelay { "Negative", -1, "run " }, OddDelay { "NegativeZero", -0.0, "run " },
        OddDelay { "NotANumber", std::numeric_limits<double>::quiet_NaN(), "run " },
        OddDelay { "MinusInfinity", -std::numeric_limits<double>::infinity(), "run " },
        OddDelay { "Infinity", std::numeric_limits<double>::infinity(), "" }, OddDelay { "Huge", 1e300, "" },
        OddDelay { "Tiny", 1e-300, "" }),
    [](const auto& row) { return row.param.name; });

TEST_F(MainQueueTest, ServesUntilStopped)
{
    queue.postAfter(5s, say("a"));
    queue.postAfter(6s, [this] { queue.stop(); });
    queue.postAfter(7s, say("never"));
    EXPECT_TRUE(queue.run());
    EXPECT_EQ(take(), "a ");
}

TEST_F(MainQueueTest, ServesUntilTheDeadline)
{
    auto start = log.now;
    queue.postAfter(1s, say("a"));
    queue.postAfter(3s, say("late"));
    EXPECT_FALSE(queue.run(start + 2s));
    EXPECT_EQ(take(), "a ");
    EXPECT_EQ(log.now, start + 2s);
}

TEST_F(MainQueueTest, RunsOneTurnWhenTheDeadlineHasPassed)
{
    queue.post(say("a"));
    EXPECT_FALSE(queue.run(log.now - 1s));
    EXPECT_EQ(take(), "a ");
}

TEST_F(MainQueueTest, StopsAfterTheCallsQueuedBeforeTheStop)
{
    queue.post(say("a"));
    queue.stop();
    queue.post(say("b"));
    EXPECT_TRUE(queue.run());
    EXPECT_EQ(take(), "a ");
    queue.drain();
    EXPECT_EQ(take(), "b ");
}

TEST_F(MainQueueTest, StopsOnlyTheInnermostRun)
{
    queue.post([this] {
        say("in")();
        queue.stop();
        EXPECT_TRUE(queue.run());
        say("out")();
        queue.post(say("more"));
        queue.stop();
    });
    EXPECT_TRUE(queue.run());
    EXPECT_EQ(take(), "in out more ");
}

TEST_F(MainQueueTest, ForgetsAStopThatFindsNoRun)
{
    queue.stop();
    queue.drain();
    EXPECT_FALSE(queue.run(log.now + 1s));
}

TEST_F(MainQueueTest, CanRunAgainAfterAnException)
{
    queue.post([] { throw std::runtime_error("bad"); });
    EXPECT_THROW(queue.run(), std::runtime_error);
    queue.stop();
    EXPECT_TRUE(queue.run());
}

TEST_F(MainQueueTest, EndsACallsCaptureOnceItHasRun)
{
    auto held = std::make_shared<int>(1);
    std::weak_ptr<int> watched = held;
    queue.post([held = std::move(held)] {});
    EXPECT_FALSE(watched.expired());
    queue.drain();
    EXPECT_TRUE(watched.expired());
}

TEST_F(MainQueueTest, EndsTheCapturesOfCallsThatNeverRan)
{
    auto held = std::make_shared<int>(1);
    {
        FakeWake::Log other;
        platform::MainQueue shortLived(std::make_unique<FakeWake>(other));
        shortLived.post([held] {});
        shortLived.postAfter(1s, [held] {});
        EXPECT_EQ(held.use_count(), 3);
    }
    EXPECT_EQ(held.use_count(), 1);
}

}
