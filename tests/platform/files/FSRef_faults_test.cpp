// Every system call under a reference fails once, in every way.
#include "LUMPlatform/FSAlias.h"
#include "LUMPlatform/FSCatalog.h"
#include "LUMPlatform/FSIterator.h"

#include "LUMPlatform/NSData.h"
#include "tests/platform/files/faulty_node_system.h"
#include "tests/platform/files/reference_fixture.h"

#include <cerrno>
#include <cstring>

namespace fs = std::filesystem;

namespace {

class FSRefFaultsTest : public ReferenceTest, public testing::WithParamInterface<int> {
protected:
    ~FSRefFaultsTest() override { FSReleaseDescriptors(); }

    /// A reference, or none when there was a fault.
    static FSRef refToMaybe(const std::string& path)
    {
        FSRef ref;
        (void)FSPathMakeRef(path, ref);
        return ref;
    }
    /// Repeats `act` with one more call going well each time, until none fails. `act` gets a fresh folder.
    template<typename Act> void forEachCall(unsigned calls, const Act& act)
    {
        FSReleaseDescriptors();
        for (int at = 0; at < 200; ++at) {
            FaultyNodeSystem system;
            system.fail(calls, GetParam(), at, false);
            act(at);
            FSReleaseDescriptors();
            if (!system.hasFailed())
                return;
            system.heal();
            EXPECT_EQ(system.opened(), 0) << "left a descriptor open after a fault in call " << at;
        }
        FAIL() << "never came to an end";
    }
};

TEST_P(FSRefFaultsTest, MakingGivesAStatusOrTheReference)
{
    const std::string path = file("f");
    forEachCall(FaultyNodeSystem::All, [&](int) {
        FSRef ref;
        const OSStatus status = FSPathMakeRef(path, ref);
        EXPECT_EQ(status == 0, static_cast<bool>(ref));
        EXPECT_EQ(FSCompareFSRefs(ref, ref), 0);
    });
}

TEST_P(FSRefFaultsTest, APathIsTheObjectsOrNone)
{
    folder("a");
    const FSRef ref = refTo(file("f"));
    forEachCall(FaultyNodeSystem::All, [&](int at) {
        const std::string name = "f" + std::to_string(at);
        rename(fs::exists(this->at("f")) ? "f" : "f" + std::to_string(at - 1), name);
        std::string path;
        EXPECT_TRUE(FSRefMakePath(ref, path) != 0 || path == this->at(name)) << path;
    });
    EXPECT_EQ(FSCompareFSRefs(ref, refTo(pathOf(ref))), 0);
}

TEST_P(FSRefFaultsTest, ResolvingLeavesTheReferenceOrReplacesIt)
{
    file("f");
    fs::create_symlink("f", at("alias"));
    forEachCall(FaultyNodeSystem::All, [&](int) {
        FSRef ref;
        if (FSPathMakeRef(at("alias"), ref) != 0)
            return;
        const FSRef link = ref;
        const bool isResolved = FSResolveAliasFile(ref, true, nullptr, nullptr) == 0;
        EXPECT_EQ(FSCompareFSRefs(ref, link) != 0, isResolved);
    });
}

TEST_P(FSRefFaultsTest, AListingGivesAllItHadBeforeTheFault)
{
    folder("a");
    for (const std::string name : { "1", "2", "3" })
        file("a/" + name);
    const FSRef ref = refTo(at("a"));
    forEachCall(FaultyNodeSystem::All, [&](int) {
        FSIterator iterator;
        if (FSOpenIterator(ref, kFSIterateFlat, iterator) != 0)
            return;
        FSRef item;
        int count = 0;
        OSStatus status = 0;
        while ((status = FSGetCatalogInfoBulk(iterator, item)) == 0)
            ++count;
        // An entry that is not there any more is no fault.
        EXPECT_TRUE(status != kFSNoMoreItems || count == 3 || GetParam() == ENOENT);
    });
}

TEST_P(FSRefFaultsTest, ARenameIsDoneOrNot)
{
    file("f");
    forEachCall(FaultyNodeSystem::All, [&](int) {
        FSRef ref;
        if (FSPathMakeRef(at("f"), ref) != 0)
            return;
        const bool isRenamed = FSRenameUnicode(ref, u"g", &ref) == 0;
        EXPECT_EQ(fs::exists(at("g")), isRenamed);
        EXPECT_EQ(fs::exists(at("f")), !isRenamed);
        if (isRenamed)
            rename("g", "f");
    });
}

TEST_P(FSRefFaultsTest, AChildIsMadeOrNot)
{
    const FSRef above = refTo(mFolder.string());
    forEachCall(FaultyNodeSystem::All, [&](int) {
        for (const std::string name : { "f", "a" }) {
            FSRef made;
            const OSStatus status = name == "f" ? FSCreateFileUnicode(above, u"f", &made)
                                                : FSCreateDirectoryUnicode(above, u"a", &made);
            EXPECT_EQ(fs::exists(at(name)), status == 0) << name;
            EXPECT_EQ(static_cast<bool>(made), status == 0) << name;
            remove(name);
        }
    });
}

TEST_P(FSRefFaultsTest, ARecordLeadsToItsObjectOrNowhere)
{
    folder("a");
    file("f");
    NSRef<NSData> whole;
    ASSERT_EQ(FSNewAlias(refTo(at("f")), whole), 0);
    rename("f", "a/g");
    forEachCall(FaultyNodeSystem::All, [&](int) {
        NSRef<NSData> record;
        const FSRef object = refToMaybe(at("a/g"));
        const bool isDescribed = FSNewAlias(object, record) == 0;
        EXPECT_EQ(isDescribed, record != nullptr);
        FSRef found;
        if (FSResolveAlias(record ? record : whole, found) == 0) {
            std::string path;
            EXPECT_TRUE(FSRefMakePath(found, path) != 0 || path == at("a/g")) << path;
        }
    });
}

TEST_P(FSRefFaultsTest, WhatIsInTheTrashIsToldOrNot)
{
    const FSRef ref = refTo(file("f"));
    forEachCall(FaultyNodeSystem::All, [&](int) {
        FSCatalogInfo info;
        FSRef parent;
        std::vector<FSRef> folders;
        if (FSGetCatalogInfo(ref, kFSCatInfoVolume, &info, nullptr, &parent) == 0)
            (void)FSFindFolder(info.volume, kTrashFolderType, folders);
        for (const FSRef& folder : folders)
            EXPECT_NE(FSCompareFSRefs(folder, parent), 0);
    });
}

TEST_P(FSRefFaultsTest, FinderInformationIsStoredOrNot)
{
    FSCatalogInfo info;
    info.finderInfo.fileType = 0x41494646;
    const FSRef ref = refTo(file("f"));
    forEachCall(FaultyNodeSystem::All, [&](int) {
        const bool isStored = FSSetCatalogInfo(ref, kFSCatInfoFinderInfo, info) == 0;
        FSCatalogInfo read;
        const bool isRead = FSGetCatalogInfo(ref, kFSCatInfoFinderInfo, &read) == 0;
        EXPECT_TRUE(!isStored || !isRead || read.finderInfo == info.finderInfo);
    });
}

INSTANTIATE_TEST_SUITE_P(Faults, FSRefFaultsTest,
    testing::Values(
        ENOSPC, EIO, EROFS, EACCES, EXDEV, EMFILE, ENFILE, ENOENT, ENOSYS, EINVAL, ENOMEM, ESTALE),
    [](const auto& fault) { return std::string(strerrorname_np(fault.param)); });

class FSRefStatusTest : public ReferenceTest { };

TEST_F(FSRefStatusTest, TellsWhatStoodInTheWay)
{
    const std::string path = file("f");
    FaultyNodeSystem system;
    FSRef ref;
    system.fail(FaultyNodeSystem::Open, EACCES);
    EXPECT_EQ(FSPathMakeRef(path, ref), -5000);
    system.fail(FaultyNodeSystem::Open, EIO);
    EXPECT_EQ(FSPathMakeRef(path, ref), -36);
    system.fail(FaultyNodeSystem::Open | FaultyNodeSystem::Attributes, EMFILE);
    EXPECT_EQ(FSPathMakeRef(path, ref), -42);
    system.fail(FaultyNodeSystem::List, EIO);
    FSIterator iterator;
    EXPECT_EQ(FSOpenIterator(refTo(mFolder.string()), kFSIterateFlat, iterator), 0);
    EXPECT_EQ(FSGetCatalogInfoBulk(iterator, ref), -36);
}

TEST_F(FSRefStatusTest, NoNameIsNotTheCurrentFolder)
{
    auto& system = platform::NodeSystem::running();
    platform::FileAttributes attributes;
    EXPECT_EQ(system.attributes(platform::NodeSystem::kNoFolder, "", attributes), -ENOENT);
    platform::FileHandle handle;
    EXPECT_EQ(system.handle(
                  platform::NodeSystem::kNoFolder, "", platform::NodeSystem::HandlePurpose::Telling, handle),
        -ENOENT);
}

TEST_F(FSRefStatusTest, DoesWithoutTheCallThatToldItOfLinks)
{
    const std::string path = file("f");
    FaultyNodeSystem system;
    for (const int refused : { ENOSYS, EPERM }) {
        system.fail(FaultyNodeSystem::OpenReal, refused);
        EXPECT_EQ(pathOf(refTo(path)), path);
    }
}

/// References to a file of which one is held, and whose folder has left a link in its place.
class FSRefLeftLinkTest : public ReferenceTest {
protected:
    FSRefLeftLinkTest()
    {
        folder("a");
        file("a/f");
        mLetGo = letGo(refTo(at("a/f")));
        mHeld = refTo(at("a/f"));
        rename("a", "b");
        fs::create_directory_symlink("b", at("a"));
    }

    void expectThePathWithout(unsigned calls, int error)
    {
        FaultyNodeSystem system;
        system.fail(calls, error);
        EXPECT_EQ(pathOf(mHeld), at("b/f"));
        EXPECT_EQ(pathOf(mLetGo), at("b/f"));
    }

    FSRef mHeld;
    FSRef mLetGo;
};

TEST_F(FSRefLeftLinkTest, IsPassedByWithoutTheCallThatTellsOfLinks)
{
    expectThePathWithout(FaultyNodeSystem::OpenReal, ENOSYS);
}

TEST_F(FSRefLeftLinkTest, IsPassedByWhereThatCallIsForbidden)
{
    expectThePathWithout(FaultyNodeSystem::OpenReal, EPERM);
}

TEST_F(FSRefLeftLinkTest, IsPassedByWithoutTheSystemTellingPaths)
{
    expectThePathWithout(FaultyNodeSystem::PathOf, ENOENT);
}

TEST_F(FSRefLeftLinkTest, IsPassedByWithoutBoth)
{
    expectThePathWithout(FaultyNodeSystem::OpenReal | FaultyNodeSystem::PathOf, ENOSYS);
}

TEST_F(FSRefLeftLinkTest, IsPassedByWithoutAFreeDescriptor)
{
    expectThePathWithout(FaultyNodeSystem::Open, EMFILE);
}

TEST_F(FSRefStatusTest, DoesWithoutHandles)
{
    const std::string path = file("f");
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::Handle, EOPNOTSUPP);
    const FSRef ref = refTo(path);
    const FSRef letGo = ReferenceTest::letGo(refTo(path));
    rename("f", "g");
    EXPECT_EQ(pathOf(ref), at("g"));
    EXPECT_EQ(pathOf(letGo), at("g"));
    EXPECT_EQ(FSCompareFSRefs(ref, letGo), 0);
}

TEST_F(FSRefStatusTest, DoesWithoutTheSystemTellingPaths)
{
    const std::string path = file("f");
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::PathOf, ENOENT); // no /proc
    const FSRef ref = refTo(path);
    EXPECT_EQ(pathOf(ref), path);
    rename("f", "g");
    EXPECT_EQ(pathOf(ref), at("g"));
}

}
