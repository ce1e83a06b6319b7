#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/platform/proplists/reading.h"

namespace {

class TextReaderTest : public ObjectTest { };

TEST_F(TextReaderTest, ReadsNestedContainers)
{
    EXPECT_THAT(readPropertyList("{ a = ( b, ( ), { c = <00 ff>; } ); \"d e\" = { }; }"),
        Equals(
            NSDictionary::of({ { "a",
                                   NSArray::of("b", NSArray::array(),
                                       NSDictionary::of({ { "c", NSData::dataWithBytes("\0\xff", 2) } })) },
                { "d e", NSDictionary::dictionary() } })));
}

TEST_F(TextReaderTest, ReadsPairsWithoutBraces)
{
    EXPECT_THAT(readPropertyList("/* greeting */ \"a\" = \"1\";\n\"b\";\nc = (d);"),
        Equals(NSDictionary::of({ { "a", "1" }, { "b", "b" }, { "c", NSArray::of("d") } })));
    EXPECT_EQ(faultOfPropertyList("a = b;\n}"), "a dictionary wants a key on line 2.");
    EXPECT_EQ(faultOfPropertyList("a = b"), "a pair does not end with ';' on line 1.");
    EXPECT_EQ(faultOfPropertyList("a b"), "a pair does not end with ';' on line 1.");
}

TEST_F(TextReaderTest, WhiteSpaceAloneIsAnEmptyDictionary)
{
    EXPECT_THAT(readPropertyList(" \n// nothing"), Equals(NSDictionary::dictionary()));
    EXPECT_EQ(faultOfPropertyList(""), "there are no bytes.");
}

TEST_F(TextReaderTest, ReadsEscapes)
{
    EXPECT_THAT(readPropertyList(R"("\a\b\f\n\r\t\v\\\"\'\q\101\1018\U0041\U41g\Ud83d\Ude00\12")"),
        Equals(u"\a\b\f\n\r\t\v\\\"'qAA8AAg\xd83d\xde00\n"));
    EXPECT_THAT(readPropertyList(R"("\200\256\376")"), Equals(u"\u00a0\ufb01\ufffd"));
    EXPECT_THAT(readPropertyList("'say \"x\"'"), Equals("say \"x\""));
}

TEST_F(TextReaderTest, ReadsBareStringsOfSomeCharactersOnly)
{
    EXPECT_THAT(readPropertyList("a_$/:.-9"), Equals("a_$/:.-9"));
    EXPECT_EQ(faultOfPropertyList("{ a = b+c; }"), "a pair does not end with ';' on line 1.");
    EXPECT_EQ(faultOfPropertyList("+"), "a string is missing on line 1.");
    EXPECT_EQ(faultOfPropertyList("\xc3\xa9"), "a string is missing on line 1.");
}

TEST_F(TextReaderTest, ReadsDataThoughItBeginsAsXmlDoes)
{
    EXPECT_THAT(readPropertyList("<dead\nBEEF>"), Equals(NSData::dataWithBytes("\xde\xad\xbe\xef", 4)));
    EXPECT_THAT(readPropertyList("<>"), Equals(NSData::data()));
    EXPECT_EQ(faultOfPropertyList("<0 0>"), "data is not in pairs of hexadecimal digits on line 1.");
}

TEST_F(TextReaderTest, TellsTheLineOfAFault)
{
    EXPECT_EQ(faultOfPropertyList("{\na = b;\n"), "a dictionary wants a key on line 3.");
    EXPECT_EQ(faultOfPropertyList("(a\nb)"), "an array has neither ',' nor ')' behind a value on line 2.");
    EXPECT_EQ(faultOfPropertyList("(,)"), "a string is missing on line 1.");
    EXPECT_EQ(faultOfPropertyList("{ (a) = b; }"), "a dictionary wants a key on line 1.");
    EXPECT_EQ(faultOfPropertyList("\"a"), "a quoted string has no end on line 1.");
    EXPECT_EQ(faultOfPropertyList("\"a\\"), "a quoted string has no end on line 1.");
    EXPECT_EQ(faultOfPropertyList("/* a"), "a comment has no end on line 1.");
    EXPECT_EQ(faultOfPropertyList("(a) b"), "there is more than one object on line 1.");
    EXPECT_EQ(faultOfPropertyList("\xff\xff\xff"), "the bytes are no property list.");
}

TEST_F(TextReaderTest, ReadsUtf16InBothByteOrders)
{
    EXPECT_THAT(readPropertyList({ "\xff\xfe"
                                   "a\0b\0",
                    6 }),
        Equals("ab"));
    EXPECT_THAT(readPropertyList({ "\xfe\xff"
                                   "\0a\0b",
                    6 }),
        Equals("ab"));
    EXPECT_THAT(readPropertyList("\xef\xbb\xbf"
                                 "ab"),
        Equals("ab"));
    EXPECT_EQ(faultOfPropertyList("\xfe\xff"
                                  "x"),
        "the text in UTF-16 ends in half a character.");
}

/// Each of these takes hours when a quoted string looks for what is not in it.
TEST_F(TextReaderTest, ReadsManyStringsAndEscapesInTimeLinearInTheBytes)
{
    constexpr std::size_t kMany = 1 << 19;
    std::string strings = "(";
    for (std::size_t at = 0; at < kMany; ++at)
        strings += "\"a\",";
    EXPECT_EQ(NSCast<NSArray>(readPropertyList(strings + ")"))->count(), kMany);
    std::string escapes;
    for (std::size_t at = 0; at < kMany; ++at)
        escapes += "\\n";
    EXPECT_EQ(NSCast<NSString>(readPropertyList('"' + escapes + '"'))->length(), kMany);
}

TEST_F(TextReaderTest, KeepsToItsLimits)
{
    NSDecodingLimits limits;
    limits.depth = 2;
    EXPECT_EQ(faultOfPropertyList("((a))", limits), "no error");
    EXPECT_EQ(faultOfPropertyList("((()))", limits), "containers are nested more than 2 deep.");
    limits.objects = 2;
    EXPECT_EQ(faultOfPropertyList("(a, b)", limits), "there are more than 2 objects.");
}

TEST_F(TextReaderTest, ReadsAndEndsManyContainersInsideEachOther)
{
    constexpr std::size_t kDepth = 200'000;
    NSDecodingLimits limits;
    limits.depth = kDepth;
    EXPECT_EQ(faultOfPropertyList(std::string(kDepth, '(') + std::string(kDepth, ')'), limits), "no error");
}

}
