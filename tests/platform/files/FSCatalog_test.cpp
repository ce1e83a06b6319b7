#include "LUMPlatform/FSCatalog.h"

#include "tests/platform/files/mounted_file_system.h"
#include "tests/platform/files/reference_fixture.h"

#include <cstring>
#include <glib.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr const char* kOwn = "user.com.apple.FinderInfo";

class FSCatalogTest : public ReferenceTest {
protected:
    static FileInfo infoOf(const FSRef& ref)
    {
        FSCatalogInfo info;
        EXPECT_EQ(FSGetCatalogInfo(ref, kFSCatInfoFinderInfo, &info), 0);
        return info.finderInfo;
    }
    static OSStatus setInfo(const FSRef& ref, const FileInfo& fileInfo)
    {
        FSCatalogInfo info;
        info.finderInfo = fileInfo;
        return FSSetCatalogInfo(ref, kFSCatInfoFinderInfo, info);
    }
    static FSRef parentOf(const FSRef& ref)
    {
        FSRef parent = ref;
        EXPECT_EQ(FSGetCatalogInfo(ref, kFSCatInfoNone, nullptr, nullptr, &parent), 0);
        return parent;
    }
    std::string attribute(const std::string& name, const char* attribute) const
    {
        char value[200];
        const ssize_t length = getxattr(at(name).c_str(), attribute, value, sizeof value);
        return length < 0 ? "none" : std::string(value, static_cast<std::size_t>(length));
    }
    bool canStore(const std::string& name) const
    {
        return setxattr(at(name).c_str(), "user.test", "", 0, 0) == 0;
    }
};

constexpr FileInfo kInfo { 0x41494646, 0x4C554D20, 0x4001, { -3, 258 }, 0x1234 };

TEST_F(FSCatalogTest, FinderInformationIsAllZeroAtFirst)
{
    EXPECT_EQ(infoOf(refTo(file("f"))), FileInfo());
}

TEST_F(FSCatalogTest, FinderInformationIsStoredHighestByteFirst)
{
    const FSRef ref = refTo(file("f"));
    if (!canStore("f"))
        GTEST_SKIP() << "no extended attributes here";
    EXPECT_EQ(setInfo(ref, kInfo), 0);
    EXPECT_EQ(infoOf(ref), kInfo);
    EXPECT_EQ(attribute("f", kOwn),
        std::string("AIFFLUM \x40\x01\xFF\xFD\x01\x02\x12\x34", 16) + std::string(16, '\0'));
    rename("f", "g");
    EXPECT_EQ(infoOf(refTo(at("g"))), kInfo);
}

TEST_F(FSCatalogTest, FoldersHaveItToo)
{
    const FSRef ref = refTo(folder("a"));
    if (!canStore("a"))
        GTEST_SKIP() << "no extended attributes here";
    EXPECT_EQ(setInfo(ref, kInfo), 0);
    EXPECT_EQ(infoOf(letGo(ref)), kInfo);
}

TEST_F(FSCatalogTest, TheSecondHalfOfTheAttributeBelongsToOthers)
{
    const std::string second(16, 'x');
    const FSRef ref = refTo(file("f"));
    if (!canStore("f"))
        GTEST_SKIP() << "no extended attributes here";
    ASSERT_EQ(setxattr(at("f").c_str(), kOwn, (std::string(16, 'a') + second).data(), 32, 0), 0);
    EXPECT_EQ(setInfo(ref, FileInfo()), 0);
    EXPECT_EQ(attribute("f", kOwn), std::string(16, '\0') + second);
}

TEST_F(FSCatalogTest, AllZeroRemovesTheAttribute)
{
    const FSRef ref = refTo(file("f"));
    if (!canStore("f"))
        GTEST_SKIP() << "no extended attributes here";
    EXPECT_EQ(setInfo(ref, FileInfo()), 0);
    EXPECT_EQ(setInfo(ref, kInfo), 0);
    EXPECT_EQ(setInfo(ref, FileInfo()), 0);
    EXPECT_EQ(attribute("f", kOwn), "none");
}

TEST_F(FSCatalogTest, AnAttributeOfAnotherLengthIsNotFinderInformation)
{
    const FSRef ref = refTo(file("f"));
    if (!canStore("f"))
        GTEST_SKIP() << "no extended attributes here";
    setxattr(at("f").c_str(), kOwn, std::string(16, 'a').data(), 16, 0);
    EXPECT_EQ(infoOf(ref), FileInfo());
    setxattr(at("f").c_str(), kOwn, std::string(64, 'a').data(), 64, 0);
    EXPECT_EQ(infoOf(ref), FileInfo());
    EXPECT_EQ(setInfo(ref, kInfo), 0);
    EXPECT_EQ(infoOf(ref), kInfo);
}

TEST_F(FSCatalogTest, WhatAFileServerStoredIsReadWhereTheOwnAttributeIsMissing)
{
    const FSRef ref = refTo(file("f"));
    if (!canStore("f"))
        GTEST_SKIP() << "no extended attributes here";
    std::string afp = std::string("AFP\0", 4) + std::string(12, '\0') + "TEXTttxt" + std::string(36, '\0');
    setxattr(at("f").c_str(), "user.DosStream.AFP_AfpInfo:$DATA", afp.data(), afp.size(), 0);
    EXPECT_EQ(infoOf(ref).fileType, 0x54455854u);
    std::string appleDouble = std::string("\0\x05\x16\x07\0\x02\0\0", 8) + std::string(16, '\0')
        + std::string("\0\x01\0\0\0\x09\0\0\0\x26\0\0\0\x20", 14) + "AIFFLUM " + std::string(24, '\0');
    setxattr(at("f").c_str(), "user.org.netatalk.Metadata", appleDouble.data(), appleDouble.size(), 0);
    EXPECT_EQ(infoOf(ref).fileType, 0x41494646u);
    EXPECT_EQ(setInfo(ref, kInfo), 0);
    EXPECT_EQ(infoOf(ref), kInfo);
}

TEST_F(FSCatalogTest, TheSecondHalfStaysAsAFileServerStoredIt)
{
    const std::string second(16, 'x');
    const FSRef ref = refTo(file("f"));
    if (!canStore("f"))
        GTEST_SKIP() << "no extended attributes here";
    const std::string afp = std::string("AFP\0", 4) + std::string(12, '\0') + std::string(16, 'a') + second
        + std::string(12, '\0');
    setxattr(at("f").c_str(), "user.DosStream.AFP_AfpInfo:$DATA", afp.data(), afp.size(), 0);
    EXPECT_EQ(setInfo(ref, kInfo), 0);
    EXPECT_EQ(infoOf(ref), kInfo);
    EXPECT_EQ(attribute("f", kOwn).substr(16), second);
}

TEST_F(FSCatalogTest, AllZeroHidesWhatAFileServerStored)
{
    const FSRef ref = refTo(file("f"));
    if (!canStore("f"))
        GTEST_SKIP() << "no extended attributes here";
    const std::string afp = std::string("AFP\0", 4) + std::string(12, '\0') + "TEXT" + std::string(40, '\0');
    setxattr(at("f").c_str(), "user.DosStream.AFP_AfpInfo:$DATA", afp.data(), afp.size(), 0);
    EXPECT_EQ(setInfo(ref, FileInfo()), 0);
    EXPECT_EQ(infoOf(ref), FileInfo());
    EXPECT_EQ(attribute("f", kOwn), std::string(32, '\0'));
}

TEST_F(FSCatalogTest, LinksCarryNoneAndAreNotFollowed)
{
    file("f");
    fs::create_symlink("f", at("alias"));
    const FSRef ref = refTo(at("alias"));
    EXPECT_EQ(setInfo(ref, kInfo), -5000);
    EXPECT_EQ(infoOf(ref), FileInfo());
    EXPECT_EQ(infoOf(refTo(at("f"))), FileInfo());
}

TEST_F(FSCatalogTest, OtherInformationCannotBeSet)
{
    EXPECT_EQ(FSSetCatalogInfo(refTo(file("f")), kFSCatInfoVolume, FSCatalogInfo()), -50);
    EXPECT_EQ(FSSetCatalogInfo(refTo(at("f")), kFSCatInfoNone, FSCatalogInfo()), 0);
}

TEST_F(FSCatalogTest, NothingAndWhatIsGoneHaveNoInformation)
{
    FSCatalogInfo info;
    EXPECT_EQ(FSGetCatalogInfo(FSRef(), kFSCatInfoFinderInfo, &info), -43);
    EXPECT_EQ(FSSetCatalogInfo(FSRef(), kFSCatInfoFinderInfo, info), -43);
    const FSRef gone = refTo(file("f"));
    remove("f");
    EXPECT_EQ(FSGetCatalogInfo(gone, kFSCatInfoFinderInfo, &info), -43);
    EXPECT_EQ(FSSetCatalogInfo(gone, kFSCatInfoFinderInfo, info), -43);
    EXPECT_EQ(FSGetCatalogInfo(gone, kFSCatInfoVolume, &info), -43);
}

TEST_F(FSCatalogTest, TheParentIsTheFolderAbove)
{
    folder("a");
    const FSRef ref = refTo(file("a/f"));
    EXPECT_EQ(FSCompareFSRefs(parentOf(ref), refTo(at("a"))), 0);
    EXPECT_FALSE(parentOf(refTo("/")));
}

TEST_F(FSCatalogTest, TheParentIsNoLinkLeftInThePlaceOfAFolderThatMoved)
{
    folder("a");
    const FSRef above = refTo(at("a"));
    const FSRef ref = refTo(file("a/f"));
    rename("a", "b");
    fs::create_directory_symlink("b", at("a"));
    EXPECT_EQ(FSCompareFSRefs(parentOf(ref), above), 0);
}

TEST_F(FSCatalogTest, TheOldNameIsInMacRoman)
{
    static_assert(sizeof(FSSpec) == 70);
    FSSpec spec;
    EXPECT_EQ(FSGetCatalogInfo(refTo(file("Größe")), kFSCatInfoNone, nullptr, &spec), 0);
    EXPECT_EQ(spec.name[0], 5);
    EXPECT_EQ(std::memcmp(spec.name + 1,
                  "Gr\x9A\xA7"
                  "e",
                  5),
        0);
    struct stat above;
    stat(mFolder.c_str(), &above);
    const std::int32_t parent = spec.parID; // the record is packed
    const std::int16_t volume = spec.vRefNum;
    EXPECT_EQ(parent, static_cast<std::int32_t>(above.st_ino));
    EXPECT_NE(volume, 0);
}

TEST_F(FSCatalogTest, ANameThatIsNoOldNameIsRefused)
{
    FSSpec spec;
    EXPECT_EQ(FSGetCatalogInfo(refTo(file(std::string(63, 'n'))), kFSCatInfoNone, nullptr, &spec), 0);
    EXPECT_EQ(spec.name[0], 63);
    EXPECT_EQ(FSGetCatalogInfo(refTo(file(std::string(64, 'n'))), kFSCatInfoNone, nullptr, &spec), -37);
    EXPECT_EQ(FSGetCatalogInfo(refTo(file("漢")), kFSCatInfoNone, nullptr, &spec), -37);
    EXPECT_EQ(spec.name[0], 63);
}

TEST_F(FSCatalogTest, TheVolumeReachesUpToWhereAnotherBegins)
{
    const auto system = MountedFileSystem::find("overlay");
    if (!system)
        GTEST_SKIP() << "no overlay here";
    fs::create_directories(system->top() / "a");
    FSCatalogInfo above, below;
    EXPECT_EQ(FSGetCatalogInfo(refTo(mFolder.string()), kFSCatInfoVolume, &above), 0);
    EXPECT_EQ(FSGetCatalogInfo(refTo((system->top() / "a").string()), kFSCatInfoVolume, &below), 0);
    EXPECT_EQ(below.volume.topFolder, system->top());
    EXPECT_NE(above.volume.identifier, below.volume.identifier);
    FSReleaseDescriptors();
}

class FSFindFolderTest : public FSCatalogTest {
protected:
    static std::vector<std::string> trashOf(const FSVolumeRef& volume)
    {
        std::vector<FSRef> folders;
        std::vector<std::string> paths;
        if (FSFindFolder(volume, kTrashFolderType, folders) == 0)
            for (const FSRef& folder : folders)
                paths.push_back(pathOf(folder));
        return paths;
    }
    FSVolumeRef volumeWithTop() const
    {
        FSCatalogInfo info;
        EXPECT_EQ(FSGetCatalogInfo(refTo(mFolder.string()), kFSCatInfoVolume, &info), 0);
        return { info.volume.identifier, mFolder.string() };
    }
    std::vector<std::string> withoutHome(std::vector<std::string> paths) const
    {
        std::erase_if(paths, [&](const std::string& path) { return !path.starts_with(mFolder.string()); });
        return paths;
    }
    const std::string mUser = std::to_string(getuid());
};

TEST_F(FSFindFolderTest, ThereIsNoneUntilSomethingWasThrownAway)
{
    EXPECT_TRUE(withoutHome(trashOf(volumeWithTop())).empty());
    EXPECT_TRUE(fs::is_empty(mFolder));
}

TEST_F(FSFindFolderTest, TheUsersOwnAtTheTop)
{
    folder(".Trash-" + mUser + "/files");
    EXPECT_EQ(withoutHome(trashOf(volumeWithTop())), std::vector { at(".Trash-" + mUser + "/files") });
}

TEST_F(FSFindFolderTest, TheUsersPartOfTheSharedOneCountsWhenThatIsRealAndSticky)
{
    const std::string files = folder(".Trash/" + mUser + "/files");
    EXPECT_TRUE(withoutHome(trashOf(volumeWithTop())).empty());
    chmod(at(".Trash").c_str(), 01777);
    EXPECT_EQ(withoutHome(trashOf(volumeWithTop())), std::vector { files });
    rename(".Trash", "elsewhere");
    fs::create_symlink("elsewhere", at(".Trash"));
    EXPECT_TRUE(withoutHome(trashOf(volumeWithTop())).empty());
}

TEST_F(FSFindFolderTest, OnlyFoldersOnTheVolumeCount)
{
    folder(".Trash-" + mUser + "/files");
    FSVolumeRef other = volumeWithTop();
    ++other.identifier;
    EXPECT_TRUE(withoutHome(trashOf(other)).empty());
}

TEST_F(FSFindFolderTest, ThereAreNoOtherTypes)
{
    std::vector<FSRef> folders;
    EXPECT_EQ(FSFindFolder(volumeWithTop(), 0x64657370, folders), -43);
}

}
