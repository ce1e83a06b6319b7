#include "tests/fileref/fileref_fixture.h"

#include "tests/platform/files/faulty_node_system.h"

#include <cerrno>

namespace {

/// Lets nobody look at entries called "2".
class OneRefused final : public FaultyNodeSystem {
public:
    int attributes(int folder, const char* name, platform::FileAttributes& attributes) override
    {
        return name == std::string_view("2") ? -EACCES
                                             : FaultyNodeSystem::attributes(folder, name, attributes);
    }
};

class LUMFileRefChildrenTest : public FileRefTest {
protected:
    NSRef<NSError> mError;
};

TEST_F(LUMFileRefChildrenTest, AreTheVisibleEntries)
{
    file("f");
    file(".hidden");
    folder("a");
    file("a/below");
    EXPECT_EQ(names(here()->childrenError(&mError)), "a f ");
    EXPECT_FALSE(mError);
}

TEST_F(LUMFileRefChildrenTest, OfAFolderOfHiddenOnesAreNoneWithoutAnError)
{
    file(".a");
    file(".b");
    const auto children = here()->childrenError(&mError);
    ASSERT_TRUE(children);
    EXPECT_EQ(children->count(), 0u);
    EXPECT_FALSE(mError);
}

TEST_F(LUMFileRefChildrenTest, OfAFileAreNullWithoutAnError)
{
    file("f");
    EXPECT_FALSE(handle("f")->childrenError(&mError));
    EXPECT_FALSE(mError);
}

TEST_F(LUMFileRefChildrenTest, FollowLinksOrStandForThoseThatDangle)
{
    folder("a");
    file("f");
    link("a/alias", at("f"));
    link("a/dangling", "missing");
    EXPECT_EQ(names(handle("a")->childrenError()), "dangling f ");
}

TEST_F(LUMFileRefChildrenTest, DeliberatelyAreHiddenByTheNameOfWhatTheyLeadTo)
{
    folder("a");
    file(".hidden");
    file("visible");
    link("a/link", at(".hidden"));
    link("a/.link", at("visible"));
    EXPECT_EQ(names(handle("a")->childrenError()), "visible ");
}

TEST_F(LUMFileRefChildrenTest, AreEqualToHandlesByPath)
{
    file("f");
    const auto child = here()->childrenError()->objectAtIndex<LUMFileRef>(0);
    EXPECT_TRUE(child->isEqual(handle("f")));
    EXPECT_EQ(child->hash(), handle("f")->hash());
    rename("f", "g");
    EXPECT_EQ(pathOf(child), at("g"));
}

TEST_F(LUMFileRefChildrenTest, AreNotReadThroughAHandleOnALinkItself)
{
    folder("a");
    file("a/f");
    link("alias", "a");
    const auto children = linkHandle("alias")->childrenError(&mError);
    ASSERT_TRUE(children);
    EXPECT_EQ(children->count(), 0u);
    EXPECT_EQ(codeOf(mError), -120);
    EXPECT_EQ(names(handle("alias")->childrenError()), "f ");
}

TEST_F(LUMFileRefChildrenTest, ThatCannotBeReadAreNoneWithTheError)
{
    file("f");
    const auto folder = here();
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::OpenFolder, EACCES);
    const auto children = folder->childrenError(&mError);
    ASSERT_TRUE(children);
    EXPECT_EQ(children->count(), 0u);
    EXPECT_EQ(codeOf(mError), -5000);
}

TEST_F(LUMFileRefChildrenTest, ComeWithoutTheOneThatCannotBeLookedAtAndWithTheError)
{
    for (const std::string name : { "1", "2", "3" })
        file(name);
    const auto folder = here();
    OneRefused system;
    const auto children = folder->childrenError(&mError);
    EXPECT_EQ(names(children), "1 3 ");
    EXPECT_EQ(codeOf(mError), -5000);
}

TEST_F(LUMFileRefChildrenTest, ThatBreakOffAreThoseBeforeWithTheError)
{
    for (int i = 0; i < 5; ++i)
        file(std::to_string(i));
    const auto folder = here();
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::List, EIO, 1);
    const auto children = folder->childrenError(&mError);
    EXPECT_EQ(children->count(), 5u);
    EXPECT_EQ(codeOf(mError), -36);
    EXPECT_EQ(folder->childrenError()->count(), 0u);
}

}
