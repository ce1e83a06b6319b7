#include "LUMPlatform/NSURL.h"

#include "tests/platform/files/reference_fixture.h"

namespace {

class FileReferenceTextTest : public ReferenceTest {
protected:
    ~FileReferenceTextTest() override { FSReleaseDescriptors(); }

    static std::string pathOfUrl(const NSRef<NSURL>& url)
    {
        const auto path = url ? url->path() : nullptr;
        return path ? path->utf8() : "(null)";
    }
};

TEST_F(FileReferenceTextTest, AReferenceUrlFollowsItsFile)
{
    folder("a");
    const auto url = NSURL::fileURLWithPath(file("f"))->fileReferenceURL();
    ASSERT_TRUE(url);
    EXPECT_TRUE(url->isFileReferenceURL());
    EXPECT_EQ(pathOfUrl(url), at("f"));
    rename("f", "a/g");
    EXPECT_EQ(pathOfUrl(url), at("a/g"));
    EXPECT_EQ(pathOfUrl(url->filePathURL()), at("a/g"));
    EXPECT_EQ(pathOfUrl(NSURL::URLWithString(url->absoluteString())), at("a/g"));
}

TEST_F(FileReferenceTextTest, AReferenceUrlDoesNotTakeAnotherFileForItsOwn)
{
    const auto url = NSURL::fileURLWithPath(file("f"))->fileReferenceURL();
    file("new");
    rename("new", "f");
    EXPECT_EQ(pathOfUrl(url), "(null)");
}

TEST_F(FileReferenceTextTest, ThereIsNoneForWhatIsNotThere)
{
    EXPECT_FALSE(NSURL::fileURLWithPath(at("missing"))->fileReferenceURL());
}

TEST_F(FileReferenceTextTest, TextThatIsNoIdentityHasNoPath)
{
    const auto url = NSURL::fileURLWithPath(file("f"))->fileReferenceURL();
    const std::string text = url->absoluteString()->utf8();
    for (const std::string& damaged : { text.substr(0, text.size() - 1), text.substr(0, text.size() - 2),
             text + "00", text.substr(0, text.size() - 1) + "g", std::string("file:///.file/id=") })
        EXPECT_EQ(pathOfUrl(NSURL::URLWithString(damaged)), "(null)") << damaged;
}

}
