#include "LUMFoundation/LUMDocumentBundle.h"

#include "LUMFoundation/LUMDocumentBundleSubclass.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSSend.h"
#include "tests/document/bundle_fixture.h"

namespace {

class Song : public LUMDocumentBundleSubclass<Song> {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("DocumentSong", &LUMDocumentBundle::classObject(), {});
        return type;
    }

protected:
    Song() = default;
    ~Song() override = default;
};

class LUMDocumentBundleTest : public BundleTest {
protected:
    NSInteger failureOf(const NSRef<NSString>& path, bool create) const
    {
        NSRef<NSError> error;
        EXPECT_FALSE(LUMDocumentBundle::initWithPath(path, create, &error));
        EXPECT_EQ(error->domain()->utf8(), "NSOSStatusErrorDomain");
        EXPECT_EQ(error->userInfo()->count(), 0u);
        return error->code();
    }
};

TEST_F(LUMDocumentBundleTest, OpensAFolder)
{
    NSRef<NSError> error;
    auto again = LUMDocumentBundle::documentBundleWithURL(NSURL::fileURLWithPath(at("doc")), false, &error);
    EXPECT_FALSE(error);
    EXPECT_THAT(again->path(), Equals(at("doc")));
    EXPECT_THAT(again->url(), Equals(NSURL::fileURLWithPath(at("doc"))));
    EXPECT_TRUE(LUMDocumentBundle::documentBundleWithFileRef(again->fileRef()));
}

TEST_F(LUMDocumentBundleTest, MakesTheFolderAndThoseAboveItOnly)
{
    auto made = LUMDocumentBundle::documentBundleWithPath(at("a/b/new"), true);
    EXPECT_THAT(made->path(), Equals(at("a/b/new")));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "a/b/new"));
}

TEST_F(LUMDocumentBundleTest, WhatIsNoFolderFails)
{
    put("file", "x");
    EXPECT_EQ(failureOf(at("none"), false), 1);
    EXPECT_FALSE(isThere("none"));
    EXPECT_EQ(failureOf(at("file"), false), 1);
    EXPECT_EQ(failureOf(at("file"), true), 1);
    EXPECT_EQ(failureOf(at("file/inside"), true), 1);
    EXPECT_EQ(failureOf(nullptr, true), 1);
    EXPECT_EQ(get("file"), "x");
    NSRef<NSError> error;
    EXPECT_FALSE(LUMDocumentBundle::initWithURL(NSURL::URLWithString("http://a/b"), true, &error));
    EXPECT_EQ(codeOf(error), -43);
    EXPECT_FALSE(LUMDocumentBundle::initWithURL(nullptr, true, &error));
    EXPECT_EQ(codeOf(error), 1);
    EXPECT_FALSE(LUMDocumentBundle::initWithFileRef(nullptr, &error));
    EXPECT_EQ(codeOf(error), 1);
    EXPECT_FALSE(LUMDocumentBundle::initWithFileRef(LUMFileRef::fileRefWithPath(at("file")), &error));
    EXPECT_EQ(codeOf(error), 1);
    EXPECT_FALSE(LUMDocumentBundle::initWithPath(at("none"), false));
}

TEST_F(LUMDocumentBundleTest, TwoOfOneFolderAreEqual)
{
    auto again = LUMDocumentBundle::documentBundleWithPath(at("doc"), false);
    auto other = LUMDocumentBundle::documentBundleWithPath(at("other"), true);
    EXPECT_THAT(again, Equals(bundle));
    EXPECT_EQ(again->hash(), bundle->hash());
    EXPECT_TRUE(again->isEqualTo(bundle));
    EXPECT_FALSE(bundle->isEqualTo(other));
    EXPECT_FALSE(bundle->isEqualTo(nullptr));
    EXPECT_FALSE(bundle->isEqual(NSId("x")));
}

TEST_F(LUMDocumentBundleTest, HoldsOnToTheFolderWhenItIsMoved)
{
    EXPECT_TRUE(bundle->setDictionary(NSDictionary::of({ { "a", 1 } })));
    std::filesystem::rename(folder / "doc", folder / "moved");
    EXPECT_THAT(bundle->dictionaryError(), Equals(NSDictionary::of({ { "a", 1 } })));
    EXPECT_THAT(bundle->path(), Equals(at("moved")));
}

TEST_F(LUMDocumentBundleTest, OfAFolderThatIsGoneEverythingFails)
{
    std::filesystem::remove_all(folder / "doc");
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->path());
    EXPECT_FALSE(bundle->url());
    EXPECT_FALSE(bundle->isEqual(bundle));
    EXPECT_EQ(bundle->hash(), 0u);
    EXPECT_EQ(bundle->creatorCode(), 0u);
    bundle->setTypeCode(1);
    EXPECT_FALSE(bundle->setDictionary(NSDictionary::dictionary(), &error));
    EXPECT_FALSE(bundle->dictionaryError());
    EXPECT_FALSE(bundle->saveObject("x", "a", &error));
    EXPECT_EQ(codeOf(error), -43);
    EXPECT_FALSE(bundle->decodeObjectWithKey("a"));
    EXPECT_FALSE(bundle->urlForResource("a", nullptr, nullptr, true));
    EXPECT_FALSE(bundle->copyResource(NSURL::fileURLWithPath(at("outside")), nullptr, nullptr));
    EXPECT_FALSE(bundle->removeResource("a", nullptr, nullptr));
    EXPECT_EQ(bundle->resourceTypesInDomain(nullptr)->count(), 0u);
    EXPECT_EQ(bundle->presentDomains()->count(), 0u);
    EXPECT_TRUE(bundle->removeDomain(nullptr));
    EXPECT_TRUE(bundle->removeNonDocumentDomains());
}

TEST_F(LUMDocumentBundleTest, ASubclassMakesItsOwnObjects)
{
    NSRef<Song> byPath = Song::documentBundleWithPath(at("song"), true);
    EXPECT_EQ(&byPath->isa(), &Song::classObject());
    NSRef<Song> byUrl = Song::documentBundleWithURL(byPath->url(), false);
    NSRef<Song> byFileRef = Song::documentBundleWithFileRef(byPath->fileRef());
    EXPECT_THAT(byUrl, Equals(byFileRef));
    NSRef<NSError> error;
    EXPECT_FALSE(Song::initWithPath(at("none"), false, &error));
    EXPECT_EQ(codeOf(error), 1);
}

TEST_F(LUMDocumentBundleTest, IsCalledDynamically)
{
    EXPECT_THAT(NSSend<NSId>(bundle, NSSelector("path")), Equals(at("doc")));
    NSRef<NSError> error;
    auto dictionary = NSDictionary::of({ { "a", 1 } });
    EXPECT_TRUE(NSSend<bool>(bundle, NSSelector("setDictionary:error:"), dictionary, &error));
    EXPECT_THAT(NSSend<NSId>(bundle, NSSelector("dictionaryError:"), &error), Equals(dictionary));
}

}
