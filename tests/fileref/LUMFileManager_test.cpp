#include "LUMFoundation/LUMFileManager.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSPathUtilities.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSURL.h"
#include "tests/home_folder.h"
#include "tests/platform/files/tree_fixture.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;

namespace {

class LUMFileManagerTest : public TreeTest {
protected:
    NSRef<LUMFileRef> ref(const std::string& name) const
    {
        return LUMFileRef::fileRefWithPathResolveAlias(path(name), false);
    }
    NSRef<LUMFileRef> here() const { return LUMFileRef::fileRefWithPath(folder.string()); }
    std::string freeName(const char* name, std::uint64_t maxTries) const
    {
        const auto found = LUMFileManager::enumeratedName(manager, name, here(), maxTries);
        return found ? found->utf8() : "(null)";
    }
    /// The path of a reference, below the test's folder.
    std::string shown(const NSRef<LUMFileRef>& fileRef) const
    {
        const auto at = fileRef ? fileRef->path() : nullptr;
        return at ? fs::path(at->utf8()).lexically_relative(folder).string() : "(null)";
    }

    NSRef<NSFileManager> manager = NSFileManager::defaultManager();
};

TEST_F(LUMFileManagerTest, FindsTheFirstFreeName)
{
    put("Take.aif");
    put("Take 1.aif");
    EXPECT_EQ(freeName("Take.aif", 10), "Take 2.aif");
    EXPECT_EQ(freeName("Take.aif", 3), "Take 2.aif");
    EXPECT_EQ(freeName("Take.aif", 2), "(null)");
    EXPECT_EQ(freeName("Take.aif", 0), "(null)");
}

TEST_F(LUMFileManagerTest, LeavesANameWithoutExtensionWithout)
{
    EXPECT_EQ(freeName("Folder", 5), "Folder");
    makeFolder("Folder");
    EXPECT_EQ(freeName("Folder", 5), "Folder 1");
    put(".hidden");
    EXPECT_EQ(freeName(".hidden", 5), ".hidden 1");
}

TEST_F(LUMFileManagerTest, CountsBeforeTheLastExtension)
{
    put("a.tar.gz");
    EXPECT_EQ(freeName("a.tar.gz", 5), "a.tar 1.gz");
}

TEST_F(LUMFileManagerTest, DeliberatelyFindsEveryNameFreeInWhatIsNoFolder)
{
    put("file");
    EXPECT_EQ(LUMFileManager::enumeratedName(manager, "a", ref("file"), 5)->utf8(), "a");
    EXPECT_EQ(LUMFileManager::enumeratedName(manager, "a", nullptr, 5)->utf8(), "a");
    EXPECT_FALSE(LUMFileManager::enumeratedName(manager, nullptr, here(), 5));
}

TEST_F(LUMFileManagerTest, DuplicatesAFile)
{
    put("a", "text");
    makeFolder("d");
    const auto copy = LUMFileManager::duplicateFileRefWithName(manager, ref("a"), ref("d"), "b");
    EXPECT_EQ(shown(copy), "d/b");
    EXPECT_EQ(get("d/b"), "text");
    EXPECT_EQ(get("a"), "text");
}

TEST_F(LUMFileManagerTest, DuplicatesAFolderUnderAFreeName)
{
    putSome("t");
    const auto copy = LUMFileManager::duplicateFileRefWithEnumeratedName(manager, ref("t"), here(), "t", 10);
    EXPECT_EQ(shown(copy), "t 1");
    EXPECT_EQ(tree("t 1"), tree("t"));
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithEnumeratedName(manager, ref("t"), here(), "t", 2));
}

TEST_F(LUMFileManagerTest, DeliberatelyDuplicatingRemovesWhatStoodAtTheDestination)
{
    put("a", "new");
    put("b", "old");
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(manager, ref("a"), here(), "b"));
    EXPECT_EQ(names(), "a");
}

TEST_F(LUMFileManagerTest, DeliberatelyDuplicatingOntoALinkRemovesWhatItLeadsTo)
{
    put("a", "new");
    makeFolder("d");
    put("d/b", "old");
    fs::create_symlink("d/b", folder / "link");
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(manager, ref("a"), here(), "link"));
    EXPECT_EQ(names(), "a d link");
    EXPECT_TRUE(fs::is_empty(folder / "d"));
}

TEST_F(LUMFileManagerTest, LeavesALinkThatDanglesAtTheDestination)
{
    put("a");
    fs::create_symlink("nowhere", folder / "link");
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(manager, ref("a"), here(), "link"));
    EXPECT_EQ(names(), "a link");
}

TEST_F(LUMFileManagerTest, DuplicatesNothingFromOrToNothing)
{
    put("a");
    put("gone");
    const auto gone = ref("gone");
    fs::remove(folder / "gone");
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(manager, gone, here(), "b"));
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(manager, nullptr, here(), "b"));
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(manager, ref("a"), nullptr, "b"));
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(manager, ref("a"), here(), nullptr));
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(nullptr, ref("a"), here(), "b"));
    EXPECT_EQ(names(), "a");
}

/// Texts that name no file in a folder.
class LUMFileManagerNamesTest : public LUMFileManagerTest, public testing::WithParamInterface<std::string> {
protected:
    LUMFileManagerNamesTest()
    {
        put("a", "text");
        put("keep");
        makeFolder("d/x");
        put("d/keep");
    }
    void expectNothingHappened() const
    {
        EXPECT_EQ(names(), "a d keep");
        EXPECT_EQ(tree("d"), "keep = content\nx/\n");
    }
    const NSRef<NSString> mName = GetParam();
};

TEST_P(LUMFileManagerNamesTest, AreNotCopiedTo)
{
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithName(manager, ref("a"), ref("d"), mName));
    expectNothingHappened();
    EXPECT_FALSE(LUMFileManager::duplicateFileRefWithEnumeratedName(manager, ref("a"), ref("d"), mName, 10));
    expectNothingHappened();
}

TEST_P(LUMFileManagerNamesTest, AreNotMovedTo)
{
    EXPECT_FALSE(LUMFileManager::moveFileRefWithName(manager, ref("a"), ref("d"), mName));
    expectNothingHappened();
    EXPECT_FALSE(LUMFileManager::moveFileRefWithEnumeratedName(manager, ref("a"), ref("d"), mName, 10));
    expectNothingHappened();
}

INSTANTIATE_TEST_SUITE_P(Texts, LUMFileManagerNamesTest,
    testing::Values("", ".", "..", "/", "x/..", "x/b", "../b", "b/", std::string("b\0c", 3)));

TEST_F(LUMFileManagerTest, MovesAFile)
{
    put("a", "text");
    makeFolder("d");
    const auto before = ref("a");
    const auto after = LUMFileManager::moveFileRefWithName(manager, before, ref("d"), "b");
    EXPECT_EQ(shown(after), "d/b");
    EXPECT_TRUE(NSEqual(after, before));
    EXPECT_EQ(names(), "d");
}

TEST_F(LUMFileManagerTest, MovesUnderAFreeName)
{
    put("a", "text");
    makeFolder("d");
    put("d/a", "old");
    const auto moved = LUMFileManager::moveFileRefWithEnumeratedName(manager, ref("a"), ref("d"), "a", 10);
    EXPECT_EQ(shown(moved), "d/a 1");
    EXPECT_EQ(get("d/a"), "old");
}

TEST_F(LUMFileManagerTest, NeverReplacesInMoving)
{
    put("a", "new");
    put("b", "old");
    EXPECT_FALSE(LUMFileManager::moveFileRefWithName(manager, ref("a"), here(), "b"));
    EXPECT_FALSE(LUMFileManager::fastMovePath(manager, path("a"), path("b")));
    EXPECT_EQ(get("a"), "new");
    EXPECT_EQ(get("b"), "old");
}

TEST_F(LUMFileManagerTest, MovesByPath)
{
    put("a");
    EXPECT_TRUE(LUMFileManager::fastMovePath(manager, path("a"), path("b")));
    EXPECT_FALSE(LUMFileManager::fastMovePath(manager, path("a"), path("c")));
    EXPECT_FALSE(LUMFileManager::fastMovePath(manager, nullptr, path("c")));
    EXPECT_FALSE(LUMFileManager::fastMovePath(nullptr, path("b"), path("c")));
    EXPECT_EQ(names(), "b");
}

TEST_F(LUMFileManagerTest, DeliberatelyAsksNoHandler)
{
    put("a", "new");
    put("b", "old");
    const NSId handler = NSMake<NSObject>(); // which raises for whatever it is sent
    EXPECT_FALSE(LUMFileManager::moveFileRefWithName(manager, ref("a"), here(), "b", handler));
    EXPECT_FALSE(LUMFileManager::fastMovePath(manager, path("a"), path("b"), handler));
    EXPECT_FALSE(LUMFileManager::enumeratedName(manager, "a", here(), 1, handler));
    EXPECT_TRUE(
        LUMFileManager::duplicateFileRefWithEnumeratedName(manager, ref("a"), here(), "a", 5, handler));
}

TEST_F(LUMFileManagerTest, CreatesFilesAndFoldersWhereNothingIs)
{
    EXPECT_EQ(shown(LUMFileManager::createFileRefAtPath(manager, path("a"), false)), "a");
    EXPECT_EQ(shown(LUMFileManager::createFileRefAtPath(manager, path("d"), true)), "d");
    EXPECT_EQ(shown(LUMFileManager::createFileRefWithName(manager, "b", ref("d"), false)), "d/b");
    EXPECT_EQ(get("a"), "");
    EXPECT_FALSE(LUMFileManager::createFileRefAtPath(manager, path("none/x"), true));
    EXPECT_FALSE(LUMFileManager::createFileRefAtPath(manager, nullptr, true));
    EXPECT_FALSE(LUMFileManager::createFileRefWithName(manager, "b", nullptr, false));
}

TEST_F(LUMFileManagerTest, CreatesInTheHomeFolder)
{
    const HomeFolder home(folder);
    EXPECT_EQ(shown(LUMFileManager::createFileRefAtPath(manager, "~/a", false)), "a");
    EXPECT_EQ(shown(LUMFileManager::createFileRefAtPath(manager, "~/d", true)), "d");
    EXPECT_FALSE(LUMFileManager::createFileRefAtPath(manager, "~/a", false));
    EXPECT_EQ(names(), "a d");
}

TEST_F(LUMFileManagerTest, LeavesWhatIsThereWhenAskedToCreateIt)
{
    put("a", "text");
    EXPECT_FALSE(LUMFileManager::createFileRefAtPath(manager, path("a"), false));
    EXPECT_FALSE(LUMFileManager::createFileRefAtPath(manager, path("a"), true));
    EXPECT_EQ(get("a"), "text");
}

TEST_F(LUMFileManagerTest, CreatesNothingInThePlaceOfALinkThatDangles)
{
    fs::create_symlink("nowhere", folder / "link");
    EXPECT_FALSE(LUMFileManager::createFileRefAtPath(manager, path("link"), false));
    EXPECT_FALSE(LUMFileManager::createFileRefAtPath(manager, path("link"), true));
    EXPECT_EQ(names(), "link");
}

TEST_F(LUMFileManagerTest, MeasuresFilesAndFolders)
{
    put("a", "12345");
    makeFolder("t/sub/deep");
    put("t/b", "123");
    put("t/sub/deep/.c", "4567");
    fs::create_symlink("1234567", folder / "t/link"); // seven bytes long itself
    fs::create_symlink("a", folder / "to a");
    fs::create_directory_symlink("t", folder / "to t");
    EXPECT_EQ(LUMFileManager::sizeAtPath(manager, path("a")), 5u);
    EXPECT_EQ(LUMFileManager::sizeAtPath(manager, path("t")), 14u);
    EXPECT_EQ(LUMFileManager::sizeAtPath(manager, path("to a")), 5u);
    EXPECT_EQ(LUMFileManager::sizeAtPath(manager, path("to t")), 14u);
    EXPECT_EQ(LUMFileManager::sizeAtPath(manager, path("none")), 0u);
    EXPECT_EQ(LUMFileManager::sizeAtPath(manager, nullptr), 0u);
}

TEST_F(LUMFileManagerTest, MeasuresFilesWhoseNamesAreNoText)
{
    makeFolder("t/\xFF");
    put("t/\xFF/inside", "123");
    put("t/\xFE", "4567");
    put("t/good", "89");
    EXPECT_EQ(LUMFileManager::sizeAtPath(manager, path("t")), 9u);
}

TEST_F(LUMFileManagerTest, NamesATemporaryFileThatIsNotThere)
{
    const auto url = LUMFileManager::tempFileURLWithBase(manager, "Recording", "aif");
    ASSERT_TRUE(url);
    EXPECT_TRUE(url->isFileURL());
    EXPECT_TRUE(url->path()->hasPrefix(NSTemporaryDirectory()));
    EXPECT_THAT(url->lastPathComponent()->utf8(),
        testing::MatchesRegex("Recording_[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.aif"));
    EXPECT_FALSE(fs::exists(url->path()->utf8()));
}

TEST_F(LUMFileManagerTest, NamesNoTemporaryFileWithoutBaseOrExtension)
{
    EXPECT_FALSE(LUMFileManager::tempFileURLWithBase(manager, nullptr, "aif"));
    EXPECT_FALSE(LUMFileManager::tempFileURLWithBase(manager, "a", nullptr));
    EXPECT_FALSE(LUMFileManager::tempFileURLWithBase(manager, "a", "/x"));
    EXPECT_EQ(LUMFileManager::tempFileURLWithBase(manager, "a", "")->pathExtension()->utf8(), "");
}

TEST_F(LUMFileManagerTest, IsAnsweredByFileManagers)
{
    put("a", "12345");
    EXPECT_EQ(NSSend<std::uint64_t>(manager, NSSelector("sizeAtPath:"), NSRef<NSString>(path("a"))), 5u);
    const auto name =
        NSSend<NSRef<NSString>>(manager, NSSelector("enumeratedName:inDirectory:maxTries:handler:"),
            NSRef<NSString>("a"), here(), std::uint64_t { 5 }, NSId());
    EXPECT_EQ(name->utf8(), "a 1");
}

/// A file manager that moves nothing and tells what it was asked.
class AskedManager : public NSFileManager {
public:
    static const NSClass& classObject();
    bool fastMove(const NSRef<NSString>& from, const NSRef<NSString>& to, const NSId&)
    {
        asked = from->lastPathComponent()->utf8() + " to " + to->lastPathComponent()->utf8();
        return false;
    }
    std::string asked;
};

constexpr NSMethod kAskedMethods[] = {
    NSMethodOf<"fastMovePath:toPath:handler:", &AskedManager::fastMove>(),
};

const NSClass& AskedManager::classObject()
{
    static const NSClass& type =
        NSClass::define("AskedManager", &NSFileManager::classObject(), kAskedMethods);
    return type;
}

TEST_F(LUMFileManagerTest, AsksAManagerThatMovesInItsOwnWay)
{
    put("a");
    const auto asked = NSMake<AskedManager>();
    EXPECT_FALSE(LUMFileManager::moveFileRefWithName(asked, ref("a"), here(), "b"));
    EXPECT_EQ(asked->asked, "a to b");
    EXPECT_EQ(names(), "a");
}

}
