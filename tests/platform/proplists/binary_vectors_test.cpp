#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "tests/fixture.h"
#include "tests/platform/proplists/vector_objects.h"

namespace {

class BinaryVectors : public ObjectTest, public testing::WithParamInterface<vectors::Row> {
protected:
    std::string name() const { return "bplist/" + GetParam().cell("name"); }
    std::string stored() const { return contentOfVector(name() + ".plist"); }
    NSId described() const
    {
        return objectDescribedBy(vectors::Json::parse(contentOfVector(name() + ".json")));
    }
};

std::string bytesOf(const NSRef<NSData>& data)
{
    return data ? std::string(reinterpret_cast<const char*>(data->bytes().data()), data->length()) : "null";
}

TEST_P(BinaryVectors, AreRead)
{
    const std::string bytes = stored();
    NSRef<NSError> error;
    NSPropertyListFormat format {};
    NSId read = NSPropertyListSerialization::propertyListWithData(
        NSData::dataWithBytes(bytes.data(), bytes.size()), NSPropertyListImmutable, &format, &error);
    EXPECT_TRUE(NSEqual(read, described())) << read << error;
    EXPECT_EQ(typesOf(read), typesOf(described()));
    EXPECT_EQ(format, NSPropertyListBinaryFormat_v1_0);
}

/// Whether other writers lay the file out in another order, or do not share what is equal.
bool isWritersOwn(const std::string& name)
{
    return name == "dict_20" || name == "bundle_like" || name == "big_1000_dicts";
}

TEST_P(BinaryVectors, AreWrittenByteForByte)
{
    NSRef<NSData> written =
        NSPropertyListSerialization::dataWithPropertyList(described(), NSPropertyListBinaryFormat_v1_0);
    if (isWritersOwn(GetParam().cell("name")))
        EXPECT_LE(written->length(), stored().size());
    else
        EXPECT_EQ(bytesOf(written), stored());
}

INSTANTIATE_TEST_SUITE_P(Files, BinaryVectors, testing::ValuesIn(vectors::load("bplist/index.tsv")),
    [](const auto& tested) { return tested.param.cell("name"); });

}
