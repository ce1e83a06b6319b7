#include "LUMPlatform/NSNull.h"
#include "tests/document/bundle_fixture.h"

namespace {

class LUMDocumentBundleDictionariesTest : public BundleTest {
protected:
    NSRef<NSDictionary> some = NSDictionary::of({ { "a", NSArray::of(1, "b") } });

    NSInteger failureOf(const NSRef<NSString>& domain)
    {
        NSRef<NSError> error;
        EXPECT_FALSE(bundle->setDictionaryForDomain(some, domain, &error)) << domain;
        EXPECT_FALSE(bundle->dictionaryForDomain(domain)) << domain;
        return codeOf(error);
    }
};

TEST_F(LUMDocumentBundleDictionariesTest, TheDocumentsOwnStandsAtTheTop)
{
    const NSRef<NSString> own = LUMDocumentBundle_DocumentDomain;
    EXPECT_TRUE(bundle->setDictionary(some));
    EXPECT_TRUE(get("doc/Info.plist").starts_with("bplist00"));
    EXPECT_FALSE(isThere("doc/Contents"));
    EXPECT_THAT(bundle->dictionaryError(), Equals(some));
    EXPECT_THAT(bundle->dictionaryForDomain(nullptr), Equals(some));
    EXPECT_THAT(bundle->dictionaryForDomain(own), Equals(some));
    EXPECT_THAT(bundle->pathForDictionaryWithDomain(own), Equals(at("doc/Info.plist")));
    EXPECT_THAT(bundle->pathForDictionaryWithDomain(nullptr), Equals(at("doc/Info.plist")));
}

TEST_F(LUMDocumentBundleDictionariesTest, EachDomainHasItsOwn)
{
    std::filesystem::create_directory(folder / "doc/Contents");
    EXPECT_TRUE(bundle->setDictionaryForDomain(some, "x"));
    EXPECT_THAT(bundle->pathForDictionaryWithDomain("x"), Equals(at("doc/Contents/x.plist")));
    EXPECT_THAT(bundle->dictionaryForDomain("x"), Equals(some));
    EXPECT_FALSE(bundle->dictionaryError());
}

// Deliberate: no folder is made for a dictionary.
TEST_F(LUMDocumentBundleDictionariesTest, DeliberatelyADictionaryOfADomainMakesNoFolder)
{
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->setDictionaryForDomain(some, "x", &error));
    EXPECT_FALSE(error);
    EXPECT_FALSE(isThere("doc/Contents"));
}

TEST_F(LUMDocumentBundleDictionariesTest, AnyFormatIsRead)
{
    put("doc/Info.plist", "{ a = b; }");
    EXPECT_THAT(bundle->dictionaryError(), Equals(NSDictionary::of({ { "a", "b" } })));
    put("doc/Info.plist", "<plist><dict><key>a</key><true/></dict></plist>");
    EXPECT_THAT(bundle->dictionaryError(), Equals(NSDictionary::of({ { "a", true } })));
}

TEST_F(LUMDocumentBundleDictionariesTest, WhatIsNoDictionaryIsNullWithoutAnError)
{
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->dictionaryError(&error));
    put("doc/Info.plist", "(a)");
    EXPECT_FALSE(bundle->dictionaryError(&error));
    put("doc/Info.plist", "bplist00broken");
    EXPECT_FALSE(bundle->dictionaryError(&error));
    EXPECT_FALSE(error);
}

TEST_F(LUMDocumentBundleDictionariesTest, WhatIsNoPropertyListIsToldInWords)
{
    EXPECT_TRUE(bundle->setDictionary(some));
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->setDictionary(NSDictionary::of({ { "a", NSNull::null() } }), &error));
    EXPECT_EQ(codeOf(error), 1);
    EXPECT_EQ(error->domain()->utf8(), "NSOSStatusErrorDomain");
    EXPECT_EQ(error->localizedDescription()->utf8(), "an object of class NSNull is no property list.");
    EXPECT_FALSE(bundle->setDictionary(nullptr, &error));
    EXPECT_EQ(codeOf(error), 1);
    EXPECT_FALSE(bundle->setDictionary(nullptr));
    EXPECT_THAT(bundle->dictionaryError(), Equals(some));
}

TEST_F(LUMDocumentBundleDictionariesTest, EqualDictionariesGiveEqualFiles)
{
    const auto inner = NSDictionary::of({ { "c", "x" }, { "d", "x" } });
    EXPECT_TRUE(bundle->setDictionary(NSDictionary::of({ { "a", NSArray::of(inner, inner) }, { "b", 1 } })));
    const std::string first = get("doc/Info.plist");
    auto other = NSMutableDictionary::dictionary();
    other->setObject(1, "b");
    other->setObject(
        NSArray::of(NSDictionary::of({ { "d", "x" }, { "c", "x" } }), inner->mutableCopy()), "a");
    EXPECT_TRUE(bundle->setDictionary(other));
    EXPECT_EQ(get("doc/Info.plist"), first);
}

TEST_F(LUMDocumentBundleDictionariesTest, DomainsThatWouldLeaveTheBundleAreRefused)
{
    std::filesystem::create_directory(folder / "doc/Contents");
    const std::string outside = (folder / "outside/secret").string();
    for (const NSRef<NSString>& domain : { NSRef<NSString>("../../outside/secret"), NSRef<NSString>(outside),
             NSRef<NSString>("a/../../../outside/secret"), NSRef<NSString>(".."), NSRef<NSString>("."),
             NSRef<NSString>(""), NSRef<NSString>("a/"), NSRef<NSString>("a//b"),
             NSRef<NSString>(std::string_view("a\0b", 3)) })
        EXPECT_EQ(failureOf(domain), -37);
    EXPECT_EQ(get("outside/secret.plist"), "{ a = b; }");
}

TEST_F(LUMDocumentBundleDictionariesTest, LinksThatLeadOutOfTheBundleAreRefused)
{
    link("../../outside/secret.plist", "doc/Contents/x.plist");
    EXPECT_EQ(failureOf("x"), -5000);
    link("../../outside/new.plist", "doc/Contents/dangling.plist");
    EXPECT_EQ(failureOf("dangling"), -5000);
    link("../../outside", "doc/Contents/folder");
    EXPECT_EQ(failureOf("folder/secret"), -5000);
    EXPECT_EQ(get("outside/secret.plist"), "{ a = b; }");
    EXPECT_FALSE(isThere("outside/new.plist"));
}

TEST_F(LUMDocumentBundleDictionariesTest, LinksWithinTheBundleAreFollowed)
{
    put("doc/Contents/real.plist", "{ a = b; }");
    link("real.plist", "doc/Contents/x.plist");
    EXPECT_THAT(bundle->dictionaryForDomain("x"), Equals(NSDictionary::of({ { "a", "b" } })));
    EXPECT_TRUE(bundle->setDictionaryForDomain(some, "x"));
    EXPECT_THAT(bundle->dictionaryForDomain("real"), Equals(some));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "doc/Contents/x.plist"));
}

TEST_F(LUMDocumentBundleDictionariesTest, LinksAreFollowedFromOneToTheNext)
{
    put("doc/elsewhere/real", "{ a = b; }");
    link("../elsewhere/real", "doc/elsewhere/second");
    link((folder / "doc/elsewhere/second").string(), "doc/Contents/first.plist");
    link("first.plist", "doc/Contents/x.plist");
    EXPECT_THAT(bundle->dictionaryForDomain("x"), Equals(NSDictionary::of({ { "a", "b" } })));
    EXPECT_TRUE(bundle->setDictionaryForDomain(some, "x"));
    EXPECT_NE(get("doc/elsewhere/real"), "{ a = b; }");
    EXPECT_THAT(bundle->dictionaryForDomain("x"), Equals(some));
}

}
