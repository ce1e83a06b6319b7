#include "LUMFoundation/LUMFileManager_Safe.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSError.h"
#include "tests/platform/files/tree_fixture.h"

namespace fs = std::filesystem;

namespace {

class LUMFileManagerSafeTest : public TreeTest {
protected:
    NSRef<LUMFileRef> ref(const std::string& name) const
    {
        return LUMFileRef::fileRefWithPathResolveAlias(path(name), false);
    }
    /// The name of what is answered, or the code of the error.
    static std::string shown(const NSRef<LUMFileRef>& made, const NSRef<NSError>& error)
    {
        return made ? made->name()->utf8() : error ? std::to_string(error->code()) : "null";
    }
    std::string duplicate(const std::string& from, const NSRef<NSString>& name) const
    {
        NSRef<NSError> error;
        const auto made = LUMFileManager_Safe::duplicateFileRef(ref(from), ref(""), name, &error);
        return shown(made, error);
    }
    std::string move(const std::string& from, const NSRef<NSString>& name) const
    {
        NSRef<NSError> error;
        const auto made = LUMFileManager_Safe::moveFileRef(ref(from), ref(""), name, &error);
        return shown(made, error);
    }
    std::string makeFolderAt(const NSRef<NSString>& at) const
    {
        NSRef<NSError> error;
        const auto made = LUMFileManager_Safe::makeDirectoryAtPath(at, &error);
        return shown(made, error);
    }
};

TEST_F(LUMFileManagerSafeTest, DuplicatesAndMoves)
{
    put("a", "text");
    EXPECT_EQ(duplicate("a", "b"), "b");
    EXPECT_EQ(move("b", "c"), "c");
    EXPECT_EQ(get("c"), "text");
    EXPECT_EQ(names(), "a c");
}

TEST_F(LUMFileManagerSafeTest, NeverRemovesWhatStoodThere)
{
    put("a", "new");
    put("b", "old");
    EXPECT_EQ(duplicate("a", "b"), "-48");
    EXPECT_EQ(duplicate("a", "a"), "-48");
    EXPECT_EQ(move("a", "b"), "-48");
    EXPECT_EQ(get("a"), "new");
    EXPECT_EQ(get("b"), "old");
}

TEST_F(LUMFileManagerSafeTest, DuplicatesALinkAsALink)
{
    fs::create_symlink("nowhere", folder / "link");
    EXPECT_EQ(duplicate("link", "copy"), "copy");
    EXPECT_TRUE(fs::is_symlink(folder / "copy"));
}

TEST_F(LUMFileManagerSafeTest, TakesPlainNamesAlone)
{
    put("a");
    makeFolder("d");
    for (const char* name : { "", ".", "..", "d/x", "/x" })
        EXPECT_EQ(duplicate("a", name), "-37") << name;
    EXPECT_EQ(duplicate("a", std::u16string_view(u"x\0y", 3)), "-37");
    EXPECT_EQ(move("a", nullptr), "-37");
    EXPECT_EQ(names(), "a d");
}

TEST_F(LUMFileManagerSafeTest, TellsWhatIsMissing)
{
    EXPECT_EQ(duplicate("none", "b"), "-43");
    NSRef<NSError> error;
    put("a");
    EXPECT_FALSE(LUMFileManager_Safe::moveFileRef(ref("a"), nullptr, "b", &error));
    EXPECT_EQ(error->code(), -43);
    EXPECT_FALSE(LUMFileManager_Safe::moveFileRef(ref("a"), ref("a"), "b", &error));
    EXPECT_EQ(error->code(), -120);
    EXPECT_FALSE(LUMFileManager_Safe::moveFileRef(ref("a"), ref("a"), "b"));
}

TEST_F(LUMFileManagerSafeTest, MakesAFolderOrAnswersTheOneThatIsThere)
{
    EXPECT_EQ(makeFolderAt(path("d")), "d");
    EXPECT_EQ(makeFolderAt(path("d/")), "d");
    fs::create_directory_symlink("d", folder / "link");
    EXPECT_EQ(makeFolderAt(path("link")), "d");
}

TEST_F(LUMFileManagerSafeTest, TellsWhyThereIsNoFolder)
{
    put("file");
    fs::create_symlink("nowhere", folder / "dangling");
    EXPECT_EQ(makeFolderAt(path("none/d")), "-43");
    EXPECT_EQ(makeFolderAt(path("file")), "-48");
    EXPECT_EQ(makeFolderAt(path("file/d")), "-120");
    EXPECT_EQ(makeFolderAt(path("dangling")), "-43");
    EXPECT_EQ(makeFolderAt(nullptr), "-43");
    EXPECT_EQ(names(), "dangling file");
}

}
