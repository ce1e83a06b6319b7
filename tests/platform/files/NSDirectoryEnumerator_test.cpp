#include "LUMPlatform/NSDirectoryEnumerator.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSFileAttributes.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "tests/platform/files/tree_fixture.h"

namespace fs = std::filesystem;

namespace {

class NSDirectoryEnumeratorTest : public TreeTest {
protected:
    NSRef<NSDirectoryEnumerator> enumerate(const std::string& name) const
    {
        return NSFileManager::defaultManager()->enumeratorAtPath(path(name));
    }
    /// All it gives, sorted, separated by spaces.
    static std::string all(const NSRef<NSDirectoryEnumerator>& enumerator)
    {
        std::vector<std::string> found;
        for (const NSId& entry : *enumerator)
            found.push_back(NSCast<NSString>(entry)->utf8());
        std::sort(found.begin(), found.end());
        std::string text;
        for (const auto& entry : found)
            text += (text.empty() ? "" : " ") + entry;
        return text;
    }
};

TEST_F(NSDirectoryEnumeratorTest, TellsWhatIsInAFolderAtAnyDepth)
{
    putSome("t");
    put("t/.hidden");
    EXPECT_EQ(all(enumerate("t")), ".hidden a sub sub/b sub/empty sub/link");
}

TEST_F(NSDirectoryEnumeratorTest, TellsAFolderBeforeWhatIsInIt)
{
    makeFolder("t/a/b/c");
    const auto enumerator = enumerate("t");
    for (const char* expected : { "a", "a/b", "a/b/c" })
        EXPECT_EQ(enumerator->nextObject()->description()->utf8(), expected);
    EXPECT_FALSE(enumerator->nextObject());
    EXPECT_FALSE(enumerator->nextObject());
}

TEST_F(NSDirectoryEnumeratorTest, FollowsThePathItselfAndNoOtherLink)
{
    putSome("t");
    makeFolder("outside");
    put("outside/not this");
    fs::create_directory_symlink("t", folder / "link");
    EXPECT_EQ(all(enumerate("link")), "a sub sub/b sub/empty sub/link");
}

TEST_F(NSDirectoryEnumeratorTest, HasNothingToTellOfAFile)
{
    put("a");
    EXPECT_FALSE(enumerate("a")->nextObject());
    EXPECT_FALSE(enumerate("a")->fileAttributes());
    EXPECT_FALSE(enumerate("none"));
}

TEST_F(NSDirectoryEnumeratorTest, TellsAttributesOfTheLastOne)
{
    makeFolder("t/d");
    put("t/d/f", "12345");
    const auto enumerator = enumerate("t");
    EXPECT_FALSE(enumerator->fileAttributes());
    (void)enumerator->nextObject();
    EXPECT_TRUE(NSEqual(enumerator->fileAttributes()->objectForKey(NSFileType), NSFileTypeDirectory));
    (void)enumerator->nextObject();
    EXPECT_EQ(enumerator->fileAttributes()->objectForKey<NSNumber>(NSFileSize)->intValue(), 5);
    fs::remove(folder / "t/d/f");
    EXPECT_FALSE(enumerator->fileAttributes());
    EXPECT_FALSE(enumerator->nextObject());
    EXPECT_FALSE(enumerator->fileAttributes());
}

TEST_F(NSDirectoryEnumeratorTest, SkipsAFolderWhenAsked)
{
    makeFolder("t/d/e");
    const auto enumerator = enumerate("t");
    EXPECT_EQ(enumerator->nextObject()->description()->utf8(), "d");
    enumerator->skipDescendants();
    EXPECT_FALSE(enumerator->nextObject());
}

TEST_F(NSDirectoryEnumeratorTest, LeavesOutNamesThatAreNoTextWithAllInThem)
{
    makeFolder("t/\xFF");
    put("t/\xFF/inside");
    put("t/good");
    EXPECT_EQ(all(enumerate("t")), "good");
}

TEST_F(NSDirectoryEnumeratorTest, StepsOnToWhatHasNoTextForANameWhenAsked)
{
    makeFolder("t/\xFF");
    put("t/\xFF/\xFE", "12345");
    const auto enumerator = enumerate("t");
    EXPECT_TRUE(enumerator->step());
    EXPECT_TRUE(NSEqual(enumerator->fileAttributes()->objectForKey(NSFileType), NSFileTypeDirectory));
    EXPECT_TRUE(enumerator->step());
    EXPECT_EQ(enumerator->fileAttributes()->objectForKey<NSNumber>(NSFileSize)->intValue(), 5);
    EXPECT_FALSE(enumerator->step());
    EXPECT_FALSE(enumerator->fileAttributes());
    EXPECT_FALSE(enumerator->step());
}

TEST_F(NSDirectoryEnumeratorTest, StepsAndGivesInTurn)
{
    makeFolder("t/a/b/c");
    const auto enumerator = enumerate("t");
    EXPECT_TRUE(enumerator->step());
    EXPECT_EQ(enumerator->nextObject()->description()->utf8(), "a/b");
    EXPECT_TRUE(enumerator->step());
    EXPECT_FALSE(enumerator->nextObject());
}

TEST_F(NSDirectoryEnumeratorTest, GoesOnWhenAFolderIsRemovedMeanwhile)
{
    makeFolder("t/a/b");
    const auto enumerator = enumerate("t");
    (void)enumerator->nextObject();
    fs::remove_all(folder / "t/a");
    EXPECT_FALSE(enumerator->nextObject());
}

TEST_F(NSDirectoryEnumeratorTest, GoesDeeperThanAnyPath)
{
    putDeep("t", 200);
    const auto enumerator = enumerate("t");
    int count = 0;
    while (enumerator->nextObject())
        ++count;
    EXPECT_EQ(count, 200);
    EXPECT_TRUE(NSFileManager::defaultManager()->removeItemAtPath(path("t")));
}

}
