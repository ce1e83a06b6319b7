#include "LUMFoundation/LUMNotificationCenter.h"

#include "LUMFoundation/LUMNotificationCenterCategory.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSThread.h"
#include "tests/fixture.h"
#include "tests/main_loop.h"

#include <vector>

namespace {

class Observer : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"first:", &Observer::first>(),
            NSMethodOf<"second:", &Observer::second>(),
            NSMethodOf<"fail:", &Observer::fail>(),
        };
        static const NSClass& type = NSClass::define("Observer", &NSObject::classObject(), kMethods);
        return type;
    }

    void first(const NSRef<NSNotification>& notification) { hear("first", notification); }
    void second(const NSRef<NSNotification>& notification) { hear("second", notification); }
    void fail(const NSRef<NSNotification>&) { throw NSException(NSRangeException, "deaf"); }
    std::string take() { return std::exchange(mTold, ""); }

    NSRef<NSNotification> last;

private:
    void hear(const char* what, const NSRef<NSNotification>& notification)
    {
        (mTold += what) += NSThread::isMainThread() ? "@main " : "@other ";
        last = notification;
    }

    std::string mTold;
};

const NSSelector kFirst("first:");
const NSSelector kSecond("second:");

struct LUMNotificationCenterTest : ObjectTest {
    std::string posted(const char* name, const NSId& object = nullptr)
    {
        center->postNotificationName(name, object);
        return observer->take();
    }

    NSRef<NSNotificationCenter> center = NSMake<LUMNotificationCenter>();
    NSRef<Observer> observer = NSMake<Observer>();
    NSId x = NSMake<NSObject>();
};

TEST_F(LUMNotificationCenterTest, ReplacesARegistrationByOneWithAnotherSelector)
{
    center->addObserver(observer, kFirst, "N", x);
    center->addObserver(observer, kSecond, "N", x);
    EXPECT_EQ(posted("N", x), "second@main ");
}

TEST_F(LUMNotificationCenterTest, KeepsRegistrationsForOtherNamesObjectsAndObservers)
{
    auto other = NSMake<Observer>();
    center->addObserver(other, kFirst, "N", x);
    center->addObserver(observer, kFirst, "M", x);
    center->addObserver(observer, kFirst, "N", nullptr);
    center->addObserver(observer, kSecond, "N", x);
    EXPECT_EQ(posted("N", x), "first@main second@main ");
    EXPECT_EQ(posted("M", x), "first@main ");
    EXPECT_EQ(other->take(), "first@main ");
}

// Deliberate: the removal before a registration takes null for any.
TEST_F(LUMNotificationCenterTest, DeliberateNullRemovesTheWiderWay)
{
    center->addObserver(observer, kFirst, "N", x);
    center->addObserver(observer, kSecond, "N", nullptr);
    EXPECT_EQ(posted("N", x), "second@main ");
    center->addObserver(observer, kFirst, "M", x);
    center->addObserver(observer, kSecond, nullptr, nullptr);
    EXPECT_EQ(posted("N", x), "second@main ");
    EXPECT_EQ(posted("M", x), "second@main ");
}

TEST_F(LUMNotificationCenterTest, ReplacesForMessagesToo)
{
    const NSSelector add("addObserver:selector:name:object:");
    NSSend(center, add, observer, kFirst, NSRef<NSString>("N"), x);
    NSSend(center, add, observer, kSecond, NSRef<NSString>("N"), x);
    EXPECT_EQ(posted("N", x), "second@main ");
}

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
