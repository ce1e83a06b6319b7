// File systems in layers, as containers have: what is first written to is copied up to another layer.
#include "LUMPlatform/FSAlias.h"
#include "LUMPlatform/FSIterator.h"

#include "LUMPlatform/NSData.h"
#include "platform/files/reference_node.h"
#include "tests/platform/files/mounted_file_system.h"
#include "tests/platform/files/reference_fixture.h"

#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class FSRefLayersTest : public ReferenceTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override
    {
        mSystem = MountedFileSystem::find(GetParam());
        if (!mSystem)
            GTEST_SKIP() << "no " << GetParam() << " here";
        mBelow = mSystem->top() / "below";
    }
    void TearDown() override
    {
        FSReleaseDescriptors();
        mSystem.reset();
    }

    std::string below(const std::string& name) const { return (mBelow / name).string(); }
    /// Without handles, as on Linux before 6.5, only what is held is told from another after a change.
    bool haveHandles() const
    {
        const FSRef ref = refTo(below("f"));
        return static_cast<bool>(ref.node()->identity().handle);
    }
    void copyUp(const std::string& name) const { std::ofstream(below(name), std::ios::app) << "more"; }

    std::unique_ptr<MountedFileSystem> mSystem;
    fs::path mBelow;
};

TEST_P(FSRefLayersTest, AFileIsTheSameAfterItsFirstChange)
{
    const FSRef ref = refTo(below("f"));
    copyUp("f");
    EXPECT_EQ(pathOf(ref), below("f"));
    EXPECT_EQ(FSCompareFSRefs(ref, refTo(below("f"))), 0);
    fs::rename(below("f"), below("g"));
    EXPECT_EQ(pathOf(ref), below("g"));
    FSReleaseDescriptors();
    EXPECT_EQ(pathOf(ref), below("g"));
}

TEST_P(FSRefLayersTest, AFileThatNothingHoldsIsFoundAfterItsFirstChange)
{
    if (!haveHandles())
        GTEST_SKIP() << "no handles here";
    const FSRef ref = letGo(refTo(below("f")));
    copyUp("f");
    EXPECT_EQ(pathOf(ref), below("f"));
    FSReleaseDescriptors();
    fs::rename(below("f"), below("folder/g"));
    EXPECT_EQ(pathOf(ref), below("folder/g"));
}

TEST_P(FSRefLayersTest, AFolderIsTheSameAfterItsFirstChange)
{
    if (!haveHandles())
        GTEST_SKIP() << "no handles here";
    const FSRef ref = letGo(refTo(below("folder")));
    fs::permissions(below("folder"), fs::perms::owner_all);
    EXPECT_EQ(pathOf(ref), below("folder"));
    EXPECT_EQ(FSCompareFSRefs(ref, refTo(below("folder"))), 0);
}

TEST_P(FSRefLayersTest, AnEntryOfAListingIsTheSameAfterItsFirstChange)
{
    if (!haveHandles())
        GTEST_SKIP() << "no handles here";
    FSIterator iterator;
    ASSERT_EQ(FSOpenIterator(refTo(below("folder")), kFSIterateFlat, iterator), 0);
    FSRef entry;
    ASSERT_EQ(FSGetCatalogInfoBulk(iterator, entry), 0);
    copyUp("folder/f");
    EXPECT_EQ(pathOf(entry), below("folder/f"));
    EXPECT_EQ(FSCompareFSRefs(entry, refTo(below("folder/f"))), 0);
}

TEST_P(FSRefLayersTest, ARecordLeadsToAFileAfterItsFirstChange)
{
    if (!haveHandles())
        GTEST_SKIP() << "no handles here";
    NSRef<NSData> record;
    ASSERT_EQ(FSNewAlias(refTo(below("f")), record), 0);
    copyUp("f");
    fs::rename(below("f"), below("folder/g"));
    FSRef found;
    EXPECT_EQ(FSResolveAlias(record, found), 0);
    EXPECT_EQ(pathOf(found), below("folder/g"));
}

TEST_P(FSRefLayersTest, AnotherFileOfTheNameIsAnother)
{
    const FSRef ref = letGo(refTo(below("f")));
    fs::remove(below("f"));
    std::ofstream(below("f")) << "another";
    EXPECT_EQ(pathOf(ref), "(-43)");
    EXPECT_NE(FSCompareFSRefs(ref, refTo(below("f"))), 0);
}

/// Closes what nobody else has opened, as a program does that wants to start another.
class FSRefClosedTest : public FSRefLayersTest {
protected:
    /// A reference to a file that is gone, whose descriptor is closed and whose number another file has.
    FSRef refToReplaced() const
    {
        const std::string path = below("new");
        std::ofstream(path) << "first";
        const std::set<int> before = descriptors();
        const FSRef ref = refTo(path);
        for (const int descriptor : descriptors())
            if (!before.contains(descriptor))
                close(descriptor);
        for (int attempt = 0; attempt < 100; ++attempt) {
            fs::remove(path);
            std::ofstream(path) << "another";
            struct stat made { };
            if (stat(path.c_str(), &made) == 0 && made.st_ino == ref.node()->inode())
                return ref;
        }
        return {};
    }
    static std::set<int> descriptors()
    {
        std::set<int> all;
        for (int descriptor = 3; descriptor < 1000; ++descriptor)
            if (fcntl(descriptor, F_GETFD) != -1)
                all.insert(descriptor);
        return all;
    }
};

TEST_P(FSRefClosedTest, AnotherFileUnderTheNumberIsNotTakenForIt)
{
    if (!haveHandles())
        GTEST_SKIP() << "no handles here";
    const FSRef ref = refToReplaced();
    if (!ref)
        GTEST_SKIP() << "numbers are not given out again here";
    EXPECT_EQ(pathOf(ref), "(-43)");
    EXPECT_NE(FSCompareFSRefs(ref, refTo(below("new"))), 0);
}

TEST_P(FSRefClosedTest, AnotherFileUnderTheNumberAndTheDescriptorIsNotTakenForIt)
{
    if (!haveHandles())
        GTEST_SKIP() << "no handles here";
    FSRef ref = refToReplaced();
    if (!ref)
        GTEST_SKIP() << "numbers are not given out again here";
    const FSRef other = refTo(below("new")); // by the descriptor that was free
    EXPECT_EQ(pathOf(ref), "(-43)");
    const std::size_t open = openDescriptors();
    ref = {};
    EXPECT_EQ(openDescriptors(), open); // the other's is not closed
    EXPECT_EQ(pathOf(other), below("new"));
}

TEST_P(FSRefLayersTest, LeavesNoDescriptorBehind)
{
    FSReleaseDescriptors();
    const std::size_t before = openDescriptors();
    {
        const FSRef ref = refTo(below("f"));
        copyUp("f");
        EXPECT_EQ(pathOf(ref), below("f"));
    }
    EXPECT_EQ(openDescriptors(), before);
}

INSTANTIATE_TEST_SUITE_P(FileSystems, FSRefLayersTest,
    testing::Values("overlay", "overlay_on_ext4", "overlay_on_btrfs"),
    [](const auto& type) { return std::string(type.param); });
// Of these only ext4 gives numbers out again at once.
INSTANTIATE_TEST_SUITE_P(FileSystems, FSRefClosedTest, testing::Values("overlay_on_ext4"),
    [](const auto& type) { return std::string(type.param); });

}
