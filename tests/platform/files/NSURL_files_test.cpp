#include "LUMPlatform/NSURL.h"

#include "LUMPlatform/NSString.h"
#include "platform/files/file_reference_form.h"
#include "tests/fixture.h"
#include "tests/temporary_folder.h"

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

/// Knows one file, by the identity "7".
class OneFile : public platform::FileReferenceForm {
public:
    std::string identityAt(const std::string& path) override { return path == file ? "7" : ""; }
    std::string pathOf(std::string_view identity) override { return identity == "7" ? file : ""; }

    std::string file;
};

class NSURLFilesTest : public ObjectTest {
protected:
    static std::string urlOf(const std::string& path)
    {
        const auto url = NSURL::fileURLWithPath(path);
        return url ? url->absoluteString()->utf8() : "(null)";
    }

private:
    const TemporaryFolder mFolder;

protected:
    const fs::path folder = mFolder.path();
    const std::string text = "file://" + folder.string();
};

TEST_F(NSURLFilesTest, EndsWithASlashForAFolderThatIsThere)
{
    fs::create_directory(folder / "d");
    std::ofstream(folder / "f") << "x";
    fs::create_directory_symlink("d", folder / "link");
    EXPECT_EQ(urlOf(folder / "d"), text + "/d/");
    EXPECT_EQ(urlOf(folder / "link"), text + "/link/");
    EXPECT_EQ(urlOf(folder / "f"), text + "/f");
    EXPECT_EQ(urlOf(folder / "none"), text + "/none");
    EXPECT_EQ(urlOf("/"), "file:///");
}

TEST_F(NSURLFilesTest, EndsWithASlashWhenThePathDoes)
{
    EXPECT_EQ(urlOf(folder.string() + "/none/"), text + "/none/");
}

TEST_F(NSURLFilesTest, EscapesWhatWouldMeanSomethingElse)
{
    for (const char* name :
        { "a b", "100%", "a?b", "a#b", "a;b", "[x]", "caf\xC3\xA9", "a:b", "a\\b", "~" }) {
        const auto url = NSURL::fileURLWithPath((folder / name).string());
        EXPECT_EQ(url->path()->utf8(), (folder / name).string());
        EXPECT_FALSE(url->query()) << name;
        EXPECT_FALSE(url->fragment()) << name;
    }
    EXPECT_EQ(urlOf(folder / "a?b;c%20"), text + "/a%3Fb%3Bc%2520");
}

TEST_F(NSURLFilesTest, HasSingleSlashes)
{
    EXPECT_EQ(urlOf("//" + folder.string().substr(1) + "//x"), text + "/x");
}

TEST_F(NSURLFilesTest, StartsARelativePathAtTheCurrentFolder)
{
    const std::string here = fs::current_path();
    EXPECT_EQ(NSURL::fileURLWithPath("no such name")->path()->utf8(),
        here == "/" ? "/no such name" : here + "/no such name");
}

TEST_F(NSURLFilesTest, IsNotMadeOfWhatNamesNothing)
{
    EXPECT_FALSE(NSURL::fileURLWithPath(nullptr));
    EXPECT_FALSE(NSURL::fileURLWithPath(""));
    EXPECT_FALSE(NSURL::fileURLWithPath(std::u16string_view(u"/a\0b", 4)));
    EXPECT_FALSE(NSURL::fileURLWithPath(std::u16string_view(u"/\xD800", 2)));
}

TEST_F(NSURLFilesTest, LiesInsideTheFolderThatIsItsBase)
{
    const auto base = NSURL::fileURLWithPath(folder.string());
    EXPECT_EQ(NSURL::URLWithString("Contents/", base)->path()->utf8(), folder.string() + "/Contents");
}

TEST_F(NSURLFilesTest, TakesAPathThatLooksLikeAReferenceForAPath)
{
    const auto url = NSURL::fileURLWithPath("/.file/id=1");
    EXPECT_FALSE(url->isFileReferenceURL());
    EXPECT_EQ(url->path()->utf8(), "/.file/id=1");
}

class NSURLReferenceTest : public NSURLFilesTest {
protected:
    NSURLReferenceTest() : before(platform::FileReferenceForm::current())
    {
        form.file = folder / "a";
        platform::FileReferenceForm::use(&form);
    }
    ~NSURLReferenceTest() override { platform::FileReferenceForm::use(before); }

    OneFile form;
    platform::FileReferenceForm* before;
};

TEST_F(NSURLReferenceTest, NamesAFileByItsIdentity)
{
    const auto reference = NSURL::fileURLWithPath(form.file)->fileReferenceURL();
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->absoluteString()->utf8(), "file:///.file/id=7");
    EXPECT_TRUE(reference->isFileReferenceURL());
    EXPECT_TRUE(reference->isFileURL());
    EXPECT_TRUE(reference->fileReferenceURL() == reference);
}

TEST_F(NSURLReferenceTest, TellsWhereTheFileIsNow)
{
    const auto reference = NSURL::fileURLWithPath(form.file)->fileReferenceURL();
    form.file = folder / "b.txt";
    EXPECT_EQ(reference->path()->utf8(), form.file);
    EXPECT_EQ(reference->lastPathComponent()->utf8(), "b.txt");
    EXPECT_EQ(reference->filePathURL()->absoluteString()->utf8(), text + "/b.txt");
}

TEST_F(NSURLReferenceTest, HasNoPathOnceTheFileIsGone)
{
    const auto reference = NSURL::fileURLWithPath(form.file)->fileReferenceURL();
    form.file.clear();
    EXPECT_FALSE(reference->path());
    EXPECT_FALSE(reference->filePathURL());
    EXPECT_FALSE(reference->fileReferenceURL());
    EXPECT_FALSE(NSURL::URLWithString("file:///.file/id=8")->path());
}

TEST_F(NSURLReferenceTest, IsItsOwnPathUrlWithoutAReference)
{
    const auto plain = NSURL::fileURLWithPath(form.file);
    EXPECT_TRUE(plain->filePathURL() == plain);
}

TEST_F(NSURLReferenceTest, HasNoReferenceToNothing)
{
    EXPECT_FALSE(NSURL::fileURLWithPath((folder / "none").string())->fileReferenceURL());
    EXPECT_FALSE(NSURL::URLWithString("http://a/b")->fileReferenceURL());
    EXPECT_FALSE(NSURL::URLWithString("http://a/b")->filePathURL());
    EXPECT_FALSE(NSURL::URLWithString("file:///a%FF")->fileReferenceURL());
}

TEST_F(NSURLReferenceTest, HasNoReferenceWhenNobodyKnowsIdentities)
{
    platform::FileReferenceForm::use(nullptr);
    EXPECT_FALSE(NSURL::fileURLWithPath(form.file)->fileReferenceURL());
    EXPECT_FALSE(NSURL::URLWithString("file:///.file/id=7")->path());
}

}
