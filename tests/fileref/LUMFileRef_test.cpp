#include "tests/fileref/fileref_fixture.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSFileAttributes.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "tests/platform/files/faulty_node_system.h"
#include "tests/platform/files/mounted_file_system.h"

#include <cerrno>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// The user's data in a folder of its own; the desktop library looks once where that is, so before all tests.
class OwnHome {
public:
    OwnHome()
    {
        std::string made = (fs::canonical(fs::temp_directory_path()) / "home-XXXXXX").string();
        mFolder = mkdtemp(made.data());
        setenv("XDG_DATA_HOME", mFolder.c_str(), 1);
    }
    ~OwnHome()
    {
        std::error_code error;
        fs::remove_all(mFolder, error);
    }
    fs::path trash() const { return mFolder / "Trash/files"; }

private:
    fs::path mFolder;
};
const OwnHome ownHome;

class LUMFileRefTest : public FileRefTest { };

TEST_F(LUMFileRefTest, PathsThatLeadToOneObjectGiveEqualHandles)
{
    folder("a");
    file("a/f");
    link("short", "a");
    link("alias", "a/f");
    const auto fileRef = handle("a/f");
    for (const std::string name : { "short/f", "a/../a/f", "alias" }) {
        EXPECT_EQ(fileRef->compare(handle(name)), NSOrderedSame) << name;
        EXPECT_TRUE(fileRef->isEqual(handle(name))) << name;
    }
    EXPECT_FALSE(fileRef->isEqual(linkHandle("alias")));
}

TEST_F(LUMFileRefTest, DistinctObjectsAreInTheOrderOfTheirPaths)
{
    file("a");
    file("b");
    EXPECT_EQ(handle("a")->compare(handle("b")), NSOrderedAscending);
    EXPECT_EQ(handle("b")->compare(handle("a")), NSOrderedDescending);
    EXPECT_FALSE(handle("a")->isEqual(handle("b")));
}

TEST_F(LUMFileRefTest, NamesThatAreWrittenOtherwiseAreOtherFiles)
{
    file("\u00e9"); // in one letter
    file("e\u0301"); // in a letter and an accent
    const auto one = handle("\u00e9");
    const auto two = handle("e\u0301");
    EXPECT_FALSE(one->isEqual(two));
    EXPECT_NE(one->compare(two), NSOrderedSame);
    EXPECT_EQ(one->compare(two), -two->compare(one));
}

TEST_F(LUMFileRefTest, HandlesOnWhatIsGoneComeFirstAndAreEqualOnlyToThemselves)
{
    file("a");
    file("b");
    file("c");
    const auto a = handle("a");
    const auto again = handle("a");
    const auto b = handle("b");
    remove("a");
    remove("b");
    EXPECT_EQ(a->compare(handle("c")), NSOrderedAscending);
    EXPECT_EQ(handle("c")->compare(a), NSOrderedDescending);
    EXPECT_NE(a->compare(b), NSOrderedSame);
    EXPECT_EQ(a->compare(b), -b->compare(a));
    EXPECT_TRUE(a->isEqual(again));
}

TEST_F(LUMFileRefTest, NothingElseIsEqualToAHandle)
{
    file("f");
    EXPECT_FALSE(handle("f")->isEqual(nullptr));
    EXPECT_FALSE(handle("f")->isEqual("text"));
    EXPECT_EQ(handle("f")->compare(nullptr), NSOrderedDescending);
}

// Deliberate: the hash stays while an object is renamed or moved on its volume.
TEST_F(LUMFileRefTest, DeliberatelyHashesOfTwoFilesOnOneVolumeAreEqual)
{
    file("a");
    folder("b");
    EXPECT_EQ(handle("a")->hash(), handle("b")->hash());
    EXPECT_EQ(handle("a")->hash(),
        handle("a")->attributes()->objectForKey<NSNumber>(NSFileSystemNumber)->unsignedLongLongValue());
    EXPECT_NE(handle("a")->hash(), LUMFileRef::fileRefWithPath("/proc/self/stat")->hash());
}

TEST_F(LUMFileRefTest, AHashIsLookedUpOnce)
{
    file("f");
    const auto fileRef = handle("f");
    const NSUInteger hash = fileRef->hash();
    EXPECT_NE(hash, 0u);
    remove("f");
    EXPECT_EQ(fileRef->hash(), hash);
}

// Deliberate: also the hash of an object that could not be looked at stays.
TEST_F(LUMFileRefTest, DeliberatelyAHashThatCouldNotBeLookedUpStaysZero)
{
    file("f");
    const auto fileRef = handle("f");
    FSReleaseDescriptors();
    rename("f", "g");
    {
        FaultyNodeSystem system;
        system.fail(FaultyNodeSystem::All, EIO);
        EXPECT_EQ(fileRef->hash(), 0u);
    }
    EXPECT_EQ(fileRef->hash(), 0u);
}

TEST_F(LUMFileRefTest, NamesComeFromThePath)
{
    file("Take 1.tar.gz");
    const auto fileRef = handle("Take 1.tar.gz");
    EXPECT_EQ(text(fileRef->name()), "Take 1.tar.gz");
    EXPECT_EQ(text(fileRef->baseName()), "Take 1.tar");
    EXPECT_EQ(text(fileRef->pathExtension()), "gz");
    EXPECT_EQ(text(fileRef->displayName()), "Take 1.tar.gz");
    EXPECT_EQ(text(here()->pathExtension()), "");
    EXPECT_EQ(text(fileRef->url()->absoluteString()), "file://" + mFolder.string() + "/Take%201.tar.gz");
}

TEST_F(LUMFileRefTest, AMovedObjectIsStillTheSame)
{
    folder("a");
    file("f");
    const auto fileRef = handle("f");
    rename("f", "a/g");
    EXPECT_EQ(text(fileRef->name()), "g");
    EXPECT_TRUE(fileRef->fileExists());
    EXPECT_TRUE(fileRef->isEqual(handle("a/g")));
}

TEST_F(LUMFileRefTest, AnObjectThatIsGoneHasNoPathAndWhatComesFromIt)
{
    file("f");
    const auto fileRef = handle("f");
    remove("f");
    EXPECT_FALSE(fileRef->fileExists());
    EXPECT_EQ(pathOf(fileRef), "(null)");
    EXPECT_FALSE(fileRef->url());
    EXPECT_FALSE(fileRef->name());
    EXPECT_FALSE(fileRef->isDirectory());
    EXPECT_FALSE(fileRef->childrenError());
    EXPECT_FALSE(fileRef->parent());
    EXPECT_FALSE(fileRef->attributes());
    EXPECT_FALSE(fileRef->isInTrash());
}

// Deliberate: the second colon comes from two texts that are put together.
TEST_F(LUMFileRefTest, DeliberatelyADescriptionHasTwoColonsBeforeAddressAndPath)
{
    file("f");
    const auto fileRef = handle("f");
    const auto address = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(fileRef.get()));
    char expected[64];
    std::snprintf(expected, sizeof expected, "LUMFileRef:: 0x%X", address);
    EXPECT_EQ(text(fileRef->description()), expected + (", " + at("f")));
    EXPECT_EQ(text(fileRef->descriptionWithLocale(nullptr)), text(fileRef->description()));
    remove("f");
    EXPECT_EQ(text(fileRef->description()), expected);
}

TEST_F(LUMFileRefTest, AFolderIsADirectoryAndSoIsALinkToOne)
{
    folder("a");
    file("f");
    link("alias", "a");
    EXPECT_TRUE(handle("a")->isDirectory());
    EXPECT_TRUE(linkHandle("alias")->isDirectory());
    EXPECT_FALSE(handle("f")->isDirectory());
}

// Deliberate: characters are compared, not components.
TEST_F(LUMFileRefTest, DeliberatelyDescentIsATestOfTheCharactersOfThePath)
{
    folder("a/b");
    folder("a/bc");
    folder("c");
    EXPECT_TRUE(handle("a/b")->isDescendentOf(handle("a")));
    EXPECT_TRUE(handle("a/bc")->isDescendentOf(handle("a/b")));
    EXPECT_TRUE(handle("a")->isDescendentOf(handle("a")));
    EXPECT_FALSE(handle("a")->isDescendentOf(handle("a/b")));
    EXPECT_FALSE(handle("c")->isDescendentOf(handle("a")));
    EXPECT_FALSE(handle("c")->isDescendentOf(nullptr));
}

// Deliberate: nor letters, where an accent is a character of its own.
TEST_F(LUMFileRefTest, DeliberatelyDescentKnowsNoLettersOfTwoCharacters)
{
    folder("e");
    folder("e\u0301");
    folder("\u00E9");
    EXPECT_TRUE(handle("e\u0301")->isDescendentOf(handle("e")));
    EXPECT_FALSE(handle("e\u0301")->isDescendentOf(handle("\u00E9")));
    EXPECT_FALSE(handle("\u00E9")->isDescendentOf(handle("e\u0301")));
}

TEST_F(LUMFileRefTest, ParentsAndChildrenAreOneStepApart)
{
    folder("a/b");
    EXPECT_TRUE(handle("a/b")->isChildOf(handle("a")));
    EXPECT_FALSE(handle("a/b")->isChildOf(here()));
    EXPECT_TRUE(handle("a")->isParentOf(handle("a/b")));
    EXPECT_FALSE(handle("a/b")->isParentOf(handle("a")));
    EXPECT_FALSE(handle("a")->isChildOf(nullptr));
    EXPECT_FALSE(handle("a")->isParentOf(nullptr));
    EXPECT_EQ(pathOf(handle("a/b")->parent()), at("a"));
    EXPECT_EQ(pathOf(LUMFileRef::fileRefWithPath("/")->parent()), "/");
}

TEST_F(LUMFileRefTest, AttributesAreThoseOfTheFileManager)
{
    file("f", "12345");
    const auto fileRef = handle("f");
    EXPECT_EQ(fileRef->attributes()->objectForKey<NSNumber>(NSFileSize)->intValue(), 5);
    fileRef->setAttributes(NSDictionary::of({ { NSFilePosixPermissions, 0600 } }));
    struct stat info;
    stat(at("f").c_str(), &info);
    EXPECT_EQ(info.st_mode & 07777, 0600u);
    fileRef->setAttributes(nullptr);
}

TEST_F(LUMFileRefTest, FileInfoIsStored)
{
    file("f");
    if (setxattr(at("f").c_str(), "user.probe", "", 0, 0) != 0)
        GTEST_SKIP() << "no extended attributes here";
    const FileInfo info { 0x41494646, 0x4C554D20, 1, { 2, 3 }, 0 };
    EXPECT_EQ(handle("f")->setFileInfo(info), 0);
    EXPECT_EQ(handle("f")->fileInfo(), info);
    EXPECT_EQ(here()->fileInfo(), FileInfo());
}

TEST_F(LUMFileRefTest, OnlyWhatLiesDirectlyInATrashFolderIsInTheTrash)
{
    fs::create_directories(ownHome.trash() / "a");
    std::ofstream(ownHome.trash() / "f") << "text";
    std::ofstream(ownHome.trash() / "a/f") << "text";
    EXPECT_TRUE(LUMFileRef::fileRefWithPath((ownHome.trash() / "f").string())->isInTrash());
    EXPECT_TRUE(LUMFileRef::fileRefWithPath((ownHome.trash() / "a").string())->isInTrash());
    EXPECT_FALSE(LUMFileRef::fileRefWithPath((ownHome.trash() / "a/f").string())->isInTrash());
    EXPECT_FALSE(LUMFileRef::fileRefWithPath(ownHome.trash().string())->isInTrash());
    EXPECT_FALSE(here()->isInTrash());
}

TEST_F(LUMFileRefTest, WhatLiesInTheTrashOfAnotherVolumeIsInTheTrash)
{
    const auto system = MountedFileSystem::find("overlay");
    if (!system)
        GTEST_SKIP() << "no overlay here";
    const fs::path trash = system->top() / (".Trash-" + std::to_string(getuid())) / "files";
    fs::create_directories(trash / "a");
    fs::create_directories(system->top() / "files");
    for (const fs::path& path : { trash / "f", trash / "a/f", system->top() / "files/f" })
        std::ofstream(path) << "text";
    EXPECT_TRUE(LUMFileRef::fileRefWithPath((trash / "f").string())->isInTrash());
    EXPECT_FALSE(LUMFileRef::fileRefWithPath((trash / "a/f").string())->isInTrash());
    EXPECT_FALSE(LUMFileRef::fileRefWithPath((system->top() / "files/f").string())->isInTrash());
    FSReleaseDescriptors();
}

TEST_F(LUMFileRefTest, TheLockIsForCallersAndNotRecursive)
{
    file("f");
    const auto fileRef = handle("f");
    fileRef->lock();
    EXPECT_THROW(fileRef->lock(), NSException);
    EXPECT_EQ(pathOf(fileRef), at("f")) << "no operation takes it";
    EXPECT_TRUE(fileRef->renameWithName("g"));
    fileRef->unlock();
    EXPECT_THROW(fileRef->unlock(), NSException);
}

TEST_F(LUMFileRefTest, TheLockHoldsOffOtherThreads)
{
    const auto fileRef = here();
    int count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&count, own = fileRef] {
            for (int round = 0; round < 500; ++round) {
                std::lock_guard guard(*own);
                ++count;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(count, 1500);
}

TEST_F(LUMFileRefTest, AnswersDynamicCalls)
{
    folder("a");
    file("a/f");
    const auto fileRef = handle("a");
    NSRef<NSError> error;
    EXPECT_EQ(text(NSSend<NSRef<NSString>>(fileRef, NSSelector("path"))), at("a"));
    EXPECT_TRUE(NSSend<bool>(fileRef, NSSelector("isDirectory")));
    EXPECT_EQ(NSSend<NSInteger>(fileRef, NSSelector("compare:"), here()), NSOrderedDescending);
    EXPECT_EQ(names(NSSend<NSRef<NSArray>>(fileRef, NSSelector("children"))), "f ");
    EXPECT_EQ(names(NSSend<NSRef<NSArray>>(fileRef, NSSelector("childrenError:"), &error)), "f ");
    EXPECT_EQ(pathOf(NSSend<NSRef<LUMFileRef>>(fileRef, NSSelector("childWithName:"), NSRef<NSString>("f"))),
        at("a/f"));
    EXPECT_EQ(NSSend<const FSRef*>(fileRef, NSSelector("fsRef")), fileRef->fsRef());
    EXPECT_EQ(NSSend<FileInfo>(fileRef, NSSelector("fileInfo")), FileInfo());
    EXPECT_TRUE(NSSend<NSRef<NSData>>(fileRef, NSSelector("aliasData")));
    FSSpec spec;
    EXPECT_EQ(NSSend<int>(fileRef, NSSelector("getFSSpec:"), &spec), 0);
    EXPECT_EQ(spec.name[1], 'a');
    EXPECT_TRUE(NSSend<bool>(fileRef, NSSelector("renameWithName:"), NSRef<NSString>("b")));
    EXPECT_EQ(pathOf(fileRef), at("b"));
}

}
