#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/property_list_uid.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/platform/proplists/reading.h"

#include <limits>

namespace {

class XmlWriterTest : public ObjectTest {
protected:
    static std::string write(const NSId& object)
    {
        auto data = NSPropertyListSerialization::dataWithPropertyList(object, NSPropertyListXMLFormat_v1_0);
        auto bytes = data->bytes();
        return { reinterpret_cast<const char*>(bytes.data()), bytes.size() };
    }
    /// What stands inside <plist>.
    static std::string inside(const NSId& object)
    {
        const std::string text = write(object);
        const std::string open = "<plist version=\"1.0\">\n";
        const std::size_t begin = text.find(open) + open.size();
        return text.substr(begin, text.rfind("</plist>\n") - begin);
    }
    static std::string faultOf(const NSId& object)
    {
        NSRef<NSString> text;
        EXPECT_FALSE(
            NSPropertyListSerialization::dataFromPropertyList(object, NSPropertyListXMLFormat_v1_0, &text));
        return text->utf8();
    }
};

TEST_F(XmlWriterTest, IsIndentedAndSorted)
{
    auto inner = NSArray::of("x", NSArray::array(), NSDictionary::dictionary());
    EXPECT_EQ(write(NSDictionary::of({ { "b", inner }, { "a", true } })),
        R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>a</key>
	<true/>
	<key>b</key>
	<array>
		<string>x</string>
		<array/>
		<dict/>
	</array>
</dict>
</plist>
)");
}

TEST_F(XmlWriterTest, WritesNumbersThatReadBack)
{
    EXPECT_EQ(inside(-5), "<integer>-5</integer>\n");
    EXPECT_EQ(
        inside(std::numeric_limits<unsigned long long>::max()), "<integer>18446744073709551615</integer>\n");
    EXPECT_EQ(inside(0.1), "<real>0.1</real>\n");
    EXPECT_EQ(inside(1.0), "<real>1</real>\n");
    EXPECT_EQ(inside(1.5F), "<real>1.5</real>\n");
    EXPECT_EQ(inside(std::numeric_limits<double>::infinity()), "<real>+infinity</real>\n");
    EXPECT_EQ(inside(-std::numeric_limits<double>::infinity()), "<real>-infinity</real>\n");
    EXPECT_EQ(inside(std::numeric_limits<double>::quiet_NaN()), "<real>nan</real>\n");
    EXPECT_EQ(inside(false), "<false/>\n");
}

TEST_F(XmlWriterTest, EscapesWhatXmlReadsOtherwise)
{
    EXPECT_EQ(inside("<a>&\"'\t\n\r\u00e9\u20ac\U0001F600"),
        "<string>&lt;a&gt;&amp;\"'\t\n&#13;\u00e9\u20ac\U0001F600</string>\n");
    EXPECT_THAT(readPropertyList(write("a\r\nb\rc")), Equals("a\r\nb\rc"));
}

TEST_F(XmlWriterTest, RefusesCharactersThatXmlHasNoFormFor)
{
    EXPECT_EQ(faultOf(std::string_view("a\0b", 3)), "the character U+0000 has no form in XML.");
    EXPECT_EQ(faultOf("\x1b"), "the character U+001B has no form in XML.");
    EXPECT_EQ(faultOf(u"\xd800"), "the character U+D800 has no form in XML.");
    EXPECT_EQ(faultOf(u"\xd800x"), "the character U+D800 has no form in XML.");
    EXPECT_EQ(faultOf(u"\xdc00"), "the character U+DC00 has no form in XML.");
    EXPECT_EQ(faultOf(u"\xffff"), "the character U+FFFF has no form in XML.");
    EXPECT_EQ(faultOf(NSDictionary::of({ { "\x01", 1 } })), "the character U+0001 has no form in XML.");
}

TEST_F(XmlWriterTest, WritesDatesOfFourDigitYears)
{
    const auto date = [](double seconds) { return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds); };
    EXPECT_EQ(inside(date(0)), "<date>2001-01-01T00:00:00Z</date>\n");
    EXPECT_EQ(inside(date(-0.5)), "<date>2000-12-31T23:59:59Z</date>\n");
    EXPECT_EQ(inside(date(-63114076800)), "<date>0000-12-30T00:00:00Z</date>\n");
    EXPECT_EQ(faultOf(date(3e11)), "a date is too far away for XML.");
    EXPECT_EQ(faultOf(date(1e300)), "a date is too far away for XML.");
    EXPECT_EQ(faultOf(date(std::numeric_limits<double>::quiet_NaN())), "a date is too far away for XML.");
}

TEST_F(XmlWriterTest, BreaksDataIntoLines)
{
    auto data = NSData::dataWithBytes(std::string(60, 'a').data(), 60);
    EXPECT_EQ(inside(data),
        "<data>\n"
        "YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFh\n"
        "YWFh\n"
        "</data>\n");
    EXPECT_EQ(inside(NSArray::of(data)),
        "<array>\n"
        "\t<data>\n"
        "\tYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFh\n"
        "\tYWFhYWFhYWFh\n"
        "\t</data>\n"
        "</array>\n");
    EXPECT_EQ(inside(NSData::data()), "<data>\n</data>\n");
    EXPECT_EQ(inside(NSData::dataWithBytes("ab", 2)), "<data>\nYWI=\n</data>\n");
}

TEST_F(XmlWriterTest, WritesReferencesOfArchives)
{
    EXPECT_EQ(inside(platform::PropertyListUid::withValue(7)),
        "<dict>\n\t<key>CF$UID</key>\n\t<integer>7</integer>\n</dict>\n");
}

}
