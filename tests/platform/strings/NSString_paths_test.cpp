#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/raised_by.h"

namespace {

class NSStringPathsTest : public ObjectTest { };

TEST_F(NSStringPathsTest, TakesPathsApart)
{
    NSRef<NSString> path = "/tmp//Take 1.aif";
    EXPECT_TRUE(path->isAbsolutePath());
    EXPECT_EQ(path->lastPathComponent()->utf8(), "Take 1.aif");
    EXPECT_EQ(path->pathExtension()->utf8(), "aif");
    EXPECT_EQ(path->stringByDeletingLastPathComponent()->utf8(), "/tmp");
    EXPECT_EQ(path->stringByDeletingPathExtension()->utf8(), "/tmp/Take 1");
    EXPECT_EQ(path->fileSystemRepresentation(), "/tmp//Take 1.aif");
    EXPECT_EQ(path->stringByStandardizingPath()->lastPathComponent()->utf8(), "Take 1.aif");
    EXPECT_EQ(path->stringByExpandingTildeInPath()->utf8(), "/tmp//Take 1.aif");
}

TEST_F(NSStringPathsTest, PathsAreTheirComponents)
{
    auto components = NSRef<NSString>("/a//b/")->pathComponents();
    EXPECT_TRUE(components->isEqual(NSArray::of("/", "a", "b", "/")));
    EXPECT_EQ(NSString::pathWithComponents(components)->utf8(), "/a/b");
    EXPECT_EQ(NSString::pathWithComponents(NSArray::array())->utf8(), "");
    EXPECT_EQ(NSString::pathWithComponents(nullptr)->utf8(), "");
    EXPECT_EQ(raisedBy([] { (void)NSString::pathWithComponents(NSArray::of("a", NSNull::null())); }),
        "NSInvalidArgumentException: a path cannot have the component <null>");
}

TEST_F(NSStringPathsTest, PutsPathsTogether)
{
    NSRef<NSString> path = "/tmp/";
    EXPECT_EQ(path->stringByAppendingPathComponent("/a")->utf8(), "/tmp/a");
    EXPECT_EQ(path->stringByAppendingPathComponent(nullptr)->utf8(), "/tmp");
    EXPECT_EQ(path->stringByAppendingPathExtension("txt")->utf8(), "/tmp.txt");
    EXPECT_EQ(path->stringByAppendingPathExtension(nullptr)->utf8(), "/tmp/");
    EXPECT_FALSE(path->stringByAppendingPathExtension("/x"));
}

}
