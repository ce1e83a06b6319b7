// The operations as dynamic calls, and classes that bring methods of their own.
#include "LUMFoundation/LUMData_Compression.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSSend.h"
#include "tests/data/data_text.h"
#include "tests/fixture.h"

namespace {

class LUMData_CompressionDynamicTest : public ObjectTest { };

NSRef<NSData> sendForData(std::string_view selector, std::string_view digits)
{
    return NSSend<NSRef<NSData>>(dataOf(digits), NSSelector(selector));
}

NSRef<NSString> sendForText(std::string_view selector, std::string_view text)
{
    return NSSend<NSRef<NSString>>(dataOfText(text), NSSelector(selector));
}

TEST_F(LUMData_CompressionDynamicTest, FindsBytes)
{
    auto range = NSSend<NSRange>(dataOf("61 62 00"), NSSelector("rangeOfNullTerminatedBytesFrom:"), 1);
    EXPECT_EQ(range, (NSRange { 1, 1 }));
}

TEST_F(LUMData_CompressionDynamicTest, WritesBase32)
{
    EXPECT_EQ(utf8(sendForText("base32String", "foobar")), "MZXW6YTBOI");
}

TEST_F(LUMData_CompressionDynamicTest, StuffsBytesAndBack)
{
    EXPECT_EQ(hex(sendForData("encodeCOBS", "11")), "02 11 00");
    EXPECT_EQ(hex(sendForData("decodeCOBS", "02 11 00")), "11 00 00");
}

TEST_F(LUMData_CompressionDynamicTest, DeflatesAndInflates)
{
    auto zlib = NSSend<NSRef<NSData>>(dataOf("61"), NSSelector("zlibDeflate"));
    EXPECT_EQ(hex(NSSend<NSRef<NSData>>(zlib, NSSelector("zlibInflate"))), "61");
    auto gzip = NSSend<NSRef<NSData>>(dataOf("61"), NSSelector("gzipDeflate"));
    EXPECT_EQ(hex(NSSend<NSRef<NSData>>(gzip, NSSelector("gzipInflate"))), "61");
    EXPECT_EQ(hex(NSSend<NSRef<NSData>>(gzip, NSSelector("zlibInflate"))), "null");
}

TEST_F(LUMData_CompressionDynamicTest, TakesChecksumAndDigests)
{
    EXPECT_EQ(NSSend<std::uint32_t>(dataOfText("123456789"), NSSelector("crc32")), 0xCBF43926u);
    EXPECT_EQ(hex(sendForData("md5Digest", "61 62 63")), "90 01 50 98 3c d2 4f b0 d6 96 3f 7d 28 e1 7f 72");
    EXPECT_EQ(utf8(sendForText("md5DigestString", "abc")), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(hex(sendForData("sha1Digest", "61 62 63")),
        "a9 99 3e 36 47 06 81 6a ba 3e 25 71 78 50 c2 6c 9c d0 d8 9d");
    EXPECT_EQ(utf8(sendForText("sha1DigestString", "abc")), "a9993e364706816aba3e25717850c26c9cd0d89d");
}

TEST_F(LUMData_CompressionDynamicTest, DeliberatelyAnswersTheVeryObjectWhenItIsEmpty)
{
    auto empty = NSData::data();
    EXPECT_EQ(NSSend<NSId>(empty, NSSelector("gzipInflate")), empty);
}

TEST_F(LUMData_CompressionDynamicTest, MutableDataAnswersToo)
{
    auto data = NSMutableData::dataWithBytes("123456789", 9);
    EXPECT_TRUE(data->respondsToSelector(NSSelector("crc32")));
    EXPECT_EQ(NSSend<std::uint32_t>(data, NSSelector("crc32")), 0xCBF43926u);
}

struct Type {
    const char* selector;
    const char* result;
};

class LUMData_CompressionTypeTest : public testing::TestWithParam<Type> { };

TEST_P(LUMData_CompressionTypeTest, IsInTheTableOfData)
{
    auto signature = NSData::classObject().instanceMethodSignature(NSSelector(GetParam().selector));
    ASSERT_TRUE(signature);
    EXPECT_STREQ(signature->methodReturnType(), GetParam().result);
}

const Type kTypes[] = {
    { "rangeOfNullTerminatedBytesFrom:", "{_NSRange=QQ}" },
    { "base32String", "@" },
    { "encodeCOBS", "@" },
    { "decodeCOBS", "@" },
    { "zlibInflate", "@" },
    { "zlibDeflate", "@" },
    { "gzipInflate", "@" },
    { "gzipDeflate", "@" },
    { "crc32", "I" },
    { "md5Digest", "@" },
    { "md5DigestString", "@" },
    { "sha1Digest", "@" },
    { "sha1DigestString", "@" },
};

INSTANTIATE_TEST_SUITE_P(
    LUMData_Compression, LUMData_CompressionTypeTest, testing::ValuesIn(kTypes), [](const auto& param) {
        std::string name = param.param.selector;
        return name.substr(0, name.find(':'));
    });

/// Data whose checksum is known without a look at it.
class Sealed : public NSData {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"crc32", &Sealed::seal>() };
        static const NSClass& type = NSClass::define("Sealed", &NSData::classObject(), kMethods);
        return type;
    }
    std::uint32_t seal() const { return 42; }

protected:
    Sealed() = default;
    ~Sealed() override = default;
};

TEST_F(LUMData_CompressionDynamicTest, AClassMayBringItsOwnMethod)
{
    NSRef<NSData> data = NSMake<Sealed>();
    EXPECT_EQ(LUMData_Compression::crc32(data), 42u);
    EXPECT_EQ(NSSend<std::uint32_t>(data, NSSelector("crc32")), 42u);
    EXPECT_EQ(hex(LUMData_Compression::md5Digest(data)), "d4 1d 8c d9 8f 00 b2 04 e9 80 09 98 ec f8 42 7e");
}

}
