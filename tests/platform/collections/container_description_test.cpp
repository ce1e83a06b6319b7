#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSSet.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

#include <sstream>

namespace {

struct ContainerDescriptionTest : ObjectTest {
    static std::string text(const NSId& object) { return object->description()->utf8(); }
};

TEST_F(ContainerDescriptionTest, WritesOneElementALine)
{
    EXPECT_EQ(text(NSArray::of("a", 2)), "(\n    a,\n    2\n)");
    EXPECT_EQ(text(NSArray::array()), "(\n)");
    EXPECT_EQ(text(NSDictionary::of({ { "k", "v" } })), "{\n    k = v;\n}");
    EXPECT_EQ(text(NSDictionary::dictionary()), "{\n}");
    EXPECT_EQ(text(NSSet::set()), "{(\n)}");
}

TEST_F(ContainerDescriptionTest, IndentsInnerContainers)
{
    EXPECT_EQ(text(NSArray::of(NSArray::of(1, 2), "x")),
        "(\n"
        "        (\n"
        "        1,\n"
        "        2\n"
        "    ),\n"
        "    x\n"
        ")");
    EXPECT_EQ(text(NSDictionary::of({ { "k", NSDictionary::of({ { "a", 1 } }) } })),
        "{\n"
        "    k =     {\n"
        "        a = 1;\n"
        "    };\n"
        "}");
}

TEST_F(ContainerDescriptionTest, QuotesWhatIsNoPlainWord)
{
    EXPECT_EQ(text(NSArray::of("", "a b", "a_b", "1.5", -5, 1.5, NSNull::null())),
        "(\n    \"\",\n    \"a b\",\n    \"a_b\",\n    \"1.5\",\n    \"-5\",\n    \"1.5\",\n    "
        "\"<null>\"\n)");
    EXPECT_EQ(text(NSArray::of("say \"a\\b\"", "x\ty\nz\x01", "é😀")),
        "(\n    \"say \\\"a\\\\b\\\"\",\n    \"x\\ty\\nz\\U0001\",\n    \"\\U00e9\\Ud83d\\Ude00\"\n)");
}

TEST_F(ContainerDescriptionTest, WritesDataBare)
{
    EXPECT_EQ(text(NSArray::of(NSData::dataWithBytes("abcde", 5))), "(\n    <61626364 65>\n)");
}

TEST_F(ContainerDescriptionTest, SortsTheKeysOfADictionaryWhenAllAreStrings)
{
    EXPECT_EQ(text(NSDictionary::of({ { "b", 1 }, { "a", 2 } })), "{\n    a = 2;\n    b = 1;\n}");
    EXPECT_EQ(text(NSDictionary::of({ { "b", 1 }, { 5, 2 }, { "a", 3 } })),
        "{\n    b = 1;\n    5 = 2;\n    a = 3;\n}");
}

TEST_F(ContainerDescriptionTest, CutsAContainerThatContainsItself)
{
    auto array = NSMutableArray::of(1);
    array->addObject(array);
    EXPECT_EQ(text(array), "(\n    1,\n        (...)\n)");
    auto dictionary = NSMutableDictionary::of({ { "list", array } });
    array->replaceObjectAtIndex(1, dictionary);
    EXPECT_EQ(text(dictionary), "{\n    list =     (\n        1,\n                {...}\n    );\n}");
    array->removeAllObjects();
}

TEST_F(ContainerDescriptionTest, WritesTheSameContainerTwiceBesideItself)
{
    auto inner = NSArray::of(1);
    EXPECT_EQ(
        text(NSArray::of(inner, inner)), "(\n        (\n        1\n    ),\n        (\n        1\n    )\n)");
}

TEST_F(ContainerDescriptionTest, CutsWhatIsNestedTooDeep)
{
    auto nested = NSArray::of("bottom");
    for (int i = 0; i < 100'000; ++i)
        nested = NSArray::of(nested);
    EXPECT_NE(text(nested).find("(...)"), std::string::npos);
    EXPECT_EQ(text(nested).find("bottom"), std::string::npos);
}

TEST_F(ContainerDescriptionTest, IsWhatTheStreamPrints)
{
    std::ostringstream stream;
    stream << NSArray::of("a") << *NSDictionary::of({ { "k", 1 } });
    EXPECT_EQ(stream.str(), "(\n    a\n){\n    k = 1;\n}");
}

}
