#include "LUMPlatform/NSFormatter.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

namespace {

/// Shows a text in quotes, and cannot read.
class QuotingFormatter : public NSFormatter {
public:
    NSRef<NSString> stringForObjectValue(const NSId& value) const override
    {
        auto text = NSCast<NSString>(value);
        return text ? NSString::stringWithUTF8String("'" + text->utf8() + "'") : nullptr;
    }
};

/// Reads "yes" as a text of its own.
class ReadingFormatter : public QuotingFormatter {
public:
    bool getObjectValue(
        NSId* value, const NSRef<NSString>& string, NSRef<NSString>* errorDescription) const override
    {
        const bool known = string && string->utf8() == "yes";
        if (known && value)
            *value = NSRef<NSString>("read");
        if (!known && errorDescription)
            *errorDescription = "not yes";
        return known;
    }
};

const NSSelector kShow("stringForObjectValue:");
const NSSelector kRead("getObjectValue:forString:errorDescription:");

struct NSFormatterTest : ObjectTest {
    NSRef<NSFormatter> showing = NSMake<QuotingFormatter>();
    NSRef<NSFormatter> reading = NSMake<ReadingFormatter>();
    NSId value;
    NSRef<NSString> error;
};

TEST_F(NSFormatterTest, ShowsWhatTheSubclassWrites)
{
    EXPECT_EQ(showing->stringForObjectValue(NSRef<NSString>("a"))->utf8(), "'a'");
    EXPECT_EQ(showing->stringForObjectValue(nullptr), nullptr);
}

TEST_F(NSFormatterTest, ReadsNothingAndStoresNothingByItself)
{
    EXPECT_FALSE(showing->getObjectValue(&value, "'a'", &error));
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(error, nullptr);
    EXPECT_FALSE(showing->getObjectValue(nullptr, nullptr));
}

TEST_F(NSFormatterTest, AnswersAsItsSubclassDoesWhenSentAMessage)
{
    EXPECT_EQ(NSSend<NSRef<NSString>>(showing, kShow, NSRef<NSString>("a"))->utf8(), "'a'");
    EXPECT_TRUE(NSSend<bool>(reading, kRead, &value, NSRef<NSString>("yes"), &error));
    EXPECT_EQ(value->description()->utf8(), "read");
    EXPECT_FALSE(NSSend<bool>(reading, kRead, &value, NSRef<NSString>("no"), &error));
    EXPECT_EQ(error->utf8(), "not yes");
}

}
