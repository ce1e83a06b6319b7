#include "watching/watch_loop.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMutableString.h"
#include "tests/fixture.h"
#include "tests/watching/fake_kernel_queue.h"
#include "tests/watching/log_recorder.h"

#include <cerrno>
#include <stdexcept>
#include <thread>

namespace lum {

class WatchLoopTest : public ObjectTest {
protected:
    /// Runs the loop until it has taken in all that was sent.
    std::string run()
    {
        std::string story;
        control->sendResult([this] {
            loop.stop();
            return std::vector<KernelQueue::Event>();
        });
        loop.run([&](const NSRef<NSString>& path, std::uint32_t changes) {
            story += path->utf8() + ":" + changeNames(changes) + " ";
            if (whileReporting)
                whileReporting(path);
        });
        return story;
    }

    std::shared_ptr<FakeKernelQueue::Control> control = std::make_shared<FakeKernelQueue::Control>();
    WatchLoop loop { std::make_unique<FakeKernelQueue>(control) };
    std::function<void(const NSRef<NSString>&)> whileReporting;
    LogRecorder log;
};

TEST_F(WatchLoopTest, ReportsEachEventWithThePathAsItWasAdded)
{
    loop.add("/a", kEveryChange);
    loop.add("/b", kEveryChange);
    control->send({ { "/b", kVnodeWrite }, { "/a", kVnodeDelete } });
    control->send({ { "/a", kVnodeAttrib | kVnodeWrite } });
    EXPECT_EQ(run(), "/b:WRITE /a:DELETE /a:WRITE ATTRIB ");
}

TEST_F(WatchLoopTest, WaitsFiveSecondsAtMost)
{
    run();
    EXPECT_EQ(control->lastLimit, std::chrono::seconds(5));
}

TEST_F(WatchLoopTest, GivesEverythingBackWhenItStops)
{
    loop.add("/a", kVnodeWrite);
    loop.add("/b", kVnodeWrite);
    run();
    EXPECT_EQ(control->take(), "add(/a, WRITE) add(/b, WRITE) remove(/a) remove(/b) close ");
    EXPECT_EQ(log.take(), "");
}

TEST_F(WatchLoopTest, DeliberatelyLogsInTheWordsOfTheWatcherWhatCannotBeGivenBack)
{
    loop.add("/a", kVnodeWrite);
    control->removeError = EBADF;
    control->closeError = EIO;
    run();
    EXPECT_EQ(log.take(),
        "dealloc: Couldn't close file descriptor (9)\n"
        "release: Couldn't close main kqueue (5)\n");
}

TEST_F(WatchLoopTest, ListsThePathsThatCouldBeOpened)
{
    control->missingPaths = { "/b" };
    loop.add("/a", kVnodeWrite);
    loop.add("/b", kVnodeWrite);
    loop.add("/c", kVnodeWrite);
    loop.add("/a", kVnodeWrite);
    EXPECT_TRUE(NSEqual(loop.paths(), NSArray::of("/a", "/c", "/a")));
    EXPECT_EQ(log.take(), "");
}

TEST_F(WatchLoopTest, TakesNeitherNullNorATextThatTheSystemWouldCutOff)
{
    loop.add(nullptr, kVnodeWrite);
    loop.add(std::u16string_view(u"/a\0b", 4), kVnodeWrite);
    EXPECT_EQ(loop.paths()->count(), 0U);
    EXPECT_EQ(control->take(), "");
}

TEST_F(WatchLoopTest, KeepsAPathThatIsChangedLater)
{
    const auto path = NSMutableString::stringWithString("/a");
    loop.add(path, kVnodeWrite);
    path->appendString("b");
    EXPECT_TRUE(NSEqual(loop.paths(), NSArray::of("/a")));
}

TEST_F(WatchLoopTest, RemovesTheFirstOfEqualPaths)
{
    loop.add("/a", kVnodeWrite);
    loop.add("/b", kVnodeWrite);
    loop.add("/a", kVnodeAttrib);
    loop.remove("/a");
    EXPECT_TRUE(NSEqual(loop.paths(), NSArray::of("/b", "/a")));
    control->send({ { "/a", kVnodeAttrib } });
    EXPECT_EQ(run(), "/a:ATTRIB ");
}

TEST_F(WatchLoopTest, RemovesNothingThatIsNotWatched)
{
    loop.add("/a", kVnodeWrite);
    loop.remove("/b");
    loop.remove(nullptr);
    EXPECT_EQ(control->take(), "add(/a, WRITE) ");
}

TEST_F(WatchLoopTest, LogsAFailureToRemove)
{
    loop.add("/a", kVnodeWrite);
    control->removeError = EBADF;
    loop.remove("/a");
    EXPECT_EQ(log.take(), "removePathFromQueue: Couldn't close file descriptor (9)\n");
    EXPECT_EQ(loop.paths()->count(), 0U);
}

TEST_F(WatchLoopTest, DeliberatelyRemovesAllWithoutLogging)
{
    loop.add("/a", kVnodeWrite);
    loop.add("/b", kVnodeWrite);
    control->removeError = EBADF;
    control->take();
    loop.removeAll();
    EXPECT_EQ(control->take(), "remove(/a) remove(/b) ");
    EXPECT_EQ(loop.paths()->count(), 0U);
    EXPECT_EQ(log.take(), "");
}

TEST_F(WatchLoopTest, DropsTheEventsOfAPathThatIsRemovedBeforeTheirTurn)
{
    loop.add("/a", kEveryChange);
    loop.add("/b", kEveryChange);
    whileReporting = [this](const NSRef<NSString>&) { loop.remove("/b"); };
    control->send({ { "/a", kVnodeWrite }, { "/b", kVnodeWrite } });
    EXPECT_EQ(run(), "/a:WRITE ");
}

TEST_F(WatchLoopTest, StopsBetweenTwoEventsOfOneWait)
{
    loop.add("/a", kEveryChange);
    loop.add("/b", kEveryChange);
    whileReporting = [this](const NSRef<NSString>&) { loop.stop(); };
    control->send({ { "/a", kVnodeWrite }, { "/b", kVnodeWrite } });
    EXPECT_EQ(run(), "/a:WRITE ");
}

TEST_F(WatchLoopTest, HoldsNoLockWhileItReports)
{
    loop.add("/a", kEveryChange);
    whileReporting = [this](const NSRef<NSString>&) {
        std::thread([this] {
            loop.add("/b", kEveryChange);
            loop.remove("/a");
        }).join();
    };
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_EQ(run(), "/a:WRITE ");
}

TEST_F(WatchLoopTest, LogsAnExceptionOfAReportAndGoesOnWithTheNextEvent)
{
    loop.add("/a", kEveryChange);
    loop.add("/b", kEveryChange);
    whileReporting = [](const NSRef<NSString>& path) {
        if (path->isEqualToString("/a"))
            throw NSException("Test", "no thanks");
    };
    control->send({ { "/a", kVnodeWrite }, { "/b", kVnodeWrite } });
    EXPECT_EQ(run(), "/a:WRITE /b:WRITE ");
    EXPECT_EQ(log.take(), "Error in OVKQueue watcherThread: no thanks\n");
}

TEST_F(WatchLoopTest, LogsAnExceptionOfAWaitAndWaitsAgain)
{
    loop.add("/a", kEveryChange);
    control->sendResult([]() -> std::vector<KernelQueue::Event> { throw NSException("Test", "no events"); });
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_EQ(run(), "/a:WRITE ");
    EXPECT_EQ(log.take(), "Error in OVKQueue watcherThread: no events\n");
}

TEST_F(WatchLoopTest, EndsWithAnyOtherExceptionAndLeavesTheQueueOpen)
{
    loop.add("/a", kEveryChange);
    whileReporting = [](const NSRef<NSString>&) { throw std::runtime_error("odd"); };
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_THROW(run(), std::runtime_error);
    EXPECT_FALSE(control->isClosed());
    EXPECT_EQ(log.take(), "");
}

TEST_F(WatchLoopTest, RunsOnOneThreadAtATime)
{
    EXPECT_TRUE(loop.claim());
    EXPECT_FALSE(loop.claim());
    run();
    EXPECT_TRUE(loop.claim());
}

TEST_F(WatchLoopTest, ReportsAPathThatIsStillBeingAdded)
{
    // The queue may tell of a path before add() is done: here it is stopped halfway.
    class HalfwayQueue : public FakeKernelQueue {
    public:
        HalfwayQueue(std::shared_ptr<Control> control, std::function<void()> halfway)
            : FakeKernelQueue(std::move(control)), mHalfway(std::move(halfway))
        {
        }
        bool add(Token token, const std::string& path, std::uint32_t changes) override
        {
            const bool isAdded = FakeKernelQueue::add(token, path, changes);
            mHalfway();
            return isAdded;
        }

    private:
        const std::function<void()> mHalfway;
    };
    std::string story;
    WatchLoop* self = nullptr;
    const auto halfway = [&] {
        control->send({ { "/a", kVnodeWrite } });
        control->sendResult([&] {
            self->stop();
            return std::vector<KernelQueue::Event>();
        });
        self->run([&](const NSRef<NSString>& path, std::uint32_t) { story = path->utf8(); });
    };
    WatchLoop slow(std::make_unique<HalfwayQueue>(control, halfway));
    self = &slow;
    slow.add("/a", kEveryChange);
    EXPECT_EQ(story, "/a");
}

}
