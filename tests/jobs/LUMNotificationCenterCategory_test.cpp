#include "LUMFoundation/LUMNotificationCenterCategory.h"

#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/jobs/posting_observer.h"
#include "tests/main_loop.h"

namespace {

struct LUMNotificationCenterCategoryTest : ObjectTest {
    LUMNotificationCenterCategoryTest() { center->addObserver(observer, kFirst, "N", nullptr); }

    NSRef<NSNotificationCenter> center = NSMake<NSNotificationCenter>();
    NSRef<Observer> observer = NSMake<Observer>();
    NSId x = NSMake<NSObject>();
    NSRef<NSDictionary> info = NSDictionary::of({ { "key", "value" } });
};

TEST_F(LUMNotificationCenterCategoryTest, PostsOnTheMainThreadAndReturnsWhenAllAreTold)
{
    center->addObserver(observer, kSecond, nullptr, x);
    std::string told;
    serveMainLoopWhile([&] {
        LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, "N", x, info);
        told = observer->take();
    });
    EXPECT_EQ(told, "first@main second@main ");
    EXPECT_EQ(observer->last->object(), x);
    EXPECT_EQ(observer->last->userInfo(), info);
}

TEST_F(LUMNotificationCenterCategoryTest, PostsInlineOnTheMainThread)
{
    LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, "N");
    EXPECT_EQ(observer->take(), "first@main ");
    EXPECT_EQ(observer->last->object(), nullptr);
    EXPECT_EQ(observer->last->userInfo(), nullptr);
}

TEST_F(LUMNotificationCenterCategoryTest, PostsTheNotificationItself)
{
    auto notification = NSNotification::notificationWithName("N");
    serveMainLoopWhile(
        [&] { LUMNotificationCenterCategory::postNotificationOnMainThread(center, notification); });
    EXPECT_EQ(observer->last, notification);
}

TEST_F(LUMNotificationCenterCategoryTest, HandlesAPostingOnTheThreadOfTheCall)
{
    std::thread([&] {
        LUMNotificationCenterCategory::handleMainThreadPosting(
            center, NSNotification::notificationWithName("N"));
    }).join();
    EXPECT_EQ(observer->take(), "first@other ");
}

TEST_F(LUMNotificationCenterCategoryTest, AnswersMessages)
{
    NSSend(center, NSSelector("postNotificationNameOnMainThread:"), NSRef<NSString>("N"));
    NSSend(center, NSSelector("postNotificationNameOnMainThread:object:"), NSRef<NSString>("N"), x);
    NSSend(center, NSSelector("postNotificationNameOnMainThread:object:userInfo:"), NSRef<NSString>("N"), x,
        info);
    NSSend(center, NSSelector("postNotificationOnMainThread:"), NSNotification::notificationWithName("N"));
    NSSend(center, NSSelector("handleMainThreadPosting:"), NSNotification::notificationWithName("N"));
    EXPECT_EQ(observer->take(), "first@main first@main first@main first@main first@main ");
}

TEST_F(LUMNotificationCenterCategoryTest, ThrowsAnObserversExceptionAtThePoster)
{
    center->addObserver(observer, NSSelector("fail:"), "F", nullptr);
    serveMainLoopWhile([&] {
        EXPECT_THROW(
            LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, "F"), NSException);
    });
}

TEST_F(LUMNotificationCenterCategoryTest, RaisesForNullsAndDoesNothingWithoutACenter)
{
    EXPECT_THROW(
        LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, nullptr), NSException);
    EXPECT_THROW(LUMNotificationCenterCategory::postNotificationOnMainThread(center, nullptr), NSException);
    LUMNotificationCenterCategory::postNotificationNameOnMainThread(nullptr, "N");
    LUMNotificationCenterCategory::postNotificationOnMainThread(nullptr, nullptr);
    LUMNotificationCenterCategory::handleMainThreadPosting(nullptr, nullptr);
}

/// A class of centres with its own idea of what is done on the main thread.
class CountingCenter : public NSNotificationCenter {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"handleMainThreadPosting:", &CountingCenter::count>()
        };
        static const NSClass& type =
            NSClass::define("CountingCenter", &NSNotificationCenter::classObject(), kMethods);
        return type;
    }
    void count(const NSRef<NSNotification>& notification)
    {
        ++counted;
        postNotification(notification);
    }
    int counted = 0;
};

/// A class of centres that counts what is posted, whoever posts it.
class MeteredCenter : public NSNotificationCenter {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"postNotification:", &MeteredCenter::meter>() };
        static const NSClass& type =
            NSClass::define("MeteredCenter", &NSNotificationCenter::classObject(), kMethods);
        return type;
    }
    void meter(const NSRef<NSNotification>& notification)
    {
        ++posted;
        postNotification(notification);
    }
    int posted = 0;
};

TEST_F(LUMNotificationCenterCategoryTest, PostsByTheClassesOwnPostNotification)
{
    auto metered = NSMake<MeteredCenter>();
    metered->addObserver(observer, kFirst, "N", nullptr);
    LUMNotificationCenterCategory::postNotificationNameOnMainThread(metered, "N");
    LUMNotificationCenterCategory::handleMainThreadPosting(
        metered, NSNotification::notificationWithName("N"));
    NSSend(metered, NSSelector("handleMainThreadPosting:"), NSNotification::notificationWithName("N"));
    EXPECT_EQ(metered->posted, 3);
    EXPECT_EQ(observer->take(), "first@main first@main first@main ");
}

TEST_F(LUMNotificationCenterCategoryTest, LeavesAClassItsOwnWayOfPosting)
{
    auto counting = NSMake<CountingCenter>();
    counting->addObserver(observer, kFirst, "N", nullptr);
    LUMNotificationCenterCategory::postNotificationNameOnMainThread(counting, "N");
    LUMNotificationCenterCategory::handleMainThreadPosting(
        counting, NSNotification::notificationWithName("N"));
    EXPECT_EQ(counting->counted, 2);
    EXPECT_EQ(observer->take(), "first@main first@main ");
}

}
