#include "tests/document/bundle_fixture.h"

namespace {

class LUMDocumentBundleResourcesTest : public BundleTest {
protected:
    NSRef<NSURL> urlAt(const std::string& name) const { return NSURL::fileURLWithPath(at(name)); }
    std::string pathOf(const NSRef<NSURL>& url) const
    {
        const std::string path = url ? url->path()->utf8() : "null";
        const std::string start = (folder / "doc/").string();
        return path.starts_with(start) ? path.substr(start.size()) : path;
    }
};

TEST_F(LUMDocumentBundleResourcesTest, HaveUrlsByNameTypeAndFolder)
{
    EXPECT_EQ(
        pathOf(bundle->urlForResource("pic", "png", "thumbs", true)), "Contents/Resources/thumbs/pic.png");
    EXPECT_TRUE(isThere("doc/Contents/Resources/thumbs"));
    EXPECT_EQ(pathOf(bundle->urlForResource("pic", nullptr, nullptr, false)), "Contents/Resources/pic");
    EXPECT_EQ(pathOf(bundle->urlForResourceDomain("pic", "png", "a/b", "x", false)),
        "Contents/x/Resources/a/b/pic.png");
    EXPECT_FALSE(isThere("doc/Contents/x"));
}

// Deliberate: given by name the document's own domain has an area of its own.
TEST_F(LUMDocumentBundleResourcesTest, DeliberatelyTheDocumentDomainByNameIsAnotherArea)
{
    EXPECT_EQ(
        pathOf(bundle->urlForResourceDomain("pic", "png", "thumbs", LUMDocumentBundle_DocumentDomain, false)),
        "Contents/org.lumfoundation.documentbundle.domain.document/Resources/thumbs/pic.png");
}

TEST_F(LUMDocumentBundleResourcesTest, NamesAreEscapedInUrlsAndPlainOnDisk)
{
    auto url = bundle->urlForResource("a b%?#:\u00e9", "x", nullptr, false);
    EXPECT_TRUE(url->absoluteString()->utf8().ends_with("/Contents/Resources/a%20b%25%3F%23%3A%C3%A9.x"));
    EXPECT_EQ(pathOf(url), "Contents/Resources/a b%?#:\u00e9.x");
}

TEST_F(LUMDocumentBundleResourcesTest, WithoutANameTheUrlIsThatOfTheFolder)
{
    auto url = bundle->urlForResource(nullptr, "png", "thumbs", true);
    EXPECT_EQ(pathOf(url), "Contents/Resources/thumbs");
    EXPECT_TRUE(url->absoluteString()->utf8().ends_with("/"));
    EXPECT_TRUE(isThere("doc/Contents/Resources")); // the one above it alone
    EXPECT_FALSE(isThere("doc/Contents/Resources/thumbs"));
}

TEST_F(LUMDocumentBundleResourcesTest, AreCopiedIn)
{
    put("pic.png", "bytes");
    NSRef<NSError> error = NSError::errorWithDomain(NSOSStatusErrorDomain, 1);
    EXPECT_TRUE(bundle->copyResource(urlAt("pic.png"), "thumbs", nullptr, &error));
    EXPECT_FALSE(error);
    EXPECT_EQ(get("doc/Contents/Resources/thumbs/pic.png"), "bytes");
    EXPECT_TRUE(bundle->copyResourceDomain(urlAt("pic.png"), nullptr, "a b.png", "x"));
    EXPECT_EQ(get("doc/Contents/x/Resources/a b.png"), "bytes");
    EXPECT_EQ(get("pic.png"), "bytes");
    put("tree/leaf", "x");
    EXPECT_TRUE(bundle->copyResource(urlAt("tree"), nullptr, nullptr));
    EXPECT_EQ(get("doc/Contents/Resources/tree/leaf"), "x");
}

TEST_F(LUMDocumentBundleResourcesTest, AreMovedIn)
{
    put("pic.png", "bytes");
    EXPECT_TRUE(bundle->moveResource(urlAt("pic.png"), "thumbs", nullptr));
    EXPECT_EQ(get("doc/Contents/Resources/thumbs/pic.png"), "bytes");
    EXPECT_FALSE(isThere("pic.png"));
}

// Deliberate: what cannot be moved is copied, and counts as moved. A file of the kernel's own can only be
// read.
TEST_F(LUMDocumentBundleResourcesTest, DeliberatelyAMoveThatMustCopyLeavesTheSource)
{
    NSRef<NSError> error;
    EXPECT_TRUE(bundle->moveResource(NSURL::fileURLWithPath("/proc/version"), nullptr, nullptr, &error))
        << error;
    EXPECT_NE(get("doc/Contents/Resources/version"), "");
    EXPECT_TRUE(std::filesystem::exists("/proc/version"));
}

TEST_F(LUMDocumentBundleResourcesTest, NeverReplaceOneThatIsThere)
{
    put("pic.png", "new");
    put("doc/Contents/Resources/pic.png", "old");
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->copyResource(urlAt("pic.png"), nullptr, nullptr, &error));
    EXPECT_EQ(codeOf(error), 1);
    error = nullptr;
    EXPECT_FALSE(bundle->moveResource(urlAt("pic.png"), nullptr, nullptr, &error));
    EXPECT_EQ(codeOf(error), 1);
    EXPECT_EQ(get("pic.png"), "new");
    EXPECT_EQ(get("doc/Contents/Resources/pic.png"), "old");
    EXPECT_FALSE(bundle->copyResource(urlAt("none"), nullptr, nullptr, &error));
    EXPECT_EQ(codeOf(error), 1);
    EXPECT_FALSE(bundle->moveResource(urlAt("none"), nullptr, nullptr));
}

// Deliberate: see the comment at copyResourceDomain.
TEST_F(LUMDocumentBundleResourcesTest, DeliberatelyAUrlOfNoFileSucceedsAndDoesNothing)
{
    NSRef<NSError> error = NSError::errorWithDomain(NSOSStatusErrorDomain, 1);
    EXPECT_TRUE(bundle->copyResource(NSURL::URLWithString("http://a/b"), nullptr, nullptr, &error));
    EXPECT_FALSE(error);
    EXPECT_TRUE(bundle->moveResource(nullptr, nullptr, nullptr));
    EXPECT_FALSE(isThere("doc/Contents"));
}

TEST_F(LUMDocumentBundleResourcesTest, TheLastOneTakesItsFolderAlong)
{
    put("doc/Contents/Resources/thumbs/a.png", "a");
    put("doc/Contents/Resources/thumbs/.b", "b");
    EXPECT_TRUE(bundle->removeResource("a", "png", "thumbs"));
    EXPECT_TRUE(isThere("doc/Contents/Resources/thumbs/.b"));
    EXPECT_TRUE(bundle->removeResource(".b", nullptr, "thumbs"));
    EXPECT_FALSE(isThere("doc/Contents/Resources/thumbs"));
    EXPECT_TRUE(isThere("doc/Contents/Resources"));
}

// Deliberate: there is nothing left to be done.
TEST_F(LUMDocumentBundleResourcesTest, DeliberatelyRemovingAResourceThatIsNotThereSucceeds)
{
    NSRef<NSError> error;
    EXPECT_TRUE(bundle->removeResource("none", "png", "thumbs", &error));
    EXPECT_FALSE(error);
}

TEST_F(LUMDocumentBundleResourcesTest, AFolderWithANameThatIsNoTextIsNotEmpty)
{
    put("doc/Contents/Resources/thumbs/a.png", "a");
    put("doc/Contents/Resources/thumbs/\xff", "b");
    EXPECT_TRUE(bundle->removeResource("a", "png", "thumbs"));
    EXPECT_TRUE(isThere("doc/Contents/Resources/thumbs/\xff"));
}

TEST_F(LUMDocumentBundleResourcesTest, RemovingALinkRemovesTheLink)
{
    link("../../../../outside", "doc/Contents/Resources/thumbs/link");
    EXPECT_TRUE(bundle->removeResource("link", nullptr, "thumbs"));
    EXPECT_FALSE(isThere("doc/Contents/Resources/thumbs"));
    EXPECT_TRUE(isThere("outside/secret.plist"));
}

TEST_F(LUMDocumentBundleResourcesTest, AnEmptiedFolderThatIsALinkStaysAndTheLinkGoes)
{
    put("doc/Contents/Resources/real/a", "a");
    link("real", "doc/Contents/Resources/thumbs");
    EXPECT_TRUE(bundle->removeResource("a", nullptr, "thumbs"));
    EXPECT_FALSE(isThere("doc/Contents/Resources/thumbs"));
    EXPECT_TRUE(isThere("doc/Contents/Resources/real"));
    EXPECT_FALSE(isThere("doc/Contents/Resources/real/a"));
}

TEST_F(LUMDocumentBundleResourcesTest, NamesThatWouldLeaveTheBundleAreRefused)
{
    put("pic.png", "bytes");
    const auto refusals = [&](const NSRef<NSString>& name, const NSRef<NSString>& directory,
                              const NSRef<NSString>& domain) {
        EXPECT_FALSE(bundle->urlForResourceDomain(name, nullptr, directory, domain, true));
        NSRef<NSError> error;
        EXPECT_FALSE(bundle->copyResourceDomain(urlAt("pic.png"), directory, name, domain, &error));
        EXPECT_EQ(codeOf(error), -37);
        EXPECT_FALSE(bundle->moveResourceDomain(urlAt("pic.png"), directory, name, domain, &error));
        EXPECT_EQ(codeOf(error), -37);
        EXPECT_FALSE(bundle->removeResourceDomain(name, nullptr, directory, domain, &error));
        EXPECT_EQ(codeOf(error), -37);
    };
    for (const char* bad : { "../../../outside/secret.plist", "..", ".", "", "/tmp/x", "a/../../../../b" }) {
        refusals(bad, nullptr, nullptr);
        refusals("x", bad, nullptr);
        refusals("x", nullptr, bad);
    }
    EXPECT_FALSE(bundle->urlForResource("a", "x/../../../../../outside/secret", nullptr, true));
    EXPECT_FALSE(bundle->urlForResource("a", "/x", nullptr, true));
    EXPECT_TRUE(isThere("outside/secret.plist"));
    EXPECT_TRUE(isThere("pic.png"));
    EXPECT_FALSE(isThere("doc/Contents"));
}

TEST_F(LUMDocumentBundleResourcesTest, TypesThatWouldLeaveTheFolderAreRefused)
{
    put("doc/Contents/PkgInfo", "LUMdsong");
    put("doc/Contents/Resources/pic.x/leaf", "a");
    for (const char* type : { "x/%2e%2e/%2e%2e/%2e%2e/%2e%2e/outside/secret.plist",
             "x%2F..%2F..%2F..%2F..%2Foutside%2Fsecret.plist", "x/../../PkgInfo", "x%2fleaf", "/x", "%00",
             "a b" }) {
        EXPECT_FALSE(bundle->urlForResource("pic", type, nullptr, true)) << type;
        NSRef<NSError> error;
        EXPECT_FALSE(bundle->removeResource("pic", type, nullptr, &error)) << type;
        EXPECT_EQ(codeOf(error), -37) << type;
    }
    EXPECT_TRUE(isThere("outside/secret.plist"));
    EXPECT_TRUE(isThere("doc/Contents/PkgInfo"));
    EXPECT_TRUE(isThere("doc/Contents/Resources/pic.x/leaf"));
}

TEST_F(LUMDocumentBundleResourcesTest, DeliberatelyATypeIsTakenAsItStandsInAUrl)
{
    EXPECT_EQ(pathOf(bundle->urlForResource("pic", "p%6Eg", nullptr, false)), "Contents/Resources/pic.png");
    EXPECT_EQ(pathOf(bundle->urlForResource("pic", "png?a", nullptr, false)), "Contents/Resources/pic.png");
    EXPECT_EQ(pathOf(bundle->urlForResource("pic", "png#a", nullptr, false)), "Contents/Resources/pic.png");
    EXPECT_EQ(pathOf(bundle->urlForResource("pic", "", nullptr, false)), "Contents/Resources/pic");
}

TEST_F(LUMDocumentBundleResourcesTest, AFolderThatIsALinkToTheOutsideHasNoUrlAndIsRemovedItself)
{
    link("../../../outside", "doc/Contents/Resources/thumbs");
    EXPECT_FALSE(bundle->urlForResource(nullptr, nullptr, "thumbs", false));
    EXPECT_TRUE(bundle->removeResource(nullptr, nullptr, "thumbs"));
    EXPECT_FALSE(isThere("doc/Contents/Resources/thumbs"));
    EXPECT_TRUE(isThere("outside/secret.plist"));
}

TEST_F(LUMDocumentBundleResourcesTest, OfABundleThatIsGoneNothingIsPlacedOrRemoved)
{
    put("pic.png", "bytes");
    std::filesystem::remove_all(folder / "doc");
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->moveResource(urlAt("pic.png"), nullptr, nullptr, &error));
    EXPECT_EQ(codeOf(error), -43);
    EXPECT_FALSE(bundle->removeResource("pic", "png", nullptr, &error));
    EXPECT_EQ(codeOf(error), -43);
    EXPECT_EQ(get("pic.png"), "bytes");
}

TEST_F(LUMDocumentBundleResourcesTest, LinksThatLeadOutOfTheBundleAreRefused)
{
    put("pic.png", "bytes");
    link("../../../outside", "doc/Contents/Resources/thumbs");
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->urlForResource("secret", "plist", "thumbs", true));
    EXPECT_FALSE(bundle->copyResource(urlAt("pic.png"), "thumbs", nullptr, &error));
    EXPECT_EQ(codeOf(error), -5000);
    EXPECT_FALSE(bundle->removeResource("secret", "plist", "thumbs", &error));
    EXPECT_EQ(codeOf(error), -5000);
    EXPECT_TRUE(isThere("outside/secret.plist"));
    EXPECT_FALSE(isThere("outside/pic.png"));
}

TEST_F(LUMDocumentBundleResourcesTest, TypesAreTheFoldersOfTheArea)
{
    put("doc/Contents/Resources/thumbs/a", "a");
    put("doc/Contents/Resources/file", "b");
    put("doc/Contents/x/Resources/sounds/c", "c");
    put("doc/Contents/Resources/.hidden/d", "d");
    link("../../../outside", "doc/Contents/Resources/link");
    link("thumbs", "doc/Contents/Resources/second");
    EXPECT_THAT(
        bundle->resourceTypesInDomain(nullptr), Equals(NSArray::of(urlAt("doc/Contents/Resources/thumbs"))));
    EXPECT_THAT(
        bundle->resourceTypesInDomain("x"), Equals(NSArray::of(urlAt("doc/Contents/x/Resources/sounds"))));
    EXPECT_THAT(bundle->resourceTypesInDomain("none"), Equals(NSArray::array()));
    EXPECT_THAT(bundle->resourceTypesInDomain("../.."), Equals(NSArray::array()));
}

// Deliberate: it is what the caller put there that counts.
TEST_F(LUMDocumentBundleResourcesTest, DeliberatelyTypesAreNoneWhenTheErrorPointerHoldsAnError)
{
    put("doc/Contents/Resources/thumbs/a", "a");
    NSRef<NSError> error;
    EXPECT_EQ(bundle->resourceTypesInDomain(nullptr, &error)->count(), 1u);
    error = NSError::errorWithDomain(NSOSStatusErrorDomain, 1);
    EXPECT_EQ(bundle->resourceTypesInDomain(nullptr, &error)->count(), 0u);
}

// Deliberate: see the comment at urlsForResourcesOfType.
TEST_F(LUMDocumentBundleResourcesTest, DeliberatelyUrlsByTypeAreAlwaysNone)
{
    put("doc/Contents/Resources/thumbs/a.png", "a");
    EXPECT_THAT(bundle->urlsForResourcesOfType("png", "thumbs", nullptr), Equals(NSArray::array()));
}

}
