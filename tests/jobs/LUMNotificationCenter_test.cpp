#include "LUMFoundation/LUMNotificationCenter.h"

#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/jobs/posting_observer.h"

namespace {

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

TEST_F(LUMNotificationCenterTest, DeliberatelyTakesNullForAnyInWhatItReplaces)
{
    center->addObserver(observer, kFirst, "N", x);
    center->addObserver(observer, kSecond, "N", nullptr);
    EXPECT_EQ(posted("N", x), "second@main ");
    center->addObserver(observer, kFirst, "M", x);
    center->addObserver(observer, kSecond, nullptr, nullptr);
    EXPECT_EQ(posted("N", x), "second@main ");
    EXPECT_EQ(posted("M", x), "second@main ");
}

TEST_F(LUMNotificationCenterTest, DeliberatelyReplacesByARegistrationForEveryNameAllForThatObject)
{
    NSId y = NSMake<NSObject>();
    center->addObserver(observer, kFirst, "N", x);
    center->addObserver(observer, kFirst, "N", y);
    center->addObserver(observer, kSecond, nullptr, x);
    EXPECT_EQ(posted("N", x), "second@main ");
    EXPECT_EQ(posted("N", y), "first@main ");
}

TEST_F(LUMNotificationCenterTest, ReplacesForMessagesToo)
{
    const NSSelector add("addObserver:selector:name:object:");
    NSSend(center, add, observer, kFirst, NSRef<NSString>("N"), x);
    NSSend(center, add, observer, kSecond, NSRef<NSString>("N"), x);
    EXPECT_EQ(posted("N", x), "second@main ");
}

}
