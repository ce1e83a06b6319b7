#include "LUMFoundation/LUMError.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

#include <limits>

namespace {

struct LUMErrorTest : ObjectTest { };

TEST_F(LUMErrorTest, HasTheStatusInItsDomain)
{
    auto error = LUMError::errorWithOSStatus(-43, "x", "y");
    EXPECT_THAT(error->domain(), Equals("NSOSStatusErrorDomain"));
    EXPECT_EQ(error->code(), -43);
}

TEST_F(LUMErrorTest, KeepsTheSignOfEveryStatus)
{
    EXPECT_EQ(
        LUMError::errorWithOSStatus(std::numeric_limits<OSStatus>::min(), "x", "y")->code(), -2147483648LL);
    EXPECT_EQ(
        LUMError::errorWithOSStatus(std::numeric_limits<OSStatus>::max(), "x", "y")->code(), 2147483647);
}

TEST_F(LUMErrorTest, CarriesBothTexts)
{
    EXPECT_THAT(LUMError::errorWithOSStatus(-43, "x", "y")->userInfo(),
        Equals(NSDictionary::of({ { "NSLocalizedDescription", "x" }, { "NSLocalizedFailureReason", "y" } })));
}

TEST_F(LUMErrorTest, LeavesOutANullReason)
{
    EXPECT_THAT(LUMError::errorWithOSStatus(-43, "x", nullptr)->userInfo(),
        Equals(NSDictionary::of({ { "NSLocalizedDescription", "x" } })));
}

TEST_F(LUMErrorTest, DeliberatelyDropsTheReasonWithoutADescription)
{
    EXPECT_THAT(
        LUMError::errorWithOSStatus(-43, nullptr, "y")->userInfo(), Equals(NSDictionary::dictionary()));
}

}
