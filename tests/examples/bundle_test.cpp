#include "tests/examples/incoming_process.h"
#include "tests/temporary_folder.h"

#include "LUMFoundation/LUMDocumentBundle.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
using std::chrono::seconds;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Gives up the rights by which root reads everything, for the calling thread and the programs that it
/// starts.
void giveUpRightsOfRoot()
{
    __user_cap_header_struct header { _LINUX_CAPABILITY_VERSION_3, 0 };
    __user_cap_data_struct rights[2] = {};
    ASSERT_EQ(syscall(SYS_capget, &header, rights), 0);
    for (__u32* set : { &rights[0].effective, &rights[0].permitted, &rights[0].inheritable })
        *set &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
    ASSERT_EQ(syscall(SYS_capset, &header, rights), 0);
    ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0); // or root would get them back with the next program
}

/// A bundle of three files that were taken in, and the inspector.
class BundleTest : public testing::Test {
protected:
    BundleTest()
    {
        std::string made = (fs::temp_directory_path() / "bundle-test-XXXXXX").string();
        mScratch = mkdtemp(made.data());
        fs::create_directory(mScratch / "drop");
        for (const char* name : { "one", "two", "three" })
            std::ofstream(mScratch / "drop" / (std::string(name) + ".complete")) << "text of " << name;
        IncomingProcess incoming(LUM_INCOMING_PROGRAM,
            { (mScratch / "drop").string(), "--into", into().string(), "--count", "3" }, outputFile());
        EXPECT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
    }
    ~BundleTest() override { fs::remove_all(mScratch); }

    fs::path into() const { return mScratch / "into"; }
    fs::path bundle() const { return into() / "incoming.bundle"; }
    fs::path compressed(const std::string& name) const
    {
        return bundle() / "Contents/Resources/compressed" / (name + ".gz");
    }
    std::string outputFile() const { return (mScratch / "output").string(); }
    std::string output() const { return readFile(outputFile()); }
    int statusOf(const std::vector<std::string>& words) const
    {
        int status = -1;
        std::thread([&] {
            giveUpRightsOfRoot();
            IncomingProcess inspector(LUM_BUNDLE_PROGRAM, words, outputFile());
            status = inspector.statusWithin(seconds(60)).value_or(-1);
        }).join();
        return status;
    }
    int verified() const { return statusOf({ "verify", bundle().string() }); }
    void expectProblem(const std::string& text) const
    {
        EXPECT_EQ(verified(), 1);
        EXPECT_THAT(output(), HasSubstr(text));
        EXPECT_THAT(output(), Not(HasSubstr(" 0 problems")));
    }
    void put(const std::string& name, const std::string& text) const
    {
        fs::create_directories((bundle() / name).parent_path());
        std::ofstream(bundle() / name) << text;
    }
    void linkTo(const fs::path& target, const std::string& name) const
    {
        fs::remove_all(bundle() / name);
        fs::create_directories((bundle() / name).parent_path());
        fs::create_symlink(target, bundle() / name);
    }
    void forbid(const std::string& name) const { fs::permissions(bundle() / name, fs::perms::none); }

    fs::path mScratch;
};

TEST_F(BundleTest, ListsWhatIsThereByDomain)
{
    EXPECT_EQ(statusOf({ "list", bundle().string() }), 0);
    EXPECT_THAT(output(), HasSubstr("creator Inco, type Take\n"));
    EXPECT_THAT(output(),
        HasSubstr(
            "document\n  dictionary  6 entries\n  object      one\n  object      three\n  object      two\n"
            "  resource    compressed/one.gz"));
    EXPECT_THAT(output(), HasSubstr("digests\n  dictionary  3 entries\n"));
}

TEST_F(BundleTest, ListsWhatTheDocumentsDomainHasByItsName)
{
    const fs::path area =
        bundle() / "Contents" / NSRef<NSString>(LUMDocumentBundle_DocumentDomain)->utf8() / "Resources";
    fs::create_directories(area);
    std::ofstream(area / "note") << "text";
    EXPECT_EQ(statusOf({ "list", bundle().string() }), 0);
    EXPECT_THAT(output(), HasSubstr("resource    note, "));
}

TEST_F(BundleTest, ShowsARecordWithThePlaceOfItsSourceNow)
{
    fs::rename(into() / "originals-1", into() / "elsewhere");
    EXPECT_EQ(statusOf({ "show", bundle().string(), "two" }), 0);
    EXPECT_THAT(output(), HasSubstr("name    two\nsize    11\n"));
    EXPECT_THAT(output(), HasSubstr("source  " + (fs::canonical(into()) / "elsewhere/two").string()));
}

TEST_F(BundleTest, PrintsADictionaryAsAPropertyList)
{
    EXPECT_EQ(statusOf({ "plist", bundle().string(), "document" }), 0);
    EXPECT_THAT(output(), HasSubstr("<key>files</key>\n\t<integer>3</integer>"));
    EXPECT_EQ(statusOf({ "plist", bundle().string(), "digests" }), 0);
    EXPECT_THAT(output(), HasSubstr("<key>one</key>"));
}

TEST_F(BundleTest, SaysThatADictionaryHasNoXml)
{
    const auto odd = NSDictionary::of({ { "a", "\x01" } });
    const auto opened = LUMDocumentBundle::documentBundleWithPath(bundle().string(), false);
    EXPECT_TRUE(opened->setDictionaryForDomain(odd, "odd"));
    EXPECT_EQ(statusOf({ "plist", bundle().string(), "odd" }), 1);
    EXPECT_TRUE(output().starts_with("bundle: ")) << output();
}

TEST_F(BundleTest, LooksPastLinksThatLeadToThemselves)
{
    fs::create_symlink("round", bundle() / "Contents/Objects/round");
    fs::create_symlink("round.plist", bundle() / "Contents/round.plist");
    EXPECT_EQ(statusOf({ "list", bundle().string() }), 0);
    EXPECT_EQ(verified(), 0) << output(); // no object, and no domain
    fs::create_symlink("round.object", bundle() / "Contents/Objects/round.object");
    EXPECT_EQ(statusOf({ "list", bundle().string() }), 0);
    expectProblem("round: the object cannot be read: ");
    fs::remove(bundle() / "Contents/Objects/round.object");
    fs::remove(bundle() / "Contents/digests.plist");
    fs::create_symlink("digests.plist", bundle() / "Info.plist.new");
    fs::rename(bundle() / "Info.plist.new", bundle() / "Info.plist");
    EXPECT_EQ(verified(), 1);
    EXPECT_THAT(output(), HasSubstr("document: its dictionary cannot be read\n"));
}

TEST_F(BundleTest, FailsForWhatIsNotThere)
{
    EXPECT_EQ(statusOf({ "show", bundle().string(), "none" }), 1);
    EXPECT_EQ(statusOf({ "plist", bundle().string(), "none" }), 1);
    EXPECT_EQ(statusOf({ "list", (mScratch / "none").string() }), 1);
    EXPECT_EQ(statusOf({ "show", bundle().string(), "../../Info.plist" }), 1);
}

TEST_F(BundleTest, VerifiesABundleThatIsWhole)
{
    EXPECT_EQ(verified(), 0) << output();
    EXPECT_EQ(output(), "3 objects, 3 records of files, 0 problems\n");
}

TEST_F(BundleTest, VerifiesABundleThatWasMoved)
{
    fs::rename(bundle(), mScratch / "moved");
    EXPECT_EQ(statusOf({ "verify", (mScratch / "moved").string() }), 0) << output();
}

TEST_F(BundleTest, TellsOfAResourceThatIsMissingOrChanged)
{
    fs::remove(compressed("one"));
    fs::copy_file(compressed("three"), compressed("two"), fs::copy_options::overwrite_existing);
    EXPECT_EQ(verified(), 1);
    EXPECT_EQ(output(),
        "one: there is no compressed file that inflates\n"
        "two, compressed: not the bytes that the record tells of\n"
        "3 objects, 3 records of files, 2 problems\n");
}

TEST_F(BundleTest, TellsOfASourceThatIsGoneOrChanged)
{
    fs::remove(into() / "originals-1/one");
    std::ofstream(into() / "originals-1/two", std::ios::app) << "!";
    EXPECT_EQ(verified(), 1);
    EXPECT_THAT(output(), HasSubstr("one: the source is not found\n"));
    EXPECT_THAT(output(), HasSubstr("two, source: not the bytes that the record tells of\n"));
}

TEST_F(BundleTest, TellsOfAnObjectThatCannotBeRead)
{
    std::ofstream(bundle() / "Contents/Objects/one.object") << "no archive";
    EXPECT_EQ(verified(), 1);
    EXPECT_THAT(output(), HasSubstr("one: NSInvalidArgumentException: the data is no keyed archive\n"));
    EXPECT_THAT(output(), HasSubstr("one: a digest without a record\n")); // what it was is not known now
}

TEST_F(BundleTest, TellsOfAnObjectThatIsALinkLeadingOut)
{
    fs::rename(bundle() / "Contents/Objects/one.object", mScratch / "one.object");
    linkTo(mScratch / "one.object", "Contents/Objects/one.object");
    expectProblem("one: the object cannot be read: ");
    linkTo("none", "Contents/x/Objects/dangling.object");
    expectProblem("dangling: the object cannot be read: ");
    EXPECT_EQ(statusOf({ "show", bundle().string(), "one" }), 1);
    EXPECT_THAT(output(), HasSubstr("bundle: one: "));
}

TEST_F(BundleTest, TellsOfAFolderInThePlaceOfAnObject)
{
    put("Contents/Objects/four.object/sub/note", "");
    expectProblem("four: the object cannot be read: ");
}

TEST_F(BundleTest, TakesAFolderWithObjectsForPartOfTheirKeys)
{
    const auto opened = LUMDocumentBundle::documentBundleWithPath(bundle().string(), false);
    EXPECT_TRUE(opened->saveObject("text", "four.object/sub/five"));
    EXPECT_EQ(verified(), 0) << output();
    EXPECT_THAT(output(), HasSubstr("4 objects"));
}

TEST_F(BundleTest, TellsOfAnObjectThatMayNotBeRead)
{
    forbid("Contents/Objects/one.object");
    expectProblem("one: the object cannot be read: ");
}

TEST_F(BundleTest, TellsOfAFolderOfObjectsThatCannotBeListed)
{
    put("Contents/x/Objects", "a file");
    expectProblem("Contents/x/Objects: cannot be listed: ");
    fs::create_directory(mScratch / "elsewhere");
    linkTo(mScratch / "elsewhere", "Contents/x/Objects");
    expectProblem("x, objects: not reached within the bundle\n");
}

TEST_F(BundleTest, TellsOfFoldersThatMayNotBeListed)
{
    put("Contents/Objects/sub/note", "");
    forbid("Contents/Objects/sub");
    expectProblem("Contents/Objects/sub: cannot be listed: ");
    fs::permissions(bundle() / "Contents/Objects/sub", fs::perms::owner_all);
    fs::permissions(bundle() / "Contents/Objects", fs::perms::owner_exec);
    expectProblem("Contents/Objects: cannot be listed: ");
    fs::permissions(bundle() / "Contents/Objects", fs::perms::none);
    expectProblem("document, objects: not reached within the bundle\n");
    fs::permissions(bundle() / "Contents/Objects", fs::perms::owner_all);
    fs::permissions(bundle() / "Contents", fs::perms::owner_exec);
    expectProblem("Contents: cannot be listed: ");
    fs::permissions(bundle() / "Contents", fs::perms::owner_all);
}

TEST_F(BundleTest, TellsOfAResourceThatCannotBeRead)
{
    linkTo("none", "Contents/Resources/thumbs/dangling");
    expectProblem("thumbs/dangling: the resource cannot be read\n");
    put("Contents/x/Resources/note", "text");
    forbid("Contents/x/Resources/note");
    expectProblem("x/Resources/note: the resource cannot be read\n");
}

TEST_F(BundleTest, TellsOfAFolderOfResourcesThatCannotBeListed)
{
    put("Contents/x/Resources", "a file");
    expectProblem("Contents/x/Resources: cannot be listed: ");
    fs::create_directory(mScratch / "elsewhere");
    linkTo(mScratch / "elsewhere", "Contents/x/Resources");
    expectProblem("x, resources: not reached within the bundle\n");
}

TEST_F(BundleTest, TakesAResourceThatIsALinkForWhatItLeadsTo)
{
    std::ofstream(mScratch / "note") << "text";
    linkTo(mScratch / "note", "Contents/Resources/thumbs/note");
    EXPECT_EQ(verified(), 0) << output();
}

TEST_F(BundleTest, TellsOfCodesThatCannotBeRead)
{
    const std::string file = "Contents/PkgInfo";
    const std::string text = "PkgInfo: the codes cannot be read\n";
    put(file, "\xff\xff\xff\xff\xff\xff\xff\xff");
    expectProblem(text);
    std::ofstream(mScratch / "codes") << "LUMdsong";
    linkTo(mScratch / "codes", file);
    expectProblem(text);
    linkTo("none", file);
    expectProblem(text);
    fs::remove(bundle() / file);
    EXPECT_EQ(verified(), 0) << output(); // none are no problem
    put(file, "");
    EXPECT_EQ(verified(), 0) << output();
    fs::remove(bundle() / file);
    fs::create_directory(bundle() / file);
    expectProblem(text);
}

TEST_F(BundleTest, TellsOfCodesThatMayNotBeRead)
{
    forbid("Contents/PkgInfo");
    expectProblem("PkgInfo: the codes cannot be read\n");
}

TEST_F(BundleTest, TellsOfADictionaryThatCannotBeRead)
{
    std::ofstream(bundle() / "Contents/digests.plist") << "(";
    EXPECT_EQ(verified(), 1);
    EXPECT_THAT(output(), HasSubstr("digests: its dictionary cannot be read\n"));
}

TEST_F(BundleTest, ExplainsItselfWhenTheWordsMakeNoSense)
{
    EXPECT_EQ(statusOf({}), 2);
    EXPECT_EQ(statusOf({ "show", bundle().string() }), 2);
    EXPECT_EQ(statusOf({ "erase", bundle().string() }), 2);
    EXPECT_THAT(output(), HasSubstr("bundle verify BUNDLE"));
    EXPECT_EQ(statusOf({ "--help" }), 0);
}

}
