#include "platform/files/alias_record.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using platform::AliasRecord;
using platform::FileHandle;

namespace {

FileHandle handleOf(std::int32_t type, const std::vector<std::uint8_t>& bytes)
{
    return FileHandle(type, std::as_bytes(std::span(bytes)));
}

AliasRecord sample()
{
    AliasRecord record;
    record.identity.kind = platform::FileKind::File;
    record.identity.volume = 0x0102030405060708;
    record.identity.inode = 0x2A;
    record.identity.born = -2;
    record.identity.handle = handleOf(1, { 0xAA, 0xBB });
    record.volumeType = 0xEF53;
    record.size = 5;
    record.modified = 7;
    record.folder = handleOf(-1, { 0xCC });
    record.ancestors = { 9, 2 };
    record.path = "/a/f";
    return record;
}

TEST(AliasRecordTest, HasTheBytesThatAreDocumented)
{
    const std::vector<std::uint8_t> expected {
        'F', 'S', 'a', 'l', 0, 1, 0, 2, 0, 0, 0, 4, 1, 2, 0, 1, // what follows
        1, 2, 3, 4, 5, 6, 7, 8, 0, 0, 0, 0, 0, 0, 0xEF, 0x53, // volume and its type
        0, 0, 0, 0, 0, 0, 0, 0x2A, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, // inode and birth
        0, 0, 0, 0, 0, 0, 0, 5, 0, 0, 0, 0, 0, 0, 0, 7, // size and time of change
        0, 0, 0, 1, 0xAA, 0xBB, 0xFF, 0xFF, 0xFF, 0xFF, 0xCC, // handles
        0, 0, 0, 0, 0, 0, 0, 9, 0, 0, 0, 0, 0, 0, 0, 2, // folders above
        '/', 'a', '/', 'f', // path
    };
    const auto bytes = std::as_bytes(std::span(expected));
    EXPECT_EQ(platform::encodeAlias(sample()), std::vector(bytes.begin(), bytes.end()));
}

TEST(AliasRecordTest, ReadsWhatItWrites)
{
    AliasRecord read;
    ASSERT_TRUE(platform::decodeAlias(platform::encodeAlias(sample()), read));
    EXPECT_TRUE(isSame(read.identity, sample().identity));
    EXPECT_EQ(read.identity.handle, sample().identity.handle);
    EXPECT_EQ(read.folder, sample().folder);
    EXPECT_FALSE(read.finding);
    EXPECT_EQ(read.ancestors, sample().ancestors);
    EXPECT_EQ(read.path, "/a/f");
}

TEST(AliasRecordTest, RefusesEveryCutAndEveryAddition)
{
    std::vector<std::byte> bytes = platform::encodeAlias(sample());
    AliasRecord read;
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(platform::decodeAlias(std::span(bytes).first(length), read));
    bytes.push_back(std::byte(0));
    EXPECT_FALSE(platform::decodeAlias(bytes, read));
}

struct Damage {
    const char* name;
    std::size_t at;
    int value;
};
class AliasRecordDamageTest : public testing::TestWithParam<Damage> { };

TEST_P(AliasRecordDamageTest, IsRefused)
{
    std::vector<std::byte> bytes = platform::encodeAlias(sample());
    bytes[GetParam().at] = std::byte(GetParam().value);
    AliasRecord read;
    EXPECT_FALSE(platform::decodeAlias(bytes, read));
}

INSTANTIATE_TEST_SUITE_P(Damages, AliasRecordDamageTest,
    testing::Values(Damage { "Magic", 0, 'G' }, Damage { "Version", 5, 2 },
        Damage { "AncestorsMany", 6, 255 }, Damage { "AncestorsMore", 7, 3 }, Damage { "PathLong", 8, 255 },
        Damage { "PathLonger", 11, 5 }, Damage { "KindNone", 12, 0 }, Damage { "KindUnknown", 12, 5 },
        Damage { "HandleLong", 13, 255 }, Damage { "HandleLonger", 14, 1 },
        Damage { "PathRelative", 91, 'a' }, Damage { "PathWithZero", 92, 0 }),
    [](const auto& damage) { return std::string(damage.param.name); });

TEST(AliasRecordTest, IsNotMadeOfAPathThatIsNone)
{
    AliasRecord record = sample();
    for (const std::string& path :
        { std::string(), std::string("a"), std::string("/a\0b", 4), "/" + std::string(10240, 'n') }) {
        record.path = path;
        EXPECT_TRUE(platform::encodeAlias(record).empty());
    }
}

RC_GTEST_PROP(AliasRecordTest, AnyBytesAreRefusedOrReadBackTheSame, (std::vector<std::uint8_t> noise))
{
    std::vector<std::byte> bytes = platform::encodeAlias(sample());
    for (std::size_t i = 0; i + 1 < noise.size(); i += 2)
        bytes[noise[i] % bytes.size()] = std::byte(noise[i + 1]);
    AliasRecord read;
    if (platform::decodeAlias(bytes, read))
        RC_ASSERT(platform::encodeAlias(read) == bytes);
}

}
