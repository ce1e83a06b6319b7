#include "LUMFoundation/LUMByteCountFormatter.h"

#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

namespace {

struct Case {
    const char* name;
    std::uint64_t count;
    const char* text;
};

class LUMByteCountFormatterCases : public ObjectTest, public testing::WithParamInterface<Case> { };

TEST_P(LUMByteCountFormatterCases, Shows)
{
    EXPECT_EQ(LUMByteCountFormatter::stringWithByteCount(GetParam().count)->utf8(), GetParam().text);
    auto number = NSNumber::numberWithUnsignedLong(GetParam().count);
    EXPECT_EQ(NSMake<LUMByteCountFormatter>()->stringForObjectValue(number)->utf8(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Counts, LUMByteCountFormatterCases,
    testing::Values(Case { "DeliberatelyKilobytesForNothing", 0, "0 KB" }, Case { "HalfToEven", 512, "0 KB" },
        Case { "PastHalf", 513, "1 KB" }, Case { "OneAndAHalfToEven", 1536, "2 KB" },
        Case { "TwoAndAHalfToEven", 2560, "2 KB" }, Case { "DeliberatelyKilobytesForFewBytes", 1023, "1 KB" },
        Case { "NearlyAMegabyte", 1048575, "1024 KB" }, Case { "Megabyte", 1048576, "1.0 MB" },
        Case { "OneAndAHalfMegabytes", 1572864, "1.5 MB" },
        Case { "NearlyAGigabyte", 1073741823, "1024.0 MB" }, Case { "Gigabyte", 1073741824, "1.0 GB" },
        Case { "Terabyte", 1099511627776, "1024.0 GB" },
        Case { "Past63Bits", 9223372036854775808u, "8589934592.0 GB" },
        Case { "Most", 18446744073709551615u, "17179869184.0 GB" }),
    [](const auto& test) { return test.param.name; });

struct LUMByteCountFormatterTest : ObjectTest { };

TEST_F(LUMByteCountFormatterTest, CountsAnObjectWithoutANumberAsZero)
{
    auto formatter = NSMake<LUMByteCountFormatter>();
    EXPECT_EQ(formatter->stringForObjectValue(nullptr)->utf8(), "0 KB");
    EXPECT_EQ(formatter->stringForObjectValue(NSMake<NSObject>())->utf8(), "0 KB");
}

}
