#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSWorkspace.h"
#include "tests/watching/watching_fixture.h"

#include <pthread.h>

namespace lum {

class OVKQueueTest : public WatchingTest {
protected:
    void SetUp() override
    {
        watcher = makeFakeWatcher();
        watcher->addPathToQueueNotifyingAbout("/a", kEveryChange);
        control->take();
    }
    void TearDown() override
    {
        listener->lastNotification = nullptr;
        watcher = nullptr;
        WatchingTest::TearDown();
    }

    void observe()
    {
        NSWorkspace::sharedWorkspace()->notificationCenter()->addObserver(
            listener, NSSelector("posted:"), nullptr, nullptr);
    }

    NSRef<OVKQueue> watcher;
};

TEST_F(OVKQueueTest, WatchesForFourChangesByDefault)
{
    watcher->addPath("/b");
    watcher->addPathToQueue("/c");
    EXPECT_EQ(control->take(), "add(/b, RENAME WRITE DELETE ATTRIB) add(/c, RENAME WRITE DELETE ATTRIB) ");
}

TEST_F(OVKQueueTest, WatchesForWhatItIsAsked)
{
    watcher->addPathToQueueNotifyingAbout("/b", OVKQueueNoteExtend | OVKQueueNoteLink);
    EXPECT_EQ(control->take(), "add(/b, EXTEND LINK) ");
}

TEST_F(OVKQueueTest, RemovesPaths)
{
    watcher->addPath("/b");
    watcher->addPath("/c");
    control->take();
    watcher->removePath("/a");
    watcher->removePathFromQueue("/b");
    watcher->removeAllPathsFromQueue();
    EXPECT_EQ(control->take(), "remove(/a) remove(/b) remove(/c) ");
}

TEST_F(OVKQueueTest, TellsTheDelegateOnTheMainThread)
{
    watcher->setDelegate(listener);
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_EQ(storyWith("/a"), "told@main(FileWrittenTo, /a) ");
    EXPECT_EQ(listener->lastWatcher, watcher.get());
}

TEST_F(OVKQueueTest, ReportsTheChangesOfOneEventInTheFixedOrder)
{
    watcher->setDelegate(listener);
    control->send({ { "/a", kEveryChange } });
    EXPECT_EQ(storyWith("Revocation"),
        "told@main(FileRenamed, /a) told@main(FileWrittenTo, /a) told@main(FileDeleted, /a) "
        "told@main(FileAttributesChanged, /a) told@main(FileSizeIncreased, /a) "
        "told@main(FileLinkCountChanged, /a) told@main(FileAccessRevocation, /a) ");
}

TEST_F(OVKQueueTest, PostsANotificationOnItsOwnThreadWhenThereIsNoDelegate)
{
    observe();
    control->send({ { "/a", kVnodeWrite } });
    ASSERT_TRUE(serveUntil([&] { return !listener->story().empty(); }));
    EXPECT_EQ(listener->story(), "posted@other(FileWrittenTo, /a) ");
    EXPECT_TRUE(listener->lastNotification->object() == watcher);
    EXPECT_EQ(listener->lastNotification->userInfo()->description()->utf8(), "{\n    path = \"/a\";\n}");
}

TEST_F(OVKQueueTest, PostsNothingOnTheDefaultCenter)
{
    NSNotificationCenter::defaultCenter()->addObserver(listener, NSSelector("posted:"), nullptr, nullptr);
    const auto second = NSMake<Listener>();
    NSWorkspace::sharedWorkspace()->notificationCenter()->addObserver(
        second, NSSelector("posted:"), nullptr, nullptr);
    control->send({ { "/a", kVnodeWrite } });
    ASSERT_TRUE(serveUntil([&] { return !second->story().empty(); }));
    second->take();
    EXPECT_EQ(listener->story(), "");
}

TEST_F(OVKQueueTest, PostsNothingWhenADelegateWasTold)
{
    observe();
    watcher->setDelegate(listener);
    control->send({ { "/a", kVnodeWrite } });
    control->send({ { "/a", kVnodeDelete } });
    EXPECT_EQ(storyWith("Deleted"), "told@main(FileWrittenTo, /a) told@main(FileDeleted, /a) ");
}

TEST_F(OVKQueueTest, TellsTheDelegateAndThenPostsWhenItAlwaysNotifies)
{
    observe();
    watcher->setDelegate(listener);
    EXPECT_FALSE(watcher->alwaysNotify());
    watcher->setAlwaysNotify(true);
    EXPECT_TRUE(watcher->alwaysNotify());
    control->send({ { "/a", kVnodeWrite | kVnodeAttrib } });
    EXPECT_EQ(storyWith("posted@other(FileAttributesChanged"),
        "told@main(FileWrittenTo, /a) posted@other(FileWrittenTo, /a) "
        "told@main(FileAttributesChanged, /a) posted@other(FileAttributesChanged, /a) ");
}

TEST_F(OVKQueueTest, PostsWhenTheDelegateTakesItselfAwayInItsMessage)
{
    observe();
    watcher->setDelegate(listener);
    listener->whenTold = [](const NSId& sender) { NSCast<OVKQueue>(sender)->setDelegate(nullptr); };
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_EQ(storyWith("posted"), "told@main(FileWrittenTo, /a) posted@other(FileWrittenTo, /a) ");
}

TEST_F(OVKQueueTest, TakesADelegateThatHasEndedForNone)
{
    observe();
    {
        const auto mortal = NSMake<Listener>();
        watcher->setDelegate(mortal);
        EXPECT_TRUE(watcher->delegate() == mortal);
    }
    EXPECT_TRUE(watcher->delegate() == nullptr);
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_EQ(storyWith("posted"), "posted@other(FileWrittenTo, /a) ");
}

TEST_F(OVKQueueTest, DoesNotKeepItsDelegate)
{
    watcher->setDelegate(listener);
    EXPECT_TRUE(watcher->delegate() == listener);
    watcher->setDelegate(nullptr);
    EXPECT_TRUE(watcher->delegate() == nullptr);
}

TEST_F(OVKQueueTest, DeliversWhatItIsToldToPost)
{
    observe();
    watcher->postNotification("OVKQueueXNotification", "/b");
    EXPECT_EQ(listener->take(), "posted@main(X, /b) ");
    watcher->setDelegate(listener);
    watcher->postNotification("OVKQueueXNotification", "/b");
    EXPECT_EQ(listener->take(), "told@main(X, /b) ");
}

TEST_F(OVKQueueTest, DeliberatelyDropsTheRestOfAnEventAfterAnExceptionOfTheDelegate)
{
    watcher->setDelegate(listener);
    listener->whenTold = [this](const NSId&) {
        listener->whenTold = nullptr;
        throw NSException("Test", "not now");
    };
    control->send({ { "/a", kVnodeWrite | kVnodeAttrib } });
    control->send({ { "/a", kVnodeDelete } });
    // What else the failing event was is not reported.
    EXPECT_EQ(storyWith("Deleted"), "told@main(FileWrittenTo, /a) told@main(FileDeleted, /a) ");
    EXPECT_EQ(log.take(), "Error in OVKQueue watcherThread: not now\n");
}

TEST_F(OVKQueueTest, DeliberatelySendsToADelegateThatDoesNotAnswer)
{
    const auto deaf = NSMake<NSObject>();
    watcher->setDelegate(deaf);
    control->send({ { "/a", kVnodeWrite } });
    std::string logged;
    ASSERT_TRUE(serveUntil([&] { return !(logged += log.take()).empty(); }));
    EXPECT_EQ(
        logged.find("Error in OVKQueue watcherThread: -[OVMainThreadProxy "
                    "watcher:receivedNotification:forPath:]: unrecognized selector sent to instance 0x"),
        0U)
        << logged;
    watcher->setDelegate(listener);
    control->send({ { "/a", kVnodeDelete } });
    EXPECT_EQ(storyWith("Deleted"), "told@main(FileDeleted, /a) ");
}

TEST_F(OVKQueueTest, LogsAnExceptionOfAnObserver)
{
    class Observer : public NSObject {
    public:
        static const NSClass& classObject()
        {
            static constexpr NSMethod kMethods[] = { NSMethodOf<"posted:", &Observer::posted>() };
            static const NSClass& type = NSClass::define("Observer", &NSObject::classObject(), kMethods);
            return type;
        }
        void posted(const NSId&) { throw NSException("Test", "not here"); }
    };
    const auto observer = NSMake<Observer>();
    NSWorkspace::sharedWorkspace()->notificationCenter()->addObserver(
        observer, NSSelector("posted:"), nullptr, nullptr);
    control->send({ { "/a", kVnodeWrite } });
    std::string logged;
    ASSERT_TRUE(serveUntil([&] { return !(logged += log.take()).empty(); }));
    EXPECT_EQ(logged, "Error in OVKQueue watcherThread: not here\n");
}

TEST_F(OVKQueueTest, DescribesItself)
{
    watcher->removePath("/a");
    EXPECT_EQ(watcher->description()->utf8(), "OVKQueue { watchedPaths = (\n), alwaysNotify = NO }");
    watcher->addPath("/a");
    watcher->setAlwaysNotify(true);
    EXPECT_EQ(
        watcher->description()->utf8(), "OVKQueue { watchedPaths = (\n    \"/a\"\n), alwaysNotify = YES }");
}

TEST_F(OVKQueueTest, TellsTheDescriptorOfItsQueue)
{
    EXPECT_EQ(watcher->queueFD(), 77);
}

TEST_F(OVKQueueTest, RunsNoSecondThreadBody)
{
    watcher->watcherThread(nullptr);
    watcher->setDelegate(listener);
    control->send({ { "/a", kVnodeWrite } });
    EXPECT_EQ(storyWith("Written"), "told@main(FileWrittenTo, /a) ");
}

TEST_F(OVKQueueTest, AsksAnOverridingSubclassByEveryWay)
{
    class Subclass : public OVKQueue {
    public:
        explicit Subclass(std::unique_ptr<KernelQueue> queue) : OVKQueue(std::move(queue)) { }
        void addPath(const NSRef<NSString>& path) override { said += "addPath(" + path->utf8() + ") "; }
        void removePathFromQueue(const NSRef<NSString>& path) override
        {
            said += "removePathFromQueue(" + path->utf8() + ") ";
        }
        std::string said;
    };
    const auto subclass =
        NSMake<Subclass>(std::make_unique<FakeKernelQueue>(std::make_shared<FakeKernelQueue::Control>()));
    subclass->addPathToQueue("/b");
    subclass->removePath("/b");
    EXPECT_EQ(subclass->said, "addPath(/b) removePathFromQueue(/b) ");
}

/// Writes its reports down before it makes them.
class OwnReports : public OVKQueue {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"postNotification:forFile:", &OwnReports::post>()
        };
        static const NSClass& type = NSClass::define("OwnReports", &OVKQueue::classObject(), kMethods);
        return type;
    }
    explicit OwnReports(std::unique_ptr<KernelQueue> queue) : OVKQueue(std::move(queue)) { }

    void post(const NSRef<NSString>& name, const NSRef<NSString>& path)
    {
        said += path->utf8() + (NSThread::isMainThread() ? "@main " : "@other ");
        postNotification(name, path);
    }
    std::string said; // read once what follows it has been heard
};

TEST_F(OVKQueueTest, ReportsByAMethodThatADerivedClassHasOfItsOwn)
{
    const auto changes = std::make_shared<FakeKernelQueue::Control>();
    const auto own = NSMake<OwnReports>(std::make_unique<FakeKernelQueue>(changes));
    own->setDelegate(listener);
    own->addPath("/b");
    changes->send({ { "/b", kVnodeRename | kVnodeWrite } });
    EXPECT_EQ(storyWith("Written"), "told@main(FileRenamed, /b) told@main(FileWrittenTo, /b) ");
    EXPECT_EQ(own->said, "/b@other /b@other ");
}

TEST_F(OVKQueueTest, IsAFileWatcher)
{
    EXPECT_TRUE(NSCast<OVFileWatcher>(NSId(watcher)) == watcher);
}

TEST_F(OVKQueueTest, AnswersItsSelectors)
{
    for (const char* name : { "queueFD", "addPathToQueue:", "addPath:", "addPathToQueue:notifyingAbout:",
             "removePath:", "removePathFromQueue:", "removeAllPathsFromQueue",
             "watcherThread:", "postNotification:forFile:", "delegate", "setDelegate:", "alwaysNotify",
             "setAlwaysNotify:", "description" })
        EXPECT_TRUE(watcher->respondsToSelector(NSSelector(name))) << name;
    NSSend(watcher, NSSelector("addPathToQueue:notifyingAbout:"), NSRef<NSString>("/b"), 4U);
    EXPECT_EQ(control->take(), "add(/b, EXTEND) ");
}

TEST_F(OVKQueueTest, IsNotMadeWhenTheSystemHasNoMoreDescriptors)
{
    const DescriptorLimit limit(0);
    EXPECT_FALSE(OVKQueue::init());
}

TEST(OVKQueueSharedTest, IsOneForTheProcess)
{
    const auto first = OVKQueue::sharedFileWatcher();
    ASSERT_TRUE(first);
    EXPECT_TRUE(first == OVKQueue::sharedFileWatcher());
    EXPECT_EQ(gOVKQueueSharedQueueSingleton, first.get());
}

TEST(OVKQueueSharedTest, DeliberatelyGivesASubclassAnOVKQueue)
{
    const auto first = OVKQueue::sharedFileWatcher();
    class Subclass : public OVKQueue { };
    EXPECT_TRUE(Subclass::sharedFileWatcher() == first);
    EXPECT_EQ(first->isa().name(), "OVKQueue");
}

TEST_F(OVKQueueTest, IsNotMadeWhenTheSystemHasNoMoreThreads)
{
    pthread_attr_t usual;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    pthread_attr_t impossible;
    pthread_attr_init(&impossible);
    pthread_attr_setstacksize(&impossible, std::size_t { 1 } << 47); // more than there are addresses
    ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
    EXPECT_EQ(OVKQueue::init(), nullptr);
    EXPECT_EQ(pthread_setattr_default_np(&usual), 0);
    EXPECT_NE(OVKQueue::init(), nullptr);
}

TEST_F(OVKQueueTest, CanBeDerivedFrom)
{
    class Counting : public OVKQueue {
    public:
        void addPath(const NSRef<NSString>& path) override
        {
            ++added;
            OVKQueue::addPath(path);
        }
        int added = 0;
    };
    const auto counting = NSMake<Counting>();
    counting->addPathToQueue("/");
    EXPECT_EQ(counting->added, 1);
    EXPECT_GE(counting->queueFD(), 0);
}

}
