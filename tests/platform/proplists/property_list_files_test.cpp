#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/platform/proplists/reading.h"

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

class PropertyListFilesTest : public ObjectTest {
protected:
    PropertyListFilesTest()
    {
        std::string made = (fs::temp_directory_path() / "property-list-XXXXXX").string();
        mFolder = mkdtemp(made.data());
    }
    ~PropertyListFilesTest() override { fs::remove_all(mFolder); }

    std::string path(const std::string& name) const { return (mFolder / name).string(); }
    void put(const std::string& name, const std::string& text) const { std::ofstream(path(name)) << text; }

    fs::path mFolder;
};

TEST_F(PropertyListFilesTest, DictionariesAndArraysComeBack)
{
    auto dictionary = NSDictionary::of({ { "a", NSArray::of(1, "b") } });
    EXPECT_TRUE(dictionary->writeToFile(path("d"), true));
    EXPECT_THAT(NSDictionary::dictionaryWithContentsOfFile(path("d")), Equals(dictionary));
    auto array = NSArray::of(dictionary, 2.5);
    EXPECT_TRUE(
        NSSend<bool>(array, NSSelector("writeToFile:atomically:"), NSRef<NSString>(path("a")), false));
    EXPECT_THAT(NSArray::arrayWithContentsOfFile(path("a")), Equals(array));
}

TEST_F(PropertyListFilesTest, AnyFormatIsRead)
{
    put("text", "{ a = b; }");
    EXPECT_THAT(
        NSDictionary::dictionaryWithContentsOfFile(path("text")), Equals(NSDictionary::of({ { "a", "b" } })));
    auto binary =
        NSPropertyListSerialization::dataWithPropertyList(NSArray::of("c"), NSPropertyListBinaryFormat_v1_0);
    EXPECT_TRUE(binary->writeToFile(path("binary"), true));
    EXPECT_THAT(NSArray::arrayWithContentsOfFile(path("binary")), Equals(NSArray::of("c")));
}

TEST_F(PropertyListFilesTest, AFileOfAnotherTypeIsAnError)
{
    put("list", "(a)");
    NSRef<NSError> error;
    EXPECT_FALSE(NSDictionary::dictionaryWithContentsOfFile(path("list"), &error));
    EXPECT_EQ(error->code(), NSPropertyListReadCorruptError);
    put("broken", "(a");
    EXPECT_FALSE(NSArray::arrayWithContentsOfFile(path("broken"), &error));
    EXPECT_EQ(
        error->localizedDescription()->utf8(), "an array has neither ',' nor ')' behind a value on line 1.");
    EXPECT_FALSE(NSArray::arrayWithContentsOfFile(path("none"), &error));
    EXPECT_EQ(error->code(), -43);
    EXPECT_FALSE(NSArray::arrayWithContentsOfFile(nullptr, &error));
    EXPECT_EQ(error->code(), -50);
}

TEST_F(PropertyListFilesTest, WhatIsNoPropertyListLeavesTheFileAsItWas)
{
    put("f", "(a)");
    NSRef<NSError> error;
    EXPECT_FALSE(NSArray::of(NSNull::null())->writeToFile(path("f"), true, &error));
    EXPECT_EQ(error->code(), NSPropertyListWriteInvalidError);
    EXPECT_THAT(NSArray::arrayWithContentsOfFile(path("f")), Equals(NSArray::of("a")));
    EXPECT_FALSE(NSArray::array()->writeToFile(path("none/f"), true, &error));
    EXPECT_EQ(error->code(), -43);
}

}
