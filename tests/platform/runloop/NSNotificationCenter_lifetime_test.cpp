#include "LUMPlatform/NSNotificationCenter.h"

#include "LUMPlatform/NSWeak.h"
#include "tests/platform/runloop/notification_observer.h"

namespace {

TEST_F(NSNotificationCenterTest, KeepsAPostedNotificationWhileObserversAreTold)
{
    auto a = observer("a");
    auto b = observer("b");
    auto notification = NSNotification::notificationWithName("N");
    a->onHearing = [&](NSNotification&) { notification = nullptr; };
    b->onHearing = [&](NSNotification& told_) { EXPECT_EQ(told_.name()->utf8(), "N"); };
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, "N", nullptr);
    center->postNotification(notification);
    EXPECT_EQ(take(), "a1 b1 ");
}

TEST_F(NSNotificationCenterTest, DoesNotTellWhoIsAddedDuringThePosting)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { center->addObserver(b, kFirst, "N", nullptr); };
    center->addObserver(a, kFirst, "N", nullptr);
    EXPECT_EQ(posted("N", nullptr), "a1 ");
    a->onHearing = nullptr;
    EXPECT_EQ(posted("N", nullptr), "a1 b1 ");
}

TEST_F(NSNotificationCenterTest, DoesNotTellWhoIsRemovedDuringThePosting)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { center->removeObserver(b); };
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, "N", nullptr);
    EXPECT_EQ(posted("N", nullptr), "a1 ");
}

TEST_F(NSNotificationCenterTest, DoesNotTellWhoEndsDuringThePosting)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { b = nullptr; };
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, "N", nullptr);
    EXPECT_EQ(posted("N", nullptr), "a1 ");
}

TEST_F(NSNotificationCenterTest, LetsAnObserverEndWhileItIsTold)
{
    auto a = observer("a");
    a->onHearing = [&](NSNotification&) { a = nullptr; };
    center->addObserver(a, kFirst, "N", nullptr);
    EXPECT_EQ(posted("N", nullptr), "a1 ");
    EXPECT_EQ(posted("N", nullptr), "");
}

TEST_F(NSNotificationCenterTest, MayBeDroppedByAnObserver)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { center = nullptr; };
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, nullptr, nullptr);
    center->postNotificationName("N");
    EXPECT_EQ(take(), "a1 b1 ");
}

TEST_F(NSNotificationCenterTest, TellsOfAPostingWithinAPosting)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { center->postNotificationName("inner"); };
    center->addObserver(a, kFirst, "outer", nullptr);
    center->addObserver(b, kFirst, "inner", nullptr);
    center->addObserver(b, kSecond, "outer", nullptr);
    EXPECT_EQ(posted("outer", nullptr), "a1 b1 b2 ");
}

TEST_F(NSNotificationCenterTest, KeepsNeitherObserversNorObjects)
{
    auto a = observer("a");
    NSWeak<Observer> weak = a;
    NSWeak<NSObject> weakObject = x;
    center->addObserver(a, kFirst, "N", x);
    a = nullptr;
    x = nullptr;
    EXPECT_FALSE(weak);
    EXPECT_FALSE(weakObject);
}

/// Gives out memory of one size that is used again at once, so that objects meet at one address.
class AtOneAddress : public NSObject {
public:
    static void* operator new(std::size_t size)
    {
        static std::aligned_storage_t<256> place;
        EXPECT_LE(size, sizeof place);
        return &place;
    }
    static void operator delete(void*) { }

protected:
    AtOneAddress() = default;
    ~AtOneAddress() override = default;
};

TEST_F(NSNotificationCenterTest, DoesNotTakeANewObjectForOneThatHasEnded)
{
    auto a = observer("a");
    auto object = NSMake<AtOneAddress>();
    const void* address = object.get();
    center->addObserver(a, kFirst, "N", object);
    center->addObserver(a, kSecond, nullptr, object);
    EXPECT_EQ(posted("N", object), "a1 a2 ");
    object = nullptr;
    object = NSMake<AtOneAddress>();
    ASSERT_EQ(object.get(), address);
    EXPECT_EQ(posted("N", object), "");
    center->addObserver(a, kFirst, "N", object);
    EXPECT_EQ(posted("N", object), "a1 ");
    center->removeObserver(a, "N", object);
    EXPECT_EQ(posted("N", object), "");
}

}
