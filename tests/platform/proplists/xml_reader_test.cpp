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

class XmlReaderTest : public ObjectTest {
protected:
    static NSId value(const std::string& element)
    {
        return readPropertyList("<plist>" + element + "</plist>");
    }
    static std::string fault(const std::string& element, const NSDecodingLimits& limits = {})
    {
        return faultOfPropertyList("<plist>" + element + "</plist>", limits);
    }
};

TEST_F(XmlReaderTest, ReadsIntegersOfSixtyFourBits)
{
    EXPECT_THAT(
        value("<integer>-9223372036854775808</integer>"), Equals(std::numeric_limits<long long>::min()));
    EXPECT_THAT(value("<integer>+0x7F</integer>"), Equals(127));
    EXPECT_THAT(value("<integer>-0X10</integer>"), Equals(-16));
    EXPECT_THAT(value("<integer>-0</integer>"), Equals(0));
    for (const char* text : { "", "-", "+", "0x", " 1", "1 ", "1.0", "--1", "-9223372036854775809",
             "18446744073709551616", "1e3", "&#49;x" })
        EXPECT_NE(fault(std::string("<integer>") + text + "</integer>"), "no error") << text;
}

TEST_F(XmlReaderTest, ReadsReals)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_THAT(value("<real>-1.5E-3</real>"), Equals(-0.0015));
    EXPECT_THAT(value("<real> +.5</real>"), Equals(0.5));
    EXPECT_THAT(value("<real>1e999</real>"), Equals(infinity));
    EXPECT_THAT(value("<real>1e-999</real>"), Equals(0.0));
    EXPECT_THAT(value("<real>Infinity</real>"), Equals(infinity));
    EXPECT_THAT(value("<real>+infinity</real>"), Equals(infinity));
    EXPECT_THAT(value("<real>-INF</real>"), Equals(-infinity));
    EXPECT_THAT(value("<real>NaN</real>"), Equals(std::numeric_limits<double>::quiet_NaN()));
    for (const char* text :
        { "", "x", "1,5", "1 ", "0x10", "+", "infinite", "nan(1)", "+nan", "-nan", "-nan(1)", "++1", "+-1" })
        EXPECT_NE(fault(std::string("<real>") + text + "</real>"), "no error") << text;
}

TEST_F(XmlReaderTest, ReadsDatesOfOneForm)
{
    EXPECT_THAT(value("<date>2000-02-29T23:59:59Z</date>"),
        Equals(NSDate::dateWithTimeIntervalSinceReferenceDate(-26438401)));
    for (const char* text : { "", "2001-01-01", "2001-01-01T00:00:00", "2001-02-29T00:00:00Z",
             "2001-01-01T24:00:00Z", "2001-01-01T00:60:00Z", "2001-01-01T00:00:60Z", "2001-00-01T00:00:00Z",
             "2001-01-01T00:00:00.5Z", "2001-01-01 00:00:00Z", "+001-01-01T00:00:00Z" })
        EXPECT_EQ(fault(std::string("<date>") + text + "</date>"),
            std::string("'") + text + "' is no date on line 1.");
}

TEST_F(XmlReaderTest, ReadsDataInBase64)
{
    EXPECT_THAT(value("<data>\n\tYWJj\n\tZA==\n</data>"), Equals(NSData::dataWithBytes("abcd", 4)));
    EXPECT_THAT(value("<data>YWJjZGU</data>"), Equals(NSData::dataWithBytes("abcde", 5)));
    EXPECT_THAT(value("<data/>"), Equals(NSData::data()));
    EXPECT_EQ(fault("<data>Y</data>"), "data in Base64 is cut short on line 1.");
    EXPECT_EQ(fault("<data>Y-Jj</data>"), "data is not in Base64 on line 1.");
    EXPECT_EQ(fault("<data>YQ==YQ==</data>"), "data is not in Base64 on line 1.");
}

TEST_F(XmlReaderTest, ReadsTextInPieces)
{
    EXPECT_THAT(value("<string>a&amp;<![CDATA[<b>]]><!-- c -->d\r\ne&#13;&#x1F600;</string>"),
        Equals("a&<b>d\ne\r\U0001F600"));
}

TEST_F(XmlReaderTest, TheLastValueOfARepeatedKeyCounts)
{
    EXPECT_THAT(value("<dict><key>a</key><true/><key>a</key><false/></dict>"),
        Equals(NSDictionary::of({ { "a", false } })));
}

TEST_F(XmlReaderTest, ReadsReferencesOfArchives)
{
    const std::string before = "<dict><key>CF$UID</key><integer>";
    EXPECT_THAT(value(before + "4294967295</integer></dict>"),
        Equals(platform::PropertyListUid::withValue(0xFFFF'FFFF)));
    EXPECT_THAT(value(before + "4294967296</integer></dict>"),
        Equals(NSDictionary::of({ { "CF$UID", 4294967296 } })));
    EXPECT_THAT(value(before + "1</integer><key>b</key><true/></dict>"),
        Equals(NSDictionary::of({ { "CF$UID", 1 }, { "b", true } })));
    EXPECT_THAT(
        value("<dict><key>CF$UID</key><true/></dict>"), Equals(NSDictionary::of({ { "CF$UID", true } })));
}

TEST_F(XmlReaderTest, TellsTheLineOfAFault)
{
    EXPECT_EQ(fault("<dict>\n<true/>\n</dict>"), "a value in a dictionary has no key on line 2.");
    EXPECT_EQ(fault("<dict>\n<array/></dict>"), "a value in a dictionary has no key on line 2.");
    EXPECT_EQ(fault("<dict><key>a</key></dict>"), "a key in a dictionary has no value on line 1.");
    EXPECT_EQ(
        fault("<dict><key>a</key><key>b</key></dict>"), "a key stands where a value is wanted on line 1.");
    EXPECT_EQ(fault("<key>a</key>"), "a key stands where a value is wanted on line 1.");
    EXPECT_EQ(fault("<true/><true/>"), "there is more than one object on line 1.");
    EXPECT_EQ(fault("<array/><dict/>"), "there is more than one object on line 1.");
    EXPECT_EQ(fault("<string>a<true/></string>"), "an element stands inside a value on line 1.");
    EXPECT_EQ(fault("<true>1</true>"), "text stands outside a value on line 1.");
    EXPECT_EQ(fault("<array>x</array>"), "text stands outside a value on line 1.");
    EXPECT_EQ(fault("<array><plist/></array>"), "<plist> stands inside an element on line 1.");
    EXPECT_EQ(fault(""), "there is no object.");
    EXPECT_EQ(fault("<strin/>"), "there is no element <strin> on line 1.");
    EXPECT_EQ(fault("<array>"), "the XML is not well-formed: mismatched tag on line 1.");
}

TEST_F(XmlReaderTest, PassesOverWhiteSpaceInFrontOfTheDeclaration)
{
    const std::string before = "\n \t\r\n<?xml version=\"1.0\"?>\n";
    EXPECT_THAT(readPropertyList(before + "<plist><true/></plist>"), Equals(true));
    EXPECT_EQ(
        faultOfPropertyList(before + "<plist><none/></plist>"), "there is no element <none> on line 4.");
}

TEST_F(XmlReaderTest, IsKnownBehindAnyAmountOfWhiteSpace)
{
    EXPECT_THAT(readPropertyList(std::string(1000, '\n') + "<true/>"), Equals(true));
}

TEST_F(XmlReaderTest, ReadsUtf16)
{
    std::string bytes("\xfe\xff", 2);
    for (char character : std::string("<plist><string>a</string></plist>"))
        bytes += std::string { '\0', character };
    EXPECT_THAT(readPropertyList(bytes), Equals("a"));
}

TEST_F(XmlReaderTest, ExpandsNoEntities)
{
    const auto withType = [](const std::string& declarations, const std::string& text) {
        return faultOfPropertyList(
            "<!DOCTYPE plist [" + declarations + "]><plist><string>" + text + "</string></plist>");
    };
    EXPECT_EQ(withType("<!ENTITY a 'b'>", "&a;"), "the document declares an entity on line 1.");
    EXPECT_EQ(withType("<!ENTITY a SYSTEM 'file:///etc/passwd'>", "&a;"),
        "the document declares an entity on line 1.");
    EXPECT_EQ(withType("<!ENTITY % a 'b'>", ""), "the document declares an entity on line 1.");
    EXPECT_EQ(faultOfPropertyList(
                  "<!DOCTYPE plist SYSTEM 'file:///etc/passwd'><plist><string>&a;</string></plist>"),
        "there is no entity 'a' on line 1.");
    EXPECT_THAT(
        readPropertyList("<!DOCTYPE plist SYSTEM 'file:///etc/passwd'><plist><true/></plist>"), Equals(true));
}

TEST_F(XmlReaderTest, KeepsToItsLimits)
{
    NSDecodingLimits limits;
    limits.depth = 2;
    EXPECT_EQ(fault("<array><array/></array>", limits), "no error");
    EXPECT_EQ(fault("<array><array><dict/></array></array>", limits),
        "containers are nested more than 2 deep on line 1.");
    limits.objects = 3;
    EXPECT_EQ(fault("<dict><key>a</key><true/></dict>", limits), "no error");
    EXPECT_EQ(
        fault("<array><true/><true/><true/></array>", limits), "there are more than 3 objects on line 1.");
}

TEST_F(XmlReaderTest, ReadsAndEndsManyContainersInsideEachOther)
{
    constexpr std::size_t kDepth = 200'000;
    std::string text = "<plist>";
    for (std::size_t level = 0; level < kDepth; ++level)
        text += "<array>";
    for (std::size_t level = 0; level < kDepth; ++level)
        text += "</array>";
    text += "</plist>";
    NSDecodingLimits limits;
    limits.depth = kDepth;
    EXPECT_EQ(faultOfPropertyList(text, limits), "no error");
    EXPECT_EQ(faultOfPropertyList(text), "containers are nested more than 1000 deep on line 1.");
}

}
