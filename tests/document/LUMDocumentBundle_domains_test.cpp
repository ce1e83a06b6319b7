#include "tests/document/bundle_fixture.h"

#include <set>

namespace {

class LUMDocumentBundleDomainsTest : public BundleTest {
protected:
    static constexpr const char* kOwn = "org.lumfoundation.documentbundle.domain.document";

    std::multiset<std::string> present() const
    {
        std::multiset<std::string> domains;
        for (const NSId& domain : bundle->presentDomains())
            domains.insert(domain->description()->utf8());
        return domains;
    }
    using Names = std::multiset<std::string>;
};

TEST_F(LUMDocumentBundleDomainsTest, ArePresentOnceWhenTheyHaveAnything)
{
    EXPECT_EQ(present(), Names());
    put("doc/Info.plist", "{}");
    EXPECT_EQ(present(), Names());
    put("doc/Contents/PkgInfo", "LUMdsong");
    put("doc/Contents/x.plist", "{}");
    put("doc/Contents/x/Objects/a.object", "");
    put("doc/Contents/y/Resources/a", "");
    put("doc/Contents/Objects/a.object", "");
    put("doc/Contents/Resources/a", "");
    EXPECT_EQ(present(), (Names { "x", "y", kOwn }));
}

TEST_F(LUMDocumentBundleDomainsTest, AreInTheOrderOfTheListing)
{
    for (const char* name : { "m", "a", "z", "c", "x" })
        put(std::string("doc/Contents/") + name + "/Resources/a", "");
    std::vector<NSId> listed;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "doc/Contents"))
        listed.emplace_back(NSRef<NSString>(entry.path().filename().string()));
    EXPECT_THAT(bundle->presentDomains(), Equals(NSArray::arrayWithObjects(listed)));
}

TEST_F(LUMDocumentBundleDomainsTest, ADictionaryCalledInfoIsTheDocuments)
{
    put("doc/Contents/Info.plist", "{}");
    EXPECT_EQ(present(), Names { kOwn });
}

TEST_F(LUMDocumentBundleDomainsTest, LinksAreNone)
{
    std::filesystem::create_directory(folder / "outside/inner");
    link("../../outside/inner", "doc/Contents/link");
    link("../../outside/secret.plist", "doc/Contents/secret.plist");
    link("nowhere", "doc/Contents/dangling.plist");
    link("Objects", "doc/Contents/y");
    EXPECT_EQ(present(), Names());
    std::filesystem::remove_all(folder / "doc/Contents");
    link("../outside", "doc/Contents");
    EXPECT_EQ(present(), Names());
}

TEST_F(LUMDocumentBundleDomainsTest, HiddenEntriesAreNone)
{
    put("doc/Contents/.x/Objects/a.object", "");
    EXPECT_EQ(present(), Names());
    put("doc/Contents/.y.plist", "{}");
    put("doc/Contents/z.plist", "{}");
    EXPECT_EQ(present(), Names { "z" });
}

TEST_F(LUMDocumentBundleDomainsTest, ThatAreNamedAsWhatBelongsToOthersLeaveItThere)
{
    put("doc/Contents/PkgInfo", "LUMdsong");
    put("doc/Contents/x.plist", "{}");
    put("doc/Contents/Objects/sub/a.object", "");
    put("doc/Contents/Resources/a", "");
    for (const char* domain : { "PkgInfo", "x.plist", "Objects", "Objects/sub", "Resources" })
        EXPECT_TRUE(bundle->removeDomain(domain)) << domain;
    EXPECT_FALSE(bundle->removeDomain("Objects/")); // no domain
    put("doc/Contents/Objects.plist", "{}");
    EXPECT_TRUE(bundle->removeNonDocumentDomains());
    EXPECT_FALSE(isThere("doc/Contents/Objects.plist"));
    EXPECT_FALSE(isThere("doc/Contents/x.plist"));
    EXPECT_TRUE(isThere("doc/Contents/PkgInfo"));
    EXPECT_TRUE(isThere("doc/Contents/Objects/sub/a.object"));
    EXPECT_TRUE(isThere("doc/Contents/Resources/a"));
}

TEST_F(LUMDocumentBundleDomainsTest, ADomainIsRemovedWhole)
{
    put("doc/Contents/x.plist", "{}");
    put("doc/Contents/x/Objects/a.object", "");
    put("doc/Contents/y.plist", "{}");
    NSRef<NSError> error;
    EXPECT_TRUE(bundle->removeDomain("x", &error));
    EXPECT_FALSE(error);
    EXPECT_EQ(present(), Names { "y" });
    EXPECT_TRUE(bundle->removeDomain("x", &error));
    EXPECT_TRUE(bundle->removeDomain("none", &error));
    EXPECT_FALSE(error);
}

TEST_F(LUMDocumentBundleDomainsTest, TheDocumentsOwnGoesWithoutWhatItsNameHas)
{
    put("doc/Info.plist", "{}");
    put("doc/Contents/Objects/a.object", "");
    put("doc/Contents/Resources/a", "");
    put("doc/Contents/PkgInfo", "LUMdsong");
    put(std::string("doc/Contents/") + kOwn + "/Resources/a", "");
    put("doc/Contents/x.plist", "{}");
    NSRef<NSError> error;
    EXPECT_TRUE(bundle->removeDomain(nullptr, &error));
    EXPECT_FALSE(error);
    EXPECT_FALSE(isThere("doc/Info.plist"));
    EXPECT_FALSE(isThere("doc/Contents/Objects"));
    EXPECT_FALSE(isThere("doc/Contents/Resources"));
    EXPECT_TRUE(isThere("doc/Contents/PkgInfo"));
    EXPECT_TRUE(isThere("doc/Contents/x.plist"));
    EXPECT_TRUE(isThere(std::string("doc/Contents/") + kOwn + "/Resources/a"));
}

// Deliberate: the result tells whether anything is left, the error what was looked for last.
TEST_F(LUMDocumentBundleDomainsTest, DeliberatelyRemovingTheDocumentsDomainTellsOfMissingResources)
{
    put("doc/Contents/Objects/a.object", "");
    NSRef<NSError> error;
    EXPECT_TRUE(bundle->removeDomain(LUMDocumentBundle_DocumentDomain, &error));
    EXPECT_EQ(codeOf(error), -43);
    EXPECT_FALSE(isThere("doc/Contents/Objects"));
    error = nullptr;
    EXPECT_TRUE(bundle->removeDomain(nullptr, &error)); // neither is there
    EXPECT_EQ(codeOf(error), -43);
}

// Deliberate: what was looked for last was found.
TEST_F(LUMDocumentBundleDomainsTest, DeliberatelyRemovingTheDocumentsDomainTellsNothingOfMissingObjects)
{
    NSRef<NSError> error;
    EXPECT_TRUE(bundle->removeDomain(nullptr, &error)); // nor when there is no folder to look in
    EXPECT_FALSE(error);
    put("doc/Contents/Resources/a", "");
    EXPECT_TRUE(bundle->removeDomain(nullptr, &error));
    EXPECT_FALSE(error);
    EXPECT_FALSE(isThere("doc/Contents/Resources"));
}

TEST_F(LUMDocumentBundleDomainsTest, AllButTheDocumentsOwnAreRemovedTogether)
{
    put("doc/Info.plist", "{}");
    put("doc/Contents/Objects/a.object", "");
    put("doc/Contents/x.plist", "{}");
    put("doc/Contents/y/Resources/a", "");
    NSRef<NSError> error;
    EXPECT_TRUE(bundle->removeNonDocumentDomains(&error));
    EXPECT_FALSE(error);
    EXPECT_EQ(present(), Names { kOwn });
    EXPECT_TRUE(isThere("doc/Info.plist"));
    EXPECT_TRUE(bundle->removeNonDocumentDomains());
}

TEST_F(LUMDocumentBundleDomainsTest, NothingOutsideIsRemoved)
{
    put("doc/Contents/x.plist", "{}");
    for (const char* domain : { "..", ".", "", "../../outside", "../../outside/secret", "/tmp" }) {
        NSRef<NSError> error;
        EXPECT_FALSE(bundle->removeDomain(domain, &error)) << domain;
        EXPECT_EQ(codeOf(error), -37) << domain;
    }
    EXPECT_TRUE(isThere("outside/secret.plist"));
    EXPECT_TRUE(isThere("doc/Contents/x.plist"));
}

TEST_F(LUMDocumentBundleDomainsTest, RemovalNeverFollowsALink)
{
    link("../../outside", "doc/Contents/x");
    link("../../outside/secret.plist", "doc/Contents/x.plist");
    link("../../../outside", "doc/Contents/y/link");
    EXPECT_TRUE(bundle->removeDomain("x"));
    EXPECT_TRUE(bundle->removeDomain("y"));
    EXPECT_FALSE(isThere("doc/Contents/x"));
    EXPECT_FALSE(isThere("doc/Contents/x.plist"));
    EXPECT_TRUE(isThere("outside/secret.plist"));
    std::filesystem::remove_all(folder / "doc/Contents");
    link("../outside", "doc/Contents");
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->removeDomain("secret", &error));
    EXPECT_EQ(codeOf(error), -5000);
    EXPECT_TRUE(isThere("outside/secret.plist"));
}

}
