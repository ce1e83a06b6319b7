#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/german_locale.h"

#include <cstdio>
#include <sstream>

namespace {

/// Numbers in text look the same whatever the locale of the process.
class StringsUnderGermanLocaleTest : public ObjectTest {
protected:
    GermanLocale mLocale;
};

TEST_F(StringsUnderGermanLocaleTest, TheLocaleIsInForce)
{
    std::ostringstream stream;
    stream << 1234.5;
    EXPECT_EQ(stream.str(), "1.234,5");
    if (mLocale.cLocaleIsGerman()) {
        char text[8];
        std::snprintf(text, sizeof text, "%.1f", 0.5);
        EXPECT_STREQ(text, "0,5");
    }
}

TEST_F(StringsUnderGermanLocaleTest, FormatsWithAPoint)
{
    EXPECT_EQ(NSString::stringWithFormat("%.1f %g %e %d %'d", 0.5, 1234.5, 0.25, 12345, 12345)->utf8(),
        "0.5 1234.5 2.500000e-01 12345 12345");
}

TEST_F(StringsUnderGermanLocaleTest, ReadsAPointAndNoComma)
{
    EXPECT_EQ(NSRef<NSString>("1.5")->doubleValue(), 1.5);
    EXPECT_EQ(NSRef<NSString>("1,5")->doubleValue(), 1.0);
    EXPECT_EQ(NSRef<NSString>("1.000")->intValue(), 1);
}

TEST_F(StringsUnderGermanLocaleTest, OrdersAndMapsWithoutTheLocale)
{
    EXPECT_EQ(NSRef<NSString>("\u00e4")->compare("z"), NSOrderedAscending);
    EXPECT_EQ(NSRef<NSString>("\u00e4")->compareOptions("z", NSLiteralSearch), NSOrderedDescending);
    EXPECT_EQ(NSRef<NSString>("I")->lowercaseString()->utf8(), "i");
    EXPECT_EQ(NSRef<NSString>("a\u00e4")->utf8(), "a\u00e4");
}

}
