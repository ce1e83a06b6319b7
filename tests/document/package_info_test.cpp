#include "document/package_info.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

std::string codes(std::string_view bytes)
{
    const lum::PackageInfo info = lum::readPackageInfo(std::as_bytes(std::span(bytes)));
    char text[32];
    std::snprintf(text, sizeof text, "%08x %08x", info.creator, info.type);
    return text;
}

TEST(PackageInfoTest, TheFirstEightBytesAreTheCodes)
{
    EXPECT_EQ(codes("LUMdsong"), "4c554d64 736f6e67");
    EXPECT_EQ(codes("LUMdsong and more"), "4c554d64 736f6e67");
    EXPECT_EQ(codes("LUMd"), "4c554d64 00000000");
    EXPECT_EQ(codes(""), "00000000 00000000");
    EXPECT_EQ(codes("abcdefg\u00e9"), "61626364 656667c3");
    EXPECT_EQ(codes("abc\xff"
                    "efgh"),
        "00000000 00000000");
}

TEST(PackageInfoTest, ACodeIsWrittenUpToItsFirstZeroByte)
{
    EXPECT_EQ(lum::writePackageInfo({ 0x4C554D64, 0x736F6E67 }), "LUMdsong");
    EXPECT_EQ(lum::writePackageInfo({ 0, 0x736F6E67 }), "song");
    EXPECT_EQ(lum::writePackageInfo({ 0x41004142, 0x00616263 }), "A");
    EXPECT_EQ(lum::writePackageInfo({ 0x80000000, 0x736F6E67 }), std::nullopt);
    EXPECT_EQ(lum::writePackageInfo({ 0x736F6E67, 0x616263C3 }), std::nullopt);
}

RC_GTEST_PROP(PackageInfoLaws, WholeCodesOfAsciiComeBack, ())
{
    const auto code = [] {
        std::uint32_t made = 0;
        for (int at = 0; at < 4; ++at)
            made = made << 8 | *rc::gen::inRange<std::uint32_t>(1, 0x80);
        return made;
    };
    const lum::PackageInfo info { code(), code() };
    const auto bytes = lum::writePackageInfo(info);
    RC_ASSERT(bytes && bytes->size() == 8U);
    const lum::PackageInfo again = lum::readPackageInfo(std::as_bytes(std::span(*bytes)));
    RC_ASSERT(again.creator == info.creator && again.type == info.type);
}

}
