#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSWorkspace.h"
#include "tests/main_loop.h"
#include "tests/watching/watching_fixture.h"

#include <poll.h>

namespace lum {

/// Watchers that end while their threads are busy.
class OVKQueueLifetimeTest : public WatchingTest {
protected:
    void SetUp() override
    {
        watcher = makeFakeWatcher();
        watcher->addPathToQueueNotifyingAbout("/a", kEveryChange);
    }
    void TearDown() override
    {
        watcher = nullptr;
        WatchingTest::TearDown();
    }

    /// Sends a report and waits until it stands in the main queue.
    void letAReportWait()
    {
        control->send({ { "/a", kVnodeWrite } });
        pollfd queue { NSRunLoop::mainQueueFD(), POLLIN, 0 };
        ASSERT_EQ(poll(&queue, 1, 30'000), 1);
    }

    NSRef<OVKQueue> watcher;
};

TEST_F(OVKQueueLifetimeTest, EndsItsThreadWithTheLastReference)
{
    control->take();
    watcher = nullptr;
    EXPECT_TRUE(control->hasEnded());
    EXPECT_EQ(control->take(), "remove(/a) close ");
}

TEST_F(OVKQueueLifetimeTest, MayEndWithAReportWaitingForTheMainThread)
{
    watcher->setDelegate(listener);
    letAReportWait();
    watcher = nullptr;
    serveUntil([&] { return control->isClosed(); });
    EXPECT_TRUE(control->hasEnded());
    EXPECT_EQ(listener->story(), "");
}

TEST_F(OVKQueueLifetimeTest, MayEndWithAReportWaitingForADelegateThatHasEnded)
{
    watcher->setDelegate(listener);
    letAReportWait();
    listener = nullptr;
    watcher = nullptr;
    serveUntil([&] { return control->isClosed(); });
    EXPECT_TRUE(control->hasEnded());
}

TEST_F(OVKQueueLifetimeTest, DropsAReportWhoseDelegateEndedWhileItWaited)
{
    NSWorkspace::sharedWorkspace()->notificationCenter()->addObserver(
        listener, NSSelector("posted:"), nullptr, nullptr);
    auto mortal = NSMake<Listener>();
    watcher->setDelegate(mortal);
    letAReportWait();
    mortal = nullptr;
    EXPECT_EQ(storyWith("posted"), "posted@other(FileWrittenTo, /a) ");
}

TEST_F(OVKQueueLifetimeTest, TellsTheDelegateThatIsSetWhenItsTurnComes)
{
    const auto old = NSMake<Listener>();
    watcher->setDelegate(old);
    letAReportWait();
    watcher->setDelegate(listener);
    EXPECT_EQ(storyWith("told"), "told@main(FileWrittenTo, /a) ");
    EXPECT_EQ(old->story(), "");
}

TEST_F(OVKQueueLifetimeTest, MayEndInsideItsDelegatesMessage)
{
    watcher->setDelegate(listener);
    listener->whenTold = [this](const NSId&) { watcher = nullptr; };
    control->send({ { "/a", kVnodeWrite | kVnodeAttrib }, { "/a", kVnodeDelete } });
    serveUntil([&] { return control->isClosed(); });
    EXPECT_TRUE(control->hasEnded());
    EXPECT_EQ(listener->story(), "told@main(FileWrittenTo, /a) ");
}

TEST_F(OVKQueueLifetimeTest, MayLoseItsDelegateInsideThatsMessage)
{
    auto mortal = NSMake<Listener>();
    mortal->whenTold = [&](const NSId&) { mortal = nullptr; };
    watcher->setDelegate(mortal);
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_TRUE(serveUntil([&] { return !mortal; }));
}

TEST_F(OVKQueueLifetimeTest, MayEndOnItsOwnThread)
{
    class Holder : public NSObject {
    public:
        static const NSClass& classObject()
        {
            static constexpr NSMethod kMethods[] = { NSMethodOf<"posted:", &Holder::posted>() };
            static const NSClass& type = NSClass::define("Holder", &NSObject::classObject(), kMethods);
            return type;
        }
        void posted(const NSId&) { held = nullptr; }
        NSRef<OVKQueue> held;
    };
    const auto holder = NSMake<Holder>();
    holder->held = std::exchange(watcher, nullptr);
    NSWorkspace::sharedWorkspace()->notificationCenter()->addObserver(
        holder, NSSelector("posted:"), nullptr, nullptr);
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_TRUE(control->hasEnded());
}

TEST_F(OVKQueueLifetimeTest, EndsAtOnceWhileTheThreadWaits)
{
    const auto start = std::chrono::steady_clock::now();
    watcher = nullptr;
    EXPECT_TRUE(control->hasEnded());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
}

TEST_F(OVKQueueLifetimeTest, StandsManyThreadsThatUseAndDropIt)
{
    const TemporaryFolder folder;
    writeFile(folder / "file", "");
    serveMainLoopWhile([&] {
        for (int i = 0; i < 20; ++i) {
            auto real = OVKQueue::init();
            ASSERT_TRUE(real);
            real->setDelegate(listener);
            std::vector<std::thread> threads;
            for (int number = 0; number < 3; ++number) {
                threads.emplace_back([&, shared = real, number] {
                    for (int round = 0; round < 5; ++round) {
                        shared->addPath(folder / "file");
                        appendToFile(folder / "file", ".");
                        shared->setAlwaysNotify(round % 2 != 0);
                        shared->setDelegate(number == 0 ? nullptr : listener);
                        static_cast<void>(shared->description());
                        shared->removePath(folder / "file");
                    }
                });
            }
            real = nullptr;
            for (std::thread& thread : threads)
                thread.join();
        }
    });
}

}
