#include "LUMFoundation/LUMNotificationCenter.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
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

TEST_F(LUMNotificationCenterTest, KeepsARegistrationThatCannotBeReplaced)
{
    center->addObserver(observer, kFirst, "N", x);
    EXPECT_THROW(center->addObserver(observer, NSSelector(), "N", x), NSException);
    EXPECT_THROW(center->addObserver(nullptr, kFirst, "N", x), NSException);
    EXPECT_EQ(posted("N", x), "first@main ");
}

TEST_F(LUMNotificationCenterTest, ReplacesForMessagesToo)
{
    const NSSelector add("addObserver:selector:name:object:");
    NSSend(center, add, observer, kFirst, NSRef<NSString>("N"), x);
    NSSend(center, add, observer, kSecond, NSRef<NSString>("N"), x);
    EXPECT_EQ(posted("N", x), "second@main ");
}

/// Tells of each removal, and may refuse it.
class Gatekeeper : public LUMNotificationCenter {
public:
    void removeObserver(const NSId& observer, const NSRef<NSString>& name, const NSId& object) override
    {
        removed += name->utf8() + (object ? "+ " : " ");
        if (!refuses)
            LUMNotificationCenter::removeObserver(observer, name, object);
    }

    std::string removed;
    bool refuses = false;
};

/// The same by its method table.
class TableGatekeeper : public LUMNotificationCenter {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"removeObserver:name:object:", &TableGatekeeper::remove>()
        };
        static const NSClass& type =
            NSClass::define("TableGatekeeper", &LUMNotificationCenter::classObject(), kMethods);
        return type;
    }
    void remove(const NSId& observer, const NSRef<NSString>& name, const NSId& object)
    {
        removed += name->utf8() + (object ? "+ " : " ");
        if (!refuses)
            removeObserver(observer, name, object);
    }

    std::string removed;
    bool refuses = false;
};

template<typename Center> struct LUMNotificationCenterRemovalTest : LUMNotificationCenterTest {
    LUMNotificationCenterRemovalTest() { center = gatekeeper; }

    NSRef<Center> gatekeeper = NSMake<Center>();
};

using Gatekeepers = testing::Types<Gatekeeper, TableGatekeeper>;
TYPED_TEST_SUITE(LUMNotificationCenterRemovalTest, Gatekeepers);

TYPED_TEST(LUMNotificationCenterRemovalTest, IsAskedForWhatARegistrationReplaces)
{
    this->center->addObserver(this->observer, kFirst, "N", this->x);
    this->center->addObserver(this->observer, kSecond, "N", this->x);
    this->center->addObserver(this->observer, kSecond, "M", nullptr);
    EXPECT_EQ(this->gatekeeper->removed, "N+ N+ M ");
    EXPECT_EQ(this->posted("N", this->x), "second@main ");
}

TYPED_TEST(LUMNotificationCenterRemovalTest, MayLeaveTheOlderRegistration)
{
    this->gatekeeper->refuses = true;
    this->center->addObserver(this->observer, kFirst, "N", this->x);
    this->center->addObserver(this->observer, kSecond, "N", this->x);
    EXPECT_EQ(this->posted("N", this->x), "first@main second@main ");
}

TYPED_TEST(LUMNotificationCenterRemovalTest, IsNotAskedForARegistrationThatCannotBeMade)
{
    EXPECT_THROW(this->center->addObserver(this->observer, NSSelector(), "N", this->x), NSException);
    EXPECT_THROW(this->center->addObserver(nullptr, kFirst, "N", this->x), NSException);
    EXPECT_EQ(this->gatekeeper->removed, "");
}

}
