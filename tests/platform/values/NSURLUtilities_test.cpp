#include "LUMPlatform/NSURLUtilities.h"

#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"

namespace {

class NSURLUtilitiesTest : public ObjectTest { };

TEST_F(NSURLUtilitiesTest, EscapesAndReplaces)
{
    const auto escaped =
        NSURLUtilities::stringByAddingPercentEscapesUsingEncoding("thumbs/pic 1%", NSUTF8StringEncoding);
    EXPECT_EQ(escaped->utf8(), "thumbs/pic%201%25");
    EXPECT_EQ(
        NSURLUtilities::stringByReplacingPercentEscapesUsingEncoding(escaped, NSUTF8StringEncoding)->utf8(),
        "thumbs/pic 1%");
}

TEST_F(NSURLUtilitiesTest, AnswersNullForWhatCannotBeDone)
{
    EXPECT_FALSE(NSURLUtilities::stringByAddingPercentEscapesUsingEncoding(nullptr, NSUTF8StringEncoding));
    EXPECT_FALSE(NSURLUtilities::stringByAddingPercentEscapesUsingEncoding("a", NSMacOSRomanStringEncoding));
    EXPECT_FALSE(NSURLUtilities::stringByAddingPercentEscapesUsingEncoding(
        std::u16string_view(u"\xD800", 1), NSUTF8StringEncoding));
    EXPECT_FALSE(NSURLUtilities::stringByReplacingPercentEscapesUsingEncoding(nullptr, NSUTF8StringEncoding));
    EXPECT_FALSE(NSURLUtilities::stringByReplacingPercentEscapesUsingEncoding("%FF", NSUTF8StringEncoding));
    EXPECT_FALSE(NSURLUtilities::stringByReplacingPercentEscapesUsingEncoding("a", NSASCIIStringEncoding));
}

TEST_F(NSURLUtilitiesTest, IsAnsweredByStrings)
{
    const NSRef<NSString> text = "a b";
    EXPECT_EQ(NSSend<NSRef<NSString>>(
                  text, NSSelector("stringByAddingPercentEscapesUsingEncoding:"), NSUTF8StringEncoding)
                  ->utf8(),
        "a%20b");
}

}
