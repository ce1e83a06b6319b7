#include "LUMPlatform/NSUUID.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/raised_by.h"

#include <gmock/gmock.h>

namespace {

class NSUUIDTest : public ObjectTest { };

TEST_F(NSUUIDTest, HasTheStandardForm)
{
    EXPECT_THAT(NSUUID::UUID()->UUIDString()->utf8(),
        testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
}

TEST_F(NSUUIDTest, IsNewEachTime)
{
    EXPECT_FALSE(NSEqual(NSUUID::UUID(), NSUUID::UUID()));
}

TEST_F(NSUUIDTest, EqualsItselfAlone)
{
    const auto one = NSUUID::UUID();
    EXPECT_TRUE(one->isEqual(one));
    EXPECT_FALSE(one->isEqual(nullptr));
    EXPECT_FALSE(one->isEqual("text"));
    EXPECT_TRUE(one->copy() == one);
    EXPECT_EQ(one->hash(), one->hash());
    EXPECT_EQ(one->description()->utf8(), one->UUIDString()->utf8());
}

TEST_F(NSUUIDTest, IsMadeOfItsBytes)
{
    const auto one = NSUUID::UUID();
    unsigned char bytes[16];
    one->getUUIDBytes(bytes);
    EXPECT_TRUE(NSEqual(NSUUID::initWithUUIDBytes(bytes), one));
    bytes[15] ^= 1;
    EXPECT_FALSE(NSEqual(NSUUID::initWithUUIDBytes(bytes), one));
}

TEST_F(NSUUIDTest, TakesNullBytesForMisuse)
{
    NSUUID::UUID()->getUUIDBytes(nullptr);
    EXPECT_EQ(nameRaisedBy([] { return NSUUID::initWithUUIDBytes(nullptr); }), "NSInvalidArgumentException");
}

TEST_F(NSUUIDTest, AnswersItsSelector)
{
    const auto one = NSUUID::UUID();
    EXPECT_EQ(NSSend<NSRef<NSString>>(one, NSSelector("UUIDString"))->utf8(), one->UUIDString()->utf8());
}

}
