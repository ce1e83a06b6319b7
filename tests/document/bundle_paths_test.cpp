#include "document/bundle_paths.h"

#include "tests/document/bundle_fixture.h"

namespace {

class BundlePathsTest : public BundleTest {
protected:
    bool isReached(const std::string& name, bool mayEndInLink = false) const
    {
        return lum::isReachedInside(at("doc"), at("doc/" + name), mayEndInLink);
    }
};

TEST_F(BundlePathsTest, NamesLeadDown)
{
    for (const char* name : { "a", "a/b", "a/", "a//b", ".a", "a..b", "...", "~", "C:" })
        EXPECT_TRUE(lum::staysInside(name)) << name;
    for (const char* name : { "", "/", "/a", ".", "..", "a/..", "../a", "a/./b", "./a" })
        EXPECT_FALSE(lum::staysInside(name)) << name;
    EXPECT_FALSE(lum::staysInside(std::string_view("a\0b", 3)));
    EXPECT_FALSE(lum::staysInside(std::u16string_view(u"a\xd800")));
    EXPECT_FALSE(lum::staysInside(nullptr));
    EXPECT_TRUE(lum::staysInsideOrNull(nullptr));
    EXPECT_FALSE(lum::staysInsideOrNull(""));
}

TEST_F(BundlePathsTest, NoTwoNamesThatStandAloneShareAPlace)
{
    for (const char* name : { "a", "a/b", ".a", "a b" })
        EXPECT_TRUE(lum::staysInsideAlone(name)) << name;
    for (const char* name : { "a/", "a//", "a//b", "", "/", "..", "a/.." })
        EXPECT_FALSE(lum::staysInsideAlone(name)) << name;
    EXPECT_FALSE(lum::staysInsideAlone(nullptr));
    EXPECT_TRUE(lum::staysInsideAloneOrNull(nullptr));
    EXPECT_FALSE(lum::staysInsideAloneOrNull("a/"));
}

TEST_F(BundlePathsTest, ExtensionsStayInTheName)
{
    for (const char* extension : { "png", "", "..", "tar.gz", "p%6Eg", "a?b", "~" })
        EXPECT_TRUE(lum::staysInName(extension)) << extension;
    for (const char* extension : { "/", "a/b", "a%2Fb", "a%2fb", "%00", "%", "%4", "%ff" })
        EXPECT_FALSE(lum::staysInName(extension)) << extension;
    EXPECT_TRUE(lum::staysInName(nullptr));
}

TEST_F(BundlePathsTest, NoPlaceIsReachedByGoingUp)
{
    put("doc/a/b", "");
    EXPECT_FALSE(isReached("a/../../outside"));
    EXPECT_FALSE(isReached("none/../../outside"));
    EXPECT_FALSE(isReached("a/.."));
    EXPECT_TRUE(isReached("a/..b"));
}

TEST_F(BundlePathsTest, PlacesInsideAreReachedWhetherOrNotAnythingIsThere)
{
    put("doc/a/b", "");
    EXPECT_TRUE(isReached("a/b"));
    EXPECT_TRUE(isReached("a/c/d/e"));
    EXPECT_FALSE(isReached("../outside"));
    EXPECT_FALSE(lum::isReachedInside(at("none"), at("none/a")));
    EXPECT_TRUE(isReached(std::string(300, 'a')));
    EXPECT_FALSE(lum::isReachedInside(nullptr, at("doc/a")));
    EXPECT_FALSE(lum::isReachedInside(at("doc"), nullptr));
}

TEST_F(BundlePathsTest, LinksAreReachedWhenTheirTargetIsInside)
{
    put("doc/a/b", "");
    link("a", "doc/in");
    link("../outside", "doc/out");
    link("in", "doc/chain");
    link("out", "doc/badChain");
    link("nowhere", "doc/dangling");
    link("self", "doc/self");
    link((folder / "doc").string() + "-other", "doc/prefix");
    std::filesystem::create_directory(folder / "doc-other");
    EXPECT_TRUE(isReached("in/b"));
    EXPECT_TRUE(isReached("chain"));
    for (const char* name : { "out", "out/x", "badChain", "dangling", "self", "prefix" })
        EXPECT_FALSE(isReached(name)) << name;
    EXPECT_TRUE(isReached("out", true));
    EXPECT_TRUE(isReached("dangling", true));
    EXPECT_FALSE(isReached("out/x", true));
}

TEST_F(BundlePathsTest, EntriesAreThereThoughTheyLeadNowhere)
{
    link("nowhere", "doc/dangling");
    EXPECT_TRUE(lum::isEntryAt(at("doc/dangling")));
    EXPECT_FALSE(lum::isEntryAt(at("doc/none")));
    EXPECT_FALSE(lum::isEntryAt(nullptr));
}

}
