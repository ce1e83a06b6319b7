#include "LUMPlatform/NSNotification.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

namespace {

struct NSNotificationTest : ObjectTest { };

TEST_F(NSNotificationTest, HoldsNameObjectAndInformation)
{
    NSId object = NSMake<NSObject>();
    auto info = NSDictionary::of({ { "key", "value" } });
    auto notification = NSNotification::notificationWithName("N", object, info);
    EXPECT_EQ(notification->name()->utf8(), "N");
    EXPECT_EQ(notification->object(), object);
    EXPECT_EQ(notification->userInfo(), info);
    EXPECT_EQ(notification->copy(), notification);
}

TEST_F(NSNotificationTest, NeedsNoMoreThanAName)
{
    auto notification = NSNotification::notificationWithName("N");
    EXPECT_EQ(notification->object(), nullptr);
    EXPECT_EQ(notification->userInfo(), nullptr);
    EXPECT_THROW(static_cast<void>(NSNotification::notificationWithName(nullptr)), NSException);
}

TEST_F(NSNotificationTest, IsEqualByNameObjectAndInformation)
{
    NSId object = NSMake<NSObject>();
    auto info = NSDictionary::of({ { "key", "value" } });
    auto same = NSDictionary::of({ { "key", "value" } });
    auto a = NSNotification::notificationWithName("N", object, info);
    EXPECT_TRUE(a->isEqual(NSNotification::notificationWithName("N", object, same)));
    EXPECT_EQ(a->hash(), NSNotification::notificationWithName("N", object, same)->hash());
    EXPECT_FALSE(a->isEqual(NSNotification::notificationWithName("M", object, info)));
    EXPECT_FALSE(a->isEqual(NSNotification::notificationWithName("N", nullptr, info)));
    EXPECT_FALSE(a->isEqual(NSNotification::notificationWithName("N", object)));
    EXPECT_FALSE(a->isEqual(object));
}

TEST_F(NSNotificationTest, DescribesItself)
{
    EXPECT_EQ(NSNotification::notificationWithName("N", NSRef<NSString>("it"))->description()->utf8(),
        "NSNotification { name = N, object = it, userInfo = (null) }");
}

}
