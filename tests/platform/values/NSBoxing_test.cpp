#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"

namespace {

struct NSBoxingTest : ObjectTest { };

enum Colour { Red };
static_assert(!std::is_convertible_v<int*, NSId>, "a pointer is no truth value");
static_assert(!std::is_convertible_v<Colour, NSId>, "nor is an enumerator a number");
static_assert(!std::is_convertible_v<int*, NSRef<NSNumber>>);

TEST_F(NSBoxingTest, MakesAnObjectOfANumber)
{
    EXPECT_TRUE(NSCast<NSNumber>(NSId(true))->isBool());
    EXPECT_STREQ(NSCast<NSNumber>(NSId(5))->objCType(), "i");
    EXPECT_STREQ(NSCast<NSNumber>(NSId(5u))->objCType(), "q");
    EXPECT_STREQ(NSCast<NSNumber>(NSId(2.5f))->objCType(), "f");
    EXPECT_EQ(NSCast<NSNumber>(NSId(2.5))->doubleValue(), 2.5);
}

TEST_F(NSBoxingTest, MakesAnObjectOfText)
{
    EXPECT_EQ(NSCast<NSString>(NSId("a"))->utf8(), "a");
    EXPECT_EQ(NSCast<NSString>(NSId(std::string("é")))->length(), 1u);
    EXPECT_EQ(NSCast<NSString>(NSId(std::string_view("ab")))->utf8(), "ab");
    EXPECT_EQ(NSCast<NSString>(NSId(u"ab"))->utf8(), "ab");
}

TEST_F(NSBoxingTest, MakesNullOfNullText)
{
    const char* text = nullptr;
    EXPECT_FALSE(NSId(text));
    EXPECT_FALSE(NSId("\xff")); // as for a string: it is no UTF-8
}

}
