#include "LUMPlatform/FSRef.h"

#include "tests/platform/files/reference_fixture.h"

#include <climits>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class FSRefTest : public ReferenceTest {
protected:
    std::string link(const std::string& name, const std::string& target) const
    {
        fs::create_symlink(target, at(name));
        return at(name);
    }
};

TEST_F(FSRefTest, TellsThePathItWasMadeFrom)
{
    const std::string path = file("Take 1.aif");
    EXPECT_EQ(pathOf(refTo(path)), path);
}

TEST_F(FSRefTest, TellsTheRealPathOfWhatWasFoundThroughLinksAndDetours)
{
    folder("a/b");
    const std::string path = file("a/b/f");
    link("short", at("a/b"));
    EXPECT_EQ(pathOf(refTo(at("short/f"))), path);
    EXPECT_EQ(pathOf(refTo(at("a/../a//b/./f"))), path);
}

TEST_F(FSRefTest, TakesARelativePathFromTheCurrentFolder)
{
    const std::string path = file("f");
    const fs::path before = fs::current_path();
    fs::current_path(mFolder);
    const FSRef ref = refTo("f");
    fs::current_path(before);
    EXPECT_EQ(pathOf(ref), path);
}

TEST_F(FSRefTest, DoesNotCountSlashesAtTheEnd)
{
    const std::string path = folder("a");
    EXPECT_EQ(pathOf(refTo(path + "//")), path);
    EXPECT_EQ(pathOf(refTo("/")), "/");
    EXPECT_EQ(pathOf(refTo("///")), "/");
}

TEST_F(FSRefTest, IsNotMadeForWhatIsNotThere)
{
    FSRef ref;
    EXPECT_EQ(FSPathMakeRef(at("missing"), ref), -43);
    EXPECT_EQ(FSPathMakeRef("", ref), -43);
    EXPECT_EQ(FSPathMakeRef(file("f") + std::string("\0g", 2), ref), -43);
    EXPECT_EQ(FSPathMakeRef(file("f") + "/below", ref), -120);
    EXPECT_EQ(FSPathMakeRef("/" + std::string(300, 'n'), ref), -37);
    EXPECT_EQ(FSPathMakeRef("/" + std::string(PATH_MAX, 'n'), ref), -37);
    EXPECT_FALSE(ref);
}

TEST_F(FSRefTest, KeepsWhatItRefersToWhenAnotherPathFails)
{
    FSRef ref = refTo(file("f"));
    EXPECT_EQ(FSPathMakeRef(at("missing"), ref), -43);
    EXPECT_EQ(pathOf(ref), at("f"));
}

TEST_F(FSRefTest, NamesNothingByDefault)
{
    FSRef nothing;
    std::string path;
    EXPECT_FALSE(nothing);
    EXPECT_EQ(FSRefMakePath(nothing, path), -43);
    EXPECT_EQ(FSResolveAliasFile(nothing, true, nullptr, nullptr), -43);
    EXPECT_EQ(FSCompareFSRefs(nothing, FSRef()), 0);
    EXPECT_NE(FSCompareFSRefs(nothing, refTo(file("f"))), 0);
    EXPECT_NE(FSCompareFSRefs(refTo(at("f")), nothing), 0);
}

TEST_F(FSRefTest, IsTheSameHoweverTheObjectWasReached)
{
    folder("a");
    file("a/f");
    link("short", at("a"));
    EXPECT_EQ(FSCompareFSRefs(refTo(at("a/f")), refTo(at("short/f"))), 0);
}

TEST_F(FSRefTest, TellsObjectsAndVolumesApart)
{
    EXPECT_EQ(FSCompareFSRefs(refTo(file("f")), refTo(file("g"))), -1420);
    EXPECT_EQ(FSCompareFSRefs(refTo(at("f")), refTo("/proc/self")), -1303);
}

TEST_F(FSRefTest, ObjectsHaveAnOrderThatStays)
{
    const FSRef a = refTo(file("a"));
    const FSRef b = refTo(file("b"));
    const int order = FSOrderFSRefs(a, b);
    EXPECT_NE(order, 0);
    EXPECT_EQ(FSOrderFSRefs(b, a), -order);
    EXPECT_EQ(FSOrderFSRefs(a, refTo(at("a"))), 0);
    EXPECT_LT(FSOrderFSRefs(FSRef(), a), 0);
    EXPECT_GT(FSOrderFSRefs(a, FSRef()), 0);
    remove("a");
    remove("b");
    EXPECT_EQ(FSOrderFSRefs(a, b), order);
}

TEST_F(FSRefTest, HardLinksAreOneObjectUnderTheirOwnPaths)
{
    const FSRef first = refTo(file("first"));
    fs::create_hard_link(at("first"), at("second"));
    const FSRef second = refTo(at("second"));
    EXPECT_EQ(FSCompareFSRefs(first, second), 0);
    EXPECT_EQ(pathOf(first), at("first"));
    EXPECT_EQ(pathOf(second), at("second"));
}

TEST_F(FSRefTest, ALinkAtTheEndIsReferredToItself)
{
    file("f");
    const FSRef ref = refTo(link("alias", at("f")));
    EXPECT_EQ(pathOf(ref), at("alias"));
    EXPECT_NE(FSCompareFSRefs(ref, refTo(at("f"))), 0);
}

TEST_F(FSRefTest, ResolvingFollowsAChainOfLinks)
{
    file("f");
    link("one", "f");
    FSRef ref = refTo(link("two", at("one")));
    bool isFolder = true, wasAliased = false;
    EXPECT_EQ(FSResolveAliasFile(ref, true, &isFolder, &wasAliased), 0);
    EXPECT_EQ(pathOf(ref), at("f"));
    EXPECT_FALSE(isFolder);
    EXPECT_TRUE(wasAliased);
}

TEST_F(FSRefTest, ResolvingTakesOneStepOfAChainWhenAskedTo)
{
    file("f");
    link("one", "f");
    FSRef ref = refTo(link("two", "one"));
    EXPECT_EQ(FSResolveAliasFile(ref, false, nullptr, nullptr), 0);
    EXPECT_EQ(pathOf(ref), at("one"));
}

TEST_F(FSRefTest, ResolvingLeavesAnythingElseAsItIs)
{
    FSRef ref = refTo(folder("a"));
    bool isFolder = false, wasAliased = true;
    EXPECT_EQ(FSResolveAliasFile(ref, true, &isFolder, &wasAliased), 0);
    EXPECT_EQ(pathOf(ref), at("a"));
    EXPECT_TRUE(isFolder);
    EXPECT_FALSE(wasAliased);
}

TEST_F(FSRefTest, ResolvingFailsForDanglingLinksAndLoops)
{
    FSRef dangling = refTo(link("dangling", "missing"));
    EXPECT_EQ(FSResolveAliasFile(dangling, true, nullptr, nullptr), -43);
    EXPECT_EQ(FSResolveAliasFile(dangling, false, nullptr, nullptr), -43);
    EXPECT_EQ(pathOf(dangling), at("dangling"));
    link("a", "b");
    FSRef loop = refTo(link("b", "a"));
    EXPECT_EQ(FSResolveAliasFile(loop, true, nullptr, nullptr), -1043);
    EXPECT_EQ(pathOf(loop), at("b"));
}

TEST_F(FSRefTest, ResolvingFindsALinkThatWasMoved)
{
    folder("a");
    file("f");
    FSRef ref = refTo(link("alias", at("f")));
    rename("alias", "a/alias");
    EXPECT_EQ(FSResolveAliasFile(ref, true, nullptr, nullptr), 0);
    EXPECT_EQ(pathOf(ref), at("f"));
}

TEST_F(FSRefTest, ResolvingFailsForALinkThatIsGone)
{
    file("f");
    FSRef ref = refTo(link("alias", at("f")));
    remove("alias");
    EXPECT_EQ(FSResolveAliasFile(ref, true, nullptr, nullptr), -43);
}

TEST_F(FSRefTest, CopiesAndMovesShareOneObject)
{
    FSRef ref = refTo(file("f"));
    FSRef copy = ref;
    FSRef moved = std::move(ref);
    rename("f", "g");
    EXPECT_EQ(pathOf(copy), at("g"));
    EXPECT_EQ(pathOf(moved), at("g"));
    EXPECT_EQ(FSCompareFSRefs(copy, moved), 0);
    const FSRef& same = copy;
    copy = same;
    EXPECT_EQ(pathOf(copy), at("g"));
    copy = FSRef();
    EXPECT_FALSE(copy);
}

TEST_F(FSRefTest, LeavesNoDescriptorBehind)
{
    FSReleaseDescriptors();
    const std::size_t before = openDescriptors();
    {
        const FSRef ref = refTo(file("f"));
        EXPECT_EQ(openDescriptors(), before + 1);
        FSRef resolved = refTo(link("alias", at("f")));
        FSResolveAliasFile(resolved, true, nullptr, nullptr);
    }
    EXPECT_EQ(openDescriptors(), before);
}

}
