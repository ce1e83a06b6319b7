#include "core/status_error.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

namespace {

struct StatusErrorTest : ObjectTest {
    static bool isThere(NSRef<NSError>* error) { return lum::fail(error, -43); }
    static NSRef<NSString> name(NSRef<NSError>* error) { return lum::fail(error, -50); }

    NSRef<NSError> error;
};

TEST_F(StatusErrorTest, StoresAnErrorWithoutInformation)
{
    isThere(&error);
    ASSERT_TRUE(error);
    EXPECT_THAT(error->domain(), Equals("NSOSStatusErrorDomain"));
    EXPECT_EQ(error->code(), -43);
    EXPECT_EQ(error->userInfo()->count(), 0u);
}

TEST_F(StatusErrorTest, StoresNothingWhereNoErrorIsAskedFor)
{
    EXPECT_FALSE(isThere(nullptr));
}

TEST_F(StatusErrorTest, IsFalseAndNull)
{
    EXPECT_FALSE(isThere(&error));
    EXPECT_EQ(name(&error), nullptr);
    EXPECT_EQ(error->code(), -50);
}

}
