// Property lists in XML and in the old text form, and what other readers make of them.
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/property_list_uid.h"
#include "platform/proplists/xml_values.h"
#include "platform/strings/utf_conversion.h"
#include "tests/fixture.h"
#include "tests/platform/proplists/vector_objects.h"

#include <limits>

namespace {

using vectors::Json;

constexpr double kTwoTo64 = 18446744073709551616.0;

NSId dataOfHex(std::u16string_view hex)
{
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2)
        bytes.push_back(static_cast<char>(std::stoi(
            std::string { static_cast<char>(hex[at]), static_cast<char>(hex[at + 1]) }, nullptr, 16)));
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}

/// An object with one member may describe a value that JSON has no form for.
NSId described(const Json& json)
{
    switch (json.kind) {
    case Json::Kind::Bool:
        return json.boolean;
    case Json::Kind::Number:
        if (json.number >= kTwoTo64) // the row has the integer below it
            return std::numeric_limits<std::uint64_t>::max();
        return json.number;
    case Json::Kind::Text:
        return json.text;
    case Json::Kind::Array: {
        std::vector<NSId> items;
        for (const Json& item : json.items)
            items.push_back(described(item));
        return NSArray::arrayWithObjects(std::move(items));
    }
    default:
        break;
    }
    const std::u16string only = json.members.size() == 1 ? json.members[0].key : u"";
    if (only == u"real")
        return platform::realFromXml(platform::utf8FromUtf16Replacing(json.members[0].value.text));
    if (only == u"date")
        return platform::dateFromXml(platform::utf8FromUtf16Replacing(json.members[0].value.text) + "Z");
    if (only == u"data")
        return dataOfHex(json.members[0].value.text);
    if (only == u"CF$UID")
        return platform::PropertyListUid::withValue(static_cast<std::uint32_t>(json.members[0].value.number));
    auto table = NSMutableDictionary::dictionary();
    for (const auto& member : json.members)
        table->setObject(described(member.value), member.key);
    return table;
}

class TextVectors : public ObjectTest, public testing::WithParamInterface<vectors::Row> { };

TEST_P(TextVectors, AreRead)
{
    const std::string text = platform::utf8FromUtf16Replacing(GetParam().text("text_json"));
    const Json expected = GetParam().json("parsed_json");
    NSRef<NSError> error;
    NSPropertyListFormat format {};
    NSId read = NSPropertyListSerialization::propertyListWithData(
        NSData::dataWithBytes(text.data(), text.size()), NSPropertyListImmutable, &format, &error);
    if (expected.kind == Json::Kind::Null) {
        EXPECT_FALSE(read) << read;
        EXPECT_TRUE(error);
        return;
    }
    EXPECT_TRUE(NSEqual(read, described(expected))) << read << error;
    EXPECT_EQ(std::to_string(format), GetParam().cell("format"));
}

INSTANTIATE_TEST_SUITE_P(Rows, TextVectors, testing::ValuesIn(vectors::load("plist_text.tsv")),
    [](const auto& tested) { return tested.param.cell("name"); });

}
