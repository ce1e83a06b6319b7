#include "LUMPlatform/FSAlias.h"

#include "LUMPlatform/NSData.h"
#include "platform/files/alias_resolution.h"
#include "tests/platform/files/faulty_node_system.h"
#include "tests/platform/files/mounted_file_system.h"
#include "tests/platform/files/reference_fixture.h"

#include <cerrno>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class FSAliasTest : public ReferenceTest, public testing::WithParamInterface<const char*> {
protected:
    ~FSAliasTest() override { FSReleaseDescriptors(); }

    static NSRef<NSData> aliasOf(const std::string& path)
    {
        NSRef<NSData> record;
        EXPECT_EQ(FSNewAlias(refTo(path), record), 0);
        FSReleaseDescriptors();
        return record;
    }
    /// Where the object of a record is, or the status in brackets.
    static std::string resolved(const NSRef<NSData>& record)
    {
        FSRef target;
        const OSStatus status = FSResolveAlias(record, target);
        return status == 0 ? pathOf(target) : "(" + std::to_string(status) + ")";
    }
};

/// On each file system, with and without the right to open by handle.
class FSAliasFollowingTest : public FSAliasTest {
protected:
    void SetUp() override
    {
        mSystem = MountedFileSystem::find(GetParam());
        if (!mSystem)
            GTEST_SKIP() << "no " << GetParam() << " here";
        useFolderIn(mSystem->top());
    }
    void TearDown() override
    {
        FSReleaseDescriptors();
        std::error_code error;
        fs::remove_all(mFolder, error);
        mSystem.reset();
    }
    static void expectResolved(const NSRef<NSData>& record, const std::string& path)
    {
        EXPECT_EQ(resolved(record), path);
        FSReleaseDescriptors();
        FaultyNodeSystem system;
        system.fail(FaultyNodeSystem::Handle, EPERM);
        EXPECT_EQ(resolved(record), path) << "by searching alone";
        FSReleaseDescriptors();
    }

    std::unique_ptr<MountedFileSystem> mSystem;
};

TEST_P(FSAliasFollowingTest, FindsWhatWasNotMoved)
{
    expectResolved(aliasOf(file("f")), at("f"));
    expectResolved(aliasOf(folder("a")), at("a"));
}

TEST_P(FSAliasFollowingTest, FindsWhatWasRenamed)
{
    const auto record = aliasOf(file("f"));
    rename("f", "g");
    file("f", "another");
    expectResolved(record, at("g"));
}

TEST_P(FSAliasFollowingTest, FindsWhatWasMoved)
{
    folder("a/b");
    folder("c/d/e");
    const auto record = aliasOf(file("a/b/f"));
    rename("a/b/f", "c/d/e/g");
    expectResolved(record, at("c/d/e/g"));
}

TEST_P(FSAliasFollowingTest, FindsWhatIsBelowARenamedFolder)
{
    folder("a/b/c");
    for (int i = 0; i < 20; ++i)
        folder("other" + std::to_string(i) + "/x");
    const auto record = aliasOf(file("a/b/c/f"));
    rename("a", "renamed");
    expectResolved(record, at("renamed/b/c/f"));
}

TEST_P(FSAliasFollowingTest, FindsAFolderThatWasMoved)
{
    folder("a");
    const auto record = aliasOf(folder("b"));
    rename("b", "a/c");
    expectResolved(record, at("a/c"));
}

TEST_P(FSAliasFollowingTest, TakesWhatHasReplacedTheObject)
{
    const auto record = aliasOf(file("f"));
    file("new", "saved anew");
    rename("new", "f");
    expectResolved(record, at("f"));
}

TEST_P(FSAliasFollowingTest, DoesNotTakeAnotherKindOfObjectForIt)
{
    const auto record = aliasOf(file("f"));
    remove("f");
    folder("f");
    expectResolved(record, "(-43)");
}

TEST_P(FSAliasFollowingTest, DoesNotFindWhatWasRemoved)
{
    const auto record = aliasOf(file("f"));
    remove("f");
    expectResolved(record, "(-43)");
}

INSTANTIATE_TEST_SUITE_P(FileSystems, FSAliasFollowingTest,
    testing::Values("temporary", "memory", "overlay", "ext4", "xfs", "btrfs"),
    [](const auto& type) { return std::string(type.param); });

TEST_F(FSAliasTest, RefersToALinkItself)
{
    file("f");
    fs::create_symlink("f", at("alias"));
    const auto record = aliasOf(at("alias"));
    rename("alias", "moved");
    EXPECT_EQ(resolved(record), at("moved"));
}

TEST_F(FSAliasTest, IsUnderstoodByAnotherProcess)
{
    const auto record = aliasOf(file("f"));
    rename("f", "g");
    const pid_t child = fork();
    if (child == 0)
        _exit(resolved(record) == at("g") ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(FSAliasTest, IsNotMadeOfWhatIsGone)
{
    NSRef<NSData> record;
    EXPECT_EQ(FSNewAlias(FSRef(), record), -43);
    const FSRef gone = refTo(file("f"));
    remove("f");
    EXPECT_EQ(FSNewAlias(gone, record), -43);
    EXPECT_FALSE(record);
}

TEST_F(FSAliasTest, WhatIsBelowAFileOrALoopNowIsNotThere)
{
    folder("a");
    const auto record = aliasOf(file("a/f"));
    remove("a");
    file("a");
    EXPECT_EQ(resolved(record), "(-43)");
    remove("a");
    fs::create_symlink("a", at("a"));
    EXPECT_EQ(resolved(record), "(-43)");
}

TEST_F(FSAliasTest, BytesThatAreNoRecordGiveAStatus)
{
    FSRef target;
    EXPECT_EQ(FSResolveAlias(nullptr, target), -50);
    EXPECT_EQ(FSResolveAlias(NSData::data(), target), -50);
    EXPECT_EQ(FSResolveAlias(NSData::dataWithBytes("FSal", 4), target), -50);
    const auto record = aliasOf(file("f"));
    for (NSUInteger length = 0; length < record->length(); ++length)
        EXPECT_EQ(FSResolveAlias(record->subdataWithRange({ 0, length }), target), -50);
    EXPECT_FALSE(target);
}

TEST_F(FSAliasTest, AVolumeThatGotAnotherNumberIsToldByHandleAndBirth)
{
    const FSRef ref = refTo(file("f"));
    platform::AliasRecord record;
    ASSERT_EQ(platform::describeAlias(*ref.node(), record), 0);
    record.identity.volume ^= 1;
    platform::NodeRef found;
    if (!record.identity.handle)
        GTEST_SKIP() << "no handles here";
    rename("f", "g");
    EXPECT_EQ(platform::resolveAlias(record, platform::AliasTarget::Replacement, found), 0);
    EXPECT_EQ(pathOf(FSRef(found)), at("g"));
}

TEST_F(FSAliasTest, ANumberAloneIsNoProof)
{
    const FSRef ref = refTo(file("f"));
    platform::AliasRecord record;
    ASSERT_EQ(platform::describeAlias(*ref.node(), record), 0);
    record.identity.handle = record.finding = record.folder = {};
    record.identity.born = platform::FileAttributes::kUnknownTime;
    platform::NodeRef found;
    rename("f", "g");
    EXPECT_EQ(platform::resolveAlias(record, platform::AliasTarget::Replacement, found), 0)
        << "same size and age";
    ++record.size;
    EXPECT_EQ(platform::resolveAlias(record, platform::AliasTarget::Replacement, found), -ENOENT);
}

}
