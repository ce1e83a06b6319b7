#include "LUMPlatform/FSCatalog.h"

#include "tests/platform/files/faulty_node_system.h"
#include "tests/platform/files/reference_fixture.h"

#include <cerrno>
#include <cstring>

namespace fs = std::filesystem;
using namespace std::string_view_literals;

namespace {

class FSCatalogChangesTest : public ReferenceTest {
protected:
    std::string textOf(const std::string& name) const
    {
        std::string text;
        std::getline(std::ifstream(at(name)), text);
        return text;
    }
};

TEST_F(FSCatalogChangesTest, ARenamedObjectIsReferredToByItsNewName)
{
    FSRef ref = refTo(file("f"));
    const FSRef other = refTo(at("f"));
    FSRef renamed;
    EXPECT_EQ(FSRenameUnicode(ref, u"Größe 漢字 😀", &renamed), 0);
    EXPECT_EQ(pathOf(renamed), at("Größe 漢字 😀"));
    EXPECT_EQ(pathOf(other), at("Größe 漢字 😀"));
    EXPECT_EQ(FSCompareFSRefs(renamed, ref), 0);
    EXPECT_EQ(FSRenameUnicode(ref, u"g", &ref), 0);
    EXPECT_EQ(pathOf(ref), at("g"));
    EXPECT_EQ(FSRenameUnicode(ref, u"h", nullptr), 0);
    EXPECT_EQ(pathOf(ref), at("h"));
}

TEST_F(FSCatalogChangesTest, AMovedObjectIsRenamedWhereItIs)
{
    folder("a");
    const FSRef ref = letGo(refTo(file("f")));
    rename("f", "a/f");
    EXPECT_EQ(FSRenameUnicode(ref, u"g", nullptr), 0);
    EXPECT_TRUE(fs::exists(at("a/g")));
}

TEST_F(FSCatalogChangesTest, FoldersAndLinksAreRenamedThemselves)
{
    folder("a");
    fs::create_symlink("a", at("alias"));
    EXPECT_EQ(FSRenameUnicode(refTo(at("alias")), u"link", nullptr), 0);
    EXPECT_EQ(FSRenameUnicode(refTo(at("a")), u"b", nullptr), 0);
    EXPECT_TRUE(fs::is_symlink(at("link")));
    EXPECT_TRUE(fs::is_directory(at("b")));
}

TEST_F(FSCatalogChangesTest, AnExistingNameIsRefusedAndReplacesNothing)
{
    file("g", "other");
    folder("empty");
    fs::create_symlink("nowhere", at("alias"));
    FSRef ref = refTo(file("f", "own"));
    EXPECT_EQ(FSRenameUnicode(ref, u"g", &ref), -48);
    EXPECT_EQ(FSRenameUnicode(ref, u"empty", &ref), -48);
    EXPECT_EQ(FSRenameUnicode(ref, u"alias", &ref), -48);
    EXPECT_EQ(FSRenameUnicode(refTo(folder("a")), u"empty", nullptr), -48);
    EXPECT_EQ(pathOf(ref), at("f"));
    EXPECT_EQ(textOf("f"), "own");
    EXPECT_EQ(textOf("g"), "other");
}

TEST_F(FSCatalogChangesTest, TheOwnNameIsNoChange)
{
    const FSRef ref = refTo(file("f"));
    EXPECT_EQ(FSRenameUnicode(ref, u"f", nullptr), 0);
    EXPECT_EQ(pathOf(ref), at("f"));
}

TEST_F(FSCatalogChangesTest, NamesThatNothingCanHaveAreRefused)
{
    const FSRef above = refTo(mFolder.string());
    const FSRef ref = refTo(file("f"));
    const std::u16string tooLong(256, u'n');
    for (const std::u16string_view name :
        { u""sv, u"."sv, u".."sv, u"a/b"sv, u"/"sv, u"a\0b"sv, u"\xD800"sv, std::u16string_view(tooLong) }) {
        EXPECT_EQ(FSRenameUnicode(ref, name, nullptr), -37);
        EXPECT_EQ(FSCreateFileUnicode(above, name, nullptr), -37);
        EXPECT_EQ(FSCreateDirectoryUnicode(above, name, nullptr), -37);
    }
    EXPECT_EQ(pathOf(ref), at("f"));
}

TEST_F(FSCatalogChangesTest, WhatIsGoneOrNothingOrTheRootIsNotRenamed)
{
    const FSRef gone = refTo(file("f"));
    remove("f");
    EXPECT_EQ(FSRenameUnicode(gone, u"g", nullptr), -43);
    EXPECT_EQ(FSRenameUnicode(FSRef(), u"g", nullptr), -43);
    EXPECT_EQ(FSRenameUnicode(refTo("/"), u"g", nullptr), -47);
}

TEST_F(FSCatalogChangesTest, FilesAndFoldersAreMade)
{
    const FSRef above = refTo(mFolder.string());
    FSRef made;
    EXPECT_EQ(FSCreateFileUnicode(above, u"f", &made), 0);
    EXPECT_EQ(pathOf(made), at("f"));
    EXPECT_TRUE(fs::is_regular_file(at("f")) && fs::is_empty(at("f")));
    EXPECT_EQ(FSCreateDirectoryUnicode(above, u"a", &made), 0);
    EXPECT_EQ(pathOf(made), at("a"));
    EXPECT_TRUE(fs::is_directory(at("a")));
    EXPECT_EQ(FSCreateFileUnicode(letGo(made), u"g", nullptr), 0);
    EXPECT_TRUE(fs::exists(at("a/g")));
}

TEST_F(FSCatalogChangesTest, DescriptorsAreGivenBackForAFileToBeMade)
{
    const FSRef above = refTo(mFolder.string());
    const FSRef held = refTo(file("held"));
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::Change, EMFILE, 0, false);
    FSRef made;
    EXPECT_EQ(FSCreateFileUnicode(above, u"f", &made), 0);
    EXPECT_EQ(pathOf(made), at("f"));
}

/// Moves a folder away as soon as something was made in it, and puts another one there.
class SwappingSystem final : public FaultyNodeSystem {
public:
    explicit SwappingSystem(std::string folder) : mFolder(std::move(folder)) { }

    int createFile(int folder, const char* name) override
    {
        const int problem = FaultyNodeSystem::createFile(folder, name);
        fs::rename(mFolder, mFolder + " moved");
        fs::create_directory(mFolder);
        std::ofstream(mFolder + "/" + name) << "another";
        return problem;
    }

private:
    const std::string mFolder;
};

TEST_F(FSCatalogChangesTest, WhatWasMadeIsMeantThoughItsFolderIsMovedMeanwhile)
{
    const FSRef above = refTo(folder("a"));
    const SwappingSystem system(at("a"));
    FSRef made;
    EXPECT_EQ(FSCreateFileUnicode(above, u"f", &made), 0);
    EXPECT_EQ(pathOf(made), at("a moved/f"));
}

TEST_F(FSCatalogChangesTest, WhatIsThereIsNotMadeAgain)
{
    file("f", "own");
    fs::create_symlink("nowhere", at("alias"));
    const FSRef above = refTo(mFolder.string());
    FSRef made;
    EXPECT_EQ(FSCreateFileUnicode(above, u"f", &made), -48);
    EXPECT_EQ(FSCreateDirectoryUnicode(above, u"f", &made), -48);
    EXPECT_EQ(FSCreateFileUnicode(above, u"alias", &made), -48);
    EXPECT_FALSE(made);
    EXPECT_EQ(textOf("f"), "own");
    EXPECT_FALSE(fs::exists(at("nowhere")));
}

TEST_F(FSCatalogChangesTest, NothingIsMadeInWhatIsNoFolder)
{
    EXPECT_EQ(FSCreateFileUnicode(refTo(file("f")), u"g", nullptr), -120);
    EXPECT_EQ(FSCreateFileUnicode(FSRef(), u"g", nullptr), -43);
    const FSRef gone = refTo(folder("a"));
    remove("a");
    EXPECT_EQ(FSCreateDirectoryUnicode(gone, u"g", nullptr), -43);
}

class FSRenameByHandTest : public FSCatalogChangesTest, public testing::WithParamInterface<int> { };

TEST_P(FSRenameByHandTest, RenamesWhereTheSystemCannotRefuseToReplace)
{
    folder("a");
    file("a/below");
    folder("empty");
    file("taken", "other");
    fs::create_symlink("f", at("alias"));
    const FSRef a = refTo(at("a"));
    const FSRef f = refTo(file("f"));
    const FSRef alias = refTo(at("alias"));
    FaultyNodeSystem system;
    system.fail(FaultyNodeSystem::Change, GetParam());
    for (const FSRef& ref : { a, f, alias }) {
        EXPECT_EQ(FSRenameUnicode(ref, u"taken", nullptr), -48);
        EXPECT_EQ(FSRenameUnicode(ref, u"empty", nullptr), -48);
    }
    EXPECT_EQ(FSRenameUnicode(a, u"b", nullptr), 0);
    EXPECT_EQ(FSRenameUnicode(f, u"g", nullptr), 0);
    EXPECT_EQ(FSRenameUnicode(alias, u"link", nullptr), 0);
    EXPECT_EQ(textOf("b/below"), "text");
    EXPECT_EQ(textOf("g"), "text");
    EXPECT_TRUE(fs::is_symlink(at("link")));
    EXPECT_EQ(textOf("taken"), "other");
    EXPECT_FALSE(fs::exists(at("a")) || fs::exists(at("f")) || fs::is_symlink(at("alias")));
}

INSTANTIATE_TEST_SUITE_P(Refusals, FSRenameByHandTest, testing::Values(EINVAL, ENOSYS),
    [](const auto& refusal) { return std::string(strerrorname_np(refusal.param)); });

TEST_F(FSCatalogChangesTest, TellWhatTheSystemSays)
{
    const FSRef above = refTo(mFolder.string());
    const FSRef ref = refTo(file("f"));
    FaultyNodeSystem system;
    const std::pair<int, OSStatus> said[] = { { ENOSPC, -34 }, { EDQUOT, -34 }, { EROFS, -44 },
        { EACCES, -5000 }, { EIO, -36 }, { EXDEV, -1303 }, { EBUSY, -47 } };
    for (const auto& [error, status] : said) {
        system.fail(FaultyNodeSystem::Change, error);
        EXPECT_EQ(FSRenameUnicode(ref, u"g", nullptr), status);
        EXPECT_EQ(FSCreateFileUnicode(above, u"g", nullptr), status);
        EXPECT_EQ(FSCreateDirectoryUnicode(above, u"g", nullptr), status);
    }
}

}
