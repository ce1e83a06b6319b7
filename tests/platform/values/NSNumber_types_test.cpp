#include "LUMPlatform/NSNumber.h"

#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/vector_file.h"

#include <charconv>
#include <map>
#include <set>
#include <sstream>

namespace {

NSRef<NSNumber> numberMadeFrom(const std::string& type)
{
    static const std::map<std::string, NSRef<NSNumber> (*)()> kMakers = {
        { "bool", [] { return NSNumber::numberWithBool(true); } },
        { "int8", [] { return NSNumber::numberWithChar(1); } },
        { "uint8", [] { return NSNumber::numberWithUnsignedChar(200); } },
        { "uint16", [] { return NSNumber::numberWithUnsignedShort(1); } },
        { "int64", [] { return NSNumber::numberWithLongLong(1); } },
        { "uint64max", [] { return NSNumber::numberWithUnsignedLongLong(~0ULL); } },
        { "int", [] { return NSNumber::numberWithInt(1); } },
        { "uint", [] { return NSNumber::numberWithUnsignedInt(1); } },
        { "double", [] { return NSNumber::numberWithDouble(1); } },
        { "-1.9", [] { return NSNumber::numberWithDouble(-1.9); } },
        { "1e20", [] { return NSNumber::numberWithDouble(1e20); } },
        { "0.5", [] { return NSNumber::numberWithDouble(0.5); } },
        { "256", [] { return NSNumber::numberWithInteger(256); } },
    };
    return kMakers.at(type)();
}

std::string exactText(double value)
{
    char text[64];
    return { text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 17).ptr };
}

std::string valueOf(const NSNumber& number, const std::string& reader)
{
    if (reader == "desc")
        return number.description()->utf8();
    if (reader == "bool")
        return number.boolValue() ? "true" : "false";
    if (reader == "int")
        return std::to_string(number.intValue());
    if (reader == "ll")
        return std::to_string(number.longLongValue());
    if (reader == "ull")
        return std::to_string(number.unsignedLongLongValue());
    if (reader == "double")
        return exactText(number.doubleValue());
    if (reader == "float")
        return exactText(static_cast<double>(number.floatValue()));
    throw std::runtime_error("no reader " + reader);
}

/// Values that numbers of ours have otherwise, by what they are made from and how they are read.
const std::set<std::pair<std::string, std::string>> kOtherwise = {
    // 18446744073709551614 there: one less than what is left of -1.9 once it is truncated, and then wrapped.
    { "-1.9", "ull" },
    // False there, where the number goes through an integer: everything but 0 is true.
    { "0.5", "bool" },
    // "1.0" there: a whole number is written without its fraction.
    { "double", "desc" },
};

/// Those whose type is kept as it was made. The others are kept there in the narrowest type that will do.
const std::set<std::string> kSameType = { "bool", "uint8", "uint16", "uint64max", "int", "double", "-1.9",
    "1e20", "0.5", "256" };

std::vector<vectors::Row> rowsOf(const std::string& what)
{
    auto rows = vectors::load("number_types.tsv");
    std::erase_if(rows, [&](const vectors::Row& row) { return row.cell("what") != what; });
    return rows;
}

class NSNumberTypes : public ObjectTest, public testing::WithParamInterface<vectors::Row> { };

TEST_P(NSNumberTypes, ReadAsExpected)
{
    const std::string type = GetParam().cell("made_from");
    const auto number = numberMadeFrom(type);
    std::istringstream values(GetParam().cell("values"));
    for (std::string value; values >> value;) {
        const auto equals = value.find('=');
        const std::string reader = value.substr(0, equals);
        if (kOtherwise.contains({ type, reader }))
            continue;
        EXPECT_EQ(valueOf(*number, reader), value.substr(equals + 1)) << reader;
    }
    if (kSameType.contains(type)) {
        EXPECT_EQ(std::string("objCType=") + number->objCType(), GetParam().cell("objCType"));
    }
}

INSTANTIATE_TEST_SUITE_P(NumberTypes, NSNumberTypes, testing::ValuesIn(rowsOf("number")),
    [](const auto& row) { return row.param.name(); });

TEST(NSNumberTypesTest, AreEqualByValue)
{
    ASSERT_EQ(rowsOf("eq").size(), 1U);
    EXPECT_TRUE(NSNumber::numberWithBool(true)->isEqualToNumber(NSNumber::numberWithInt(1)));
    EXPECT_TRUE(NSNumber::numberWithInt(1)->isEqualToNumber(NSNumber::numberWithDouble(1)));
}

}
