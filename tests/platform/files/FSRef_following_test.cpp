// What users and programs do to files, on each kind of file system, with and without a descriptor that
// follows.
#include "LUMPlatform/FSRef.h"

#include "tests/platform/files/faulty_node_system.h"
#include "tests/platform/files/mounted_file_system.h"
#include "tests/platform/files/reference_fixture.h"

#include <cerrno>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

enum class Held { Yes, No };

class FSRefFollowingTest : public ReferenceTest,
                           public testing::WithParamInterface<std::tuple<const char*, Held>> {
protected:
    void SetUp() override
    {
        mSystem = MountedFileSystem::find(std::get<0>(GetParam()));
        if (!mSystem)
            GTEST_SKIP() << "no " << std::get<0>(GetParam()) << " here";
        useFolderIn(mSystem->top());
    }
    void TearDown() override
    {
        FSReleaseDescriptors();
        std::error_code error;
        fs::remove_all(mFolder, error);
        mSystem.reset();
    }

    /// A reference to what was just made, with or without a descriptor.
    FSRef made(const std::string& path) const
    {
        const FSRef ref = refTo(path);
        return std::get<1>(GetParam()) == Held::Yes ? ref : letGo(ref);
    }

    /// Moves a folder, and leaves a link to its new place in the old one.
    void moveAndLink(const std::string& from, const std::string& to) const
    {
        rename(from, to);
        fs::create_directory_symlink(at(to), at(from));
    }

    std::unique_ptr<MountedFileSystem> mSystem;
};

TEST_P(FSRefFollowingTest, ARename)
{
    const FSRef ref = made(file("f"));
    rename("f", "renamed");
    EXPECT_EQ(pathOf(ref), at("renamed"));
}

TEST_P(FSRefFollowingTest, AMoveToAnotherFolder)
{
    folder("a/b");
    folder("c/d/e");
    const FSRef ref = made(file("a/b/f"));
    rename("a/b/f", "c/d/e/moved");
    EXPECT_EQ(pathOf(ref), at("c/d/e/moved"));
}

TEST_P(FSRefFollowingTest, ARenameOfAnyFolderAbove)
{
    folder("a/b/c");
    const FSRef ref = made(file("a/b/c/f"));
    rename("a/b", "a/renamed");
    rename("a", "moved");
    EXPECT_EQ(pathOf(ref), at("moved/renamed/c/f"));
}

TEST_P(FSRefFollowingTest, OneStepAfterAnother)
{
    folder("a");
    const FSRef ref = made(file("f"));
    for (const std::string to : { "a/1", "2", "a/3" }) {
        rename(fs::path(pathOf(ref)).lexically_relative(mFolder).string(), to);
        EXPECT_EQ(pathOf(ref), at(to));
    }
}

TEST_P(FSRefFollowingTest, AFolderThatIsMoved)
{
    folder("a");
    const FSRef ref = made(folder("b"));
    rename("b", "a/b");
    EXPECT_EQ(pathOf(ref), at("a/b"));
}

TEST_P(FSRefFollowingTest, AFileWithoutAnyPermission)
{
    const FSRef ref = made(file("f"));
    fs::permissions(at("f"), fs::perms::none);
    rename("f", "g");
    EXPECT_EQ(pathOf(ref), at("g"));
}

TEST_P(FSRefFollowingTest, AnotherFileAtTheOldPathIsNotTakenForIt)
{
    const FSRef ref = made(file("f"));
    rename("f", "moved");
    file("f", "another");
    EXPECT_EQ(pathOf(ref), at("moved"));
}

TEST_P(FSRefFollowingTest, ARemovedFileIsGone)
{
    const FSRef ref = made(file("f"));
    remove("f");
    EXPECT_EQ(pathOf(ref), "(-43)");
    EXPECT_EQ(pathOf(ref), "(-43)");
}

TEST_P(FSRefFollowingTest, ARemovedFolderIsGone)
{
    const FSRef ref = made(folder("a"));
    remove("a");
    EXPECT_EQ(pathOf(ref), "(-43)");
}

TEST_P(FSRefFollowingTest, AnAtomicSaveMakesAnotherObject)
{
    const FSRef ref = made(file("f"));
    file("new", "newer");
    rename("new", "f");
    EXPECT_EQ(pathOf(ref), "(-43)");
}

TEST_P(FSRefFollowingTest, AFileMadeAtOnceAfterARemovalIsAnotherObject)
{
    const FSRef ref = made(file("f"));
    remove("f");
    file("f"); // often with the same inode number
    EXPECT_EQ(pathOf(ref), "(-43)");
    EXPECT_NE(FSCompareFSRefs(ref, refTo(at("f"))), 0);
}

TEST_P(FSRefFollowingTest, AnotherHardLinkIsFoundWhenTheOwnIsRemoved)
{
    folder("a");
    const FSRef ref = made(file("f"));
    fs::create_hard_link(at("f"), at("a/second"));
    remove("f");
    EXPECT_EQ(pathOf(ref), at("a/second"));
}

TEST_P(FSRefFollowingTest, AFileThatIsReallyCalledDeletedExists)
{
    const FSRef ref = made(file("f (deleted)"));
    EXPECT_EQ(pathOf(ref), at("f (deleted)"));
}

TEST_P(FSRefFollowingTest, AFileCalledLikeTheRemovedOneIsNotTakenForIt)
{
    file("f (deleted)", "another");
    const FSRef ref = made(file("f"));
    remove("f");
    EXPECT_EQ(pathOf(ref), "(-43)");
}

TEST_P(FSRefFollowingTest, ALinkIsFollowedAsTheLinkItIs)
{
    folder("a");
    fs::create_symlink("nowhere", at("alias"));
    const FSRef ref = made(at("alias"));
    rename("alias", "a/renamed");
    EXPECT_EQ(pathOf(ref), at("a/renamed"));
}

TEST_P(FSRefFollowingTest, ASpecialFileIsFollowed)
{
    ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
    const FSRef ref = made(at("pipe"));
    rename("pipe", "renamed");
    EXPECT_EQ(pathOf(ref), at("renamed"));
}

TEST_P(FSRefFollowingTest, AFileComesBackToItsOldPlace)
{
    folder("a");
    const FSRef ref = made(file("f"));
    rename("f", "a/f");
    rename("a/f", "f");
    EXPECT_EQ(pathOf(ref), at("f"));
}

TEST_P(FSRefFollowingTest, AFolderAboveThatMovesAndLeavesALinkInItsPlace)
{
    folder("a/b/c");
    folder("d");
    const FSRef ref = made(file("a/b/c/f"));
    moveAndLink("a/b", "d/b");
    EXPECT_EQ(pathOf(ref), at("d/b/c/f"));
    EXPECT_EQ(pathOf(ref), at("d/b/c/f"));
    EXPECT_EQ(pathOf(letGo(ref)), at("d/b/c/f"));
}

TEST_P(FSRefFollowingTest, ALinkItselfBelowAFolderThatLeavesALinkInItsPlace)
{
    folder("a");
    fs::create_symlink("nowhere", at("a/alias"));
    const FSRef ref = made(at("a/alias"));
    moveAndLink("a", "b");
    EXPECT_EQ(pathOf(ref), at("b/alias"));
}

TEST_P(FSRefFollowingTest, AnotherHardLinkBehindALinkLeftInThePlaceOfAFolder)
{
    folder("a/b");
    const FSRef ref = made(file("a/b/f"));
    fs::create_hard_link(at("a/b/f"), at("a/b/second"));
    moveAndLink("a", "c");
    remove("c/b/f");
    EXPECT_EQ(pathOf(ref), at("c/b/second"));
}

TEST_P(FSRefFollowingTest, WritingMakesNoOtherObject)
{
    const FSRef ref = made(file("f"));
    file("f", "longer than before");
    rename("f", "g");
    EXPECT_EQ(pathOf(ref), at("g"));
}

/// Moves a file on each time somebody has just been told where it is.
class MovingSystem final : public FaultyNodeSystem {
public:
    explicit MovingSystem(std::vector<std::string> places) : mPlaces(std::move(places)) { }

    int pathOf(int descriptor, std::string& path) override
    {
        const int problem = FaultyNodeSystem::pathOf(descriptor, path);
        if (mPlaces.size() > 1) {
            fs::rename(mPlaces[0], mPlaces[1]);
            mPlaces.erase(mPlaces.begin());
        }
        return problem;
    }

private:
    std::vector<std::string> mPlaces;
};

class FSRefMeanwhileTest : public ReferenceTest { };

TEST_F(FSRefMeanwhileTest, AFileThatIsHeldIsNotMissedWhileItMoves)
{
    const FSRef ref = refTo(file("f"));
    rename("f", "1");
    MovingSystem system({ at("1"), at("2"), at("3") });
    system.fail(FaultyNodeSystem::OpenFolder, EIO); // no search
    EXPECT_EQ(pathOf(ref), at("3"));
}

/// What was mounted for the test alone can go before its end.
class FSRefUnmountingTest : public FSRefFollowingTest { };

TEST_P(FSRefUnmountingTest, AVolumeCanBeTakenAwayAfterDescriptorsWereReleased)
{
    const FSRef ref = made(file("f"));
    FSReleaseDescriptors();
    ASSERT_TRUE(mSystem->unmount());
    EXPECT_EQ(pathOf(ref), "(-43)");
}

std::string nameOf(const testing::TestParamInfo<std::tuple<const char*, Held>>& info)
{
    return std::get<0>(info.param) + std::string(std::get<1>(info.param) == Held::Yes ? "_held" : "_let_go");
}

INSTANTIATE_TEST_SUITE_P(FileSystems, FSRefFollowingTest,
    testing::Combine(testing::Values("temporary", "memory", "overlay", "ext4", "xfs", "btrfs"),
        testing::Values(Held::Yes, Held::No)),
    nameOf);
INSTANTIATE_TEST_SUITE_P(FileSystems, FSRefUnmountingTest,
    testing::Combine(
        testing::Values("overlay", "ext4", "xfs", "btrfs"), testing::Values(Held::Yes, Held::No)),
    nameOf);

}
