#include "LUMPlatform/NSURL.h"

#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"

namespace {

class NSURLTest : public ObjectTest {
protected:
    static NSRef<NSURL> url(const char* text, const NSRef<NSURL>& base = nullptr)
    {
        return NSURL::URLWithString(text, base);
    }
    static std::string text(const NSRef<NSString>& string) { return string ? string->utf8() : "(null)"; }
    /// The absolute text, or "(null)".
    static std::string absolute(const NSRef<NSURL>& url)
    {
        return url ? url->absoluteString()->utf8() : "(null)";
    }
};

TEST_F(NSURLTest, TellsItsParts)
{
    const auto whole = url("http://me@host.org:80/a%20b/c.txt?q=1#f");
    EXPECT_EQ(text(whole->scheme()), "http");
    EXPECT_EQ(text(whole->host()), "host.org");
    EXPECT_EQ(text(whole->path()), "/a b/c.txt");
    EXPECT_EQ(text(whole->query()), "q=1");
    EXPECT_EQ(text(whole->fragment()), "f");
    EXPECT_EQ(text(whole->lastPathComponent()), "c.txt");
    EXPECT_EQ(text(whole->pathExtension()), "txt");
}

TEST_F(NSURLTest, HasNullForPartsThatAreNotThere)
{
    const auto bare = url("a");
    EXPECT_FALSE(bare->scheme());
    EXPECT_FALSE(bare->host());
    EXPECT_FALSE(bare->query());
    EXPECT_FALSE(bare->fragment());
    EXPECT_FALSE(bare->baseURL());
}

TEST_F(NSURLTest, IsNotMadeOfWhatIsNoUrl)
{
    EXPECT_FALSE(url("a b"));
    EXPECT_FALSE(url("50%"));
    EXPECT_FALSE(url(""));
    EXPECT_FALSE(NSURL::URLWithString(nullptr));
    EXPECT_FALSE(NSURL::URLWithString(nullptr, url("file:///a")));
}

TEST_F(NSURLTest, IsSeenFromItsBase)
{
    const auto folder = url("file:///x/doc/");
    const auto inside = url("Contents/../Resources/a%20b", folder);
    EXPECT_EQ(absolute(inside), "file:///x/doc/Resources/a%20b");
    EXPECT_EQ(text(inside->relativeString()), "Contents/../Resources/a%20b");
    EXPECT_EQ(text(inside->path()), "/x/doc/Resources/a b");
    EXPECT_TRUE(inside->baseURL() == folder);
    EXPECT_TRUE(inside->isFileURL());
}

TEST_F(NSURLTest, TakesTheFolderOfABaseThatEndsWithoutASlash)
{
    EXPECT_EQ(absolute(url("Contents/", url("file:///x/doc"))), "file:///x/Contents/");
}

TEST_F(NSURLTest, IsItsBaseWhenTheTextIsEmpty)
{
    EXPECT_EQ(absolute(url("", url("file:///a/b"))), "file:///a/b");
}

TEST_F(NSURLTest, KeepsAWholeBase)
{
    const auto nested = url("c", url("b/", url("file:///a/")));
    EXPECT_EQ(absolute(nested), "file:///a/b/c");
    EXPECT_EQ(absolute(nested->baseURL()), "file:///a/b/");
    EXPECT_FALSE(nested->baseURL()->baseURL());
}

TEST_F(NSURLTest, NeedsNoBaseWhenItHasAScheme)
{
    EXPECT_FALSE(url("http://a/", url("file:///b"))->baseURL());
    EXPECT_EQ(absolute(url("http://a/", url("b"))), "http://a/");
}

TEST_F(NSURLTest, IsNotSeenFromABaseWithoutAScheme)
{
    EXPECT_FALSE(url("a", url("b/")));
}

TEST_F(NSURLTest, IsNotLongerThanTheLimitWithItsBase)
{
    const std::string half(600'000, 'a');
    const auto base = NSURL::URLWithString("file:///" + half + "/");
    EXPECT_TRUE(base);
    EXPECT_FALSE(NSURL::URLWithString(half, base));
}

TEST_F(NSURLTest, DropsTheSlashAtTheEndOfItsPath)
{
    EXPECT_EQ(text(url("file:///a/b/")->path()), "/a/b");
    EXPECT_EQ(text(url("file:///")->path()), "/");
    EXPECT_EQ(text(url("http://host")->path()), "");
}

TEST_F(NSURLTest, HasNoPathWhereNoneCanBe)
{
    EXPECT_FALSE(url("mailto:me")->path());
    EXPECT_FALSE(url("mailto:me")->lastPathComponent());
    EXPECT_FALSE(url("mailto:me")->pathExtension());
    EXPECT_FALSE(url("file:a")->path());
    EXPECT_FALSE(url("file:///a%FF")->path());
    EXPECT_FALSE(url("file:///a%00b")->path());
}

TEST_F(NSURLTest, IsAFileUrlByItsSchemeOnThisHost)
{
    EXPECT_TRUE(url("file:///a")->isFileURL());
    EXPECT_TRUE(url("FILE:/a")->isFileURL());
    EXPECT_TRUE(url("file://LocalHost/a")->isFileURL());
    EXPECT_EQ(text(url("file://localhost/a%2Bb")->path()), "/a+b");
    EXPECT_FALSE(url("file://elsewhere/a")->isFileURL());
    EXPECT_FALSE(url("http:///a")->isFileURL());
    EXPECT_FALSE(url("/a")->isFileURL());
}

TEST_F(NSURLTest, EqualsByTextAndBase)
{
    EXPECT_TRUE(NSEqual(url("file:///a"), url("file:///a")));
    EXPECT_EQ(url("file:///a")->hash(), url("file:///a")->hash());
    EXPECT_TRUE(NSEqual(url("b", url("file:///a/")), url("b", url("file:///a/"))));
    EXPECT_FALSE(NSEqual(url("b", url("file:///a/")), url("b", url("file:///c/"))));
    EXPECT_FALSE(NSEqual(url("b", url("file:///a/")), url("file:///a/b")));
    EXPECT_FALSE(url("file:///a")->isEqual("file:///a"));
    EXPECT_FALSE(url("file:///a")->isEqual(nullptr));
}

TEST_F(NSURLTest, IsMadeAbsolute)
{
    const auto relative = url("b", url("file:///a/"));
    EXPECT_TRUE(NSEqual(relative->absoluteURL(), url("file:///a/b")));
    const auto whole = url("file:///a");
    EXPECT_TRUE(whole->absoluteURL() == whole);
}

TEST_F(NSURLTest, DoesNotChangeWithTheTextItCameFrom)
{
    const auto changing = NSMutableString::stringWithString("file:///a");
    const auto made = NSURL::URLWithString(changing);
    changing->appendString("/b");
    EXPECT_EQ(absolute(made), "file:///a");
}

TEST_F(NSURLTest, CopiesToItself)
{
    const auto whole = url("file:///a");
    EXPECT_TRUE(whole->copy() == whole);
}

TEST_F(NSURLTest, DescribesItself)
{
    EXPECT_EQ(url("file:///a")->description()->utf8(), "file:///a");
    EXPECT_EQ(url("b", url("file:///a/"))->description()->utf8(), "b -- file:///a/");
}

TEST_F(NSURLTest, AnswersItsSelectors)
{
    const auto whole = url("file:///a/b.c");
    EXPECT_EQ(NSSend<NSRef<NSString>>(whole, NSSelector("path"))->utf8(), "/a/b.c");
    EXPECT_TRUE(NSSend<bool>(whole, NSSelector("isFileURL")));
}

}
