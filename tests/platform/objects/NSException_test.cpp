#include "LUMPlatform/NSException.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

namespace {

struct NSExceptionTest : ObjectTest { };

TEST_F(NSExceptionTest, CarriesNameReasonAndInformation)
{
    const NSException exception(NSRangeException, "too far", NSDictionary::of({ { "index", 7 } }));
    EXPECT_THAT(exception.name(), Equals("NSRangeException"));
    EXPECT_THAT(exception.reason(), Equals("too far"));
    EXPECT_THAT(exception.userInfo()->objectForKey("index"), Equals(7));
    EXPECT_STREQ(exception.what(), "NSRangeException: too far");
}

TEST_F(NSExceptionTest, HasNoInformationUnlessGivenSome)
{
    EXPECT_FALSE(NSException(NSRangeException, "too far").userInfo());
}

TEST_F(NSExceptionTest, TakesANullNameAndReason)
{
    EXPECT_STREQ(NSException(nullptr, nullptr).what(), ": ");
}

TEST_F(NSExceptionTest, SharesItsObjectsWithItsCopies)
{
    const NSException exception(NSRangeException, "too far", NSDictionary::of({ { "index", 7 } }));
    const NSException copy = exception;
    EXPECT_TRUE(copy.userInfo() == exception.userInfo());
}

}
