#include "platform/proplists/plain_xml_reader.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/xml_reader.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/platform/proplists/property_list_generator.h"
#include "tests/platform/proplists/reading.h"
#include "tests/platform/proplists/vector_objects.h"

#include <rapidcheck/gtest.h>

namespace {

NSId plain(std::string_view text)
{
    return platform::readPlainXmlPropertyList(std::as_bytes(std::span(text)), {});
}

class PlainXmlReaderTest : public ObjectTest { };

TEST_F(PlainXmlReaderTest, ReadsWhatWritersWrite)
{
    EXPECT_THAT(plain("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD "
                      "PLIST 1.0//EN\" "
                      "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\r\n<plist "
                      "version=\"1.0\">\n<dict><key>a</key>"
                      "<array><integer>-5</integer><real>1.5</real><true/><false/><string/><array/><dict/>\n"
                      "<data>\n\tYWJj\n\t</data><string>\u00e9 [x] "
                      "&lt;&#13;&amp;&quot;</string></array></dict>\n</plist>\n"),
        Equals(NSDictionary::of({ { "a",
            NSArray::of(-5, 1.5, true, false, "", NSArray::array(), NSDictionary::dictionary(),
                NSData::dataWithBytes("abc", 3), "\u00e9 [x] <\r&\"") } })));
    EXPECT_THAT(plain("<string>a</string>"), Equals("a"));
}

/// What is not plain, be it well-formed or not.
class NotPlain : public ObjectTest, public testing::WithParamInterface<const char*> { };

TEST_P(NotPlain, IsLeftToTheOtherReader)
{
    EXPECT_FALSE(plain(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Texts, NotPlain,
    testing::Values("", "<plist>", "<plist></plist>", "<plist><true/>", "<true/><true/>", "<true />",
        "<true></true>", "<plist version='1.0'><true/></plist>", "<array></dict>", "<dict></array>",
        "</array>", "<array>x</array>", "<dict><true/></dict>", "<dict><key>a</key></dict>", "<string>a",
        "<string>a</key>", "<string>a\rb</string>", "<string>]]></string>", "<string>&a;</string>",
        "<string>&#xe9;</string>", "<string>&#233;</string>", "<string>&#0;</string>", "<string>&#1</string>",
        "<string>\x01</string>", "<string>\xff</string>", "<string>\xef\xbf\xbf</string>",
        "<string><![CDATA[a]]></string>", "<!-- a --><true/>", "<integer>x</integer>", "<true/>x",
        "<!DOCTYPE plist [<!ENTITY a 'b'>]><plist><true/></plist>"));

RC_GTEST_PROP(PlainXmlReaderLaws, ReadsTheSameAsTheOtherReader, ())
{
    auto data = NSPropertyListSerialization::dataWithPropertyList(
        *propertyLists(3, true), NSPropertyListXMLFormat_v1_0);
    NSId object = platform::readXmlPropertyList(data->bytes(), {});
    NSId fast = platform::readPlainXmlPropertyList(data->bytes(), {});
    if (fast)
        RC_ASSERT(NSEqual(fast, object) && typesOf(fast) == typesOf(object));
    else // what the writer escapes by number
        RC_ASSERT(
            std::string_view(reinterpret_cast<const char*>(data->bytes().data()), data->length()).find("&#")
            != std::string_view::npos);
}

}
