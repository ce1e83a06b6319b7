#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"
#include "tests/document/bundle_fixture.h"
#include "tests/raised_by.h"

namespace {

/// Stands in for every class that is gone.
class StandIn : public NSObject, public NSKeyedUnarchiverDelegate {
public:
    const NSClass* unarchiverCannotDecodeObjectOfClassName(
        NSKeyedUnarchiver&, const NSRef<NSString>&, const NSRef<NSArray>&) override
    {
        return &NSDictionary::classObject();
    }

protected:
    StandIn() = default;
    ~StandIn() override = default;
};

class LUMDocumentBundleObjectsTest : public BundleTest {
protected:
    NSId some = NSArray::of("b", 1, NSDictionary::of({ { "c", 2.5 } }));
};

TEST_F(LUMDocumentBundleObjectsTest, AreSavedUnderTheirKeys)
{
    NSRef<NSError> error = NSError::errorWithDomain(NSOSStatusErrorDomain, 1);
    EXPECT_TRUE(bundle->saveObject(some, "a", &error));
    EXPECT_FALSE(error); // always written
    EXPECT_TRUE(isThere("doc/Contents/Objects/a.object"));
    EXPECT_TRUE(bundle->saveObjectDomain("other", "a", "x"));
    EXPECT_TRUE(isThere("doc/Contents/x/Objects/a.object"));
    EXPECT_THAT(bundle->decodeObjectWithKey("a"), Equals(some));
    EXPECT_THAT(bundle->decodeObjectWithKeyDomain("a", LUMDocumentBundle_DocumentDomain), Equals(some));
    EXPECT_THAT(bundle->decodeObjectWithKeyDomain("a", "x"), Equals("other"));
    EXPECT_THAT(
        NSKeyedUnarchiver::unarchiveObjectWithFile(at("doc/Contents/Objects/a.object")), Equals(some));
}

TEST_F(LUMDocumentBundleObjectsTest, ASecondOneReplacesTheFirst)
{
    EXPECT_TRUE(bundle->saveObject("first", "a"));
    EXPECT_TRUE(bundle->saveObject("second", "a"));
    EXPECT_THAT(bundle->decodeObjectWithKey("a"), Equals("second"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "doc/Contents/Objects"), {}), 1);
}

// Deliberate: reading makes the folders, too.
TEST_F(LUMDocumentBundleObjectsTest, DeliberatelyLookingForAnObjectMakesTheFolders)
{
    NSRef<NSError> error = NSError::errorWithDomain(NSOSStatusErrorDomain, 1);
    EXPECT_FALSE(bundle->decodeObjectWithKeyDomain("none", "x", &error));
    EXPECT_FALSE(error);
    EXPECT_TRUE(isThere("doc/Contents/x/Objects"));
    EXPECT_FALSE(bundle->decodeObjectWithKeyDelegate("none", nullptr, &error));
    EXPECT_EQ(codeOf(error), -43);
}

TEST_F(LUMDocumentBundleObjectsTest, WhatCannotBeArchivedRaisesAndTheOldOneStays)
{
    EXPECT_TRUE(bundle->saveObject(some, "a"));
    EXPECT_NE(nameRaisedBy([&] { return bundle->saveObject(NSMake<StandIn>(), "a"); }), "");
    EXPECT_THAT(bundle->decodeObjectWithKey("a"), Equals(some));
}

TEST_F(LUMDocumentBundleObjectsTest, AWriteThatFailsIsFalseWithoutAnError)
{
    std::filesystem::create_directories(folder / "doc/Contents/Objects/a.object"); // in the way
    NSRef<NSError> error = NSError::errorWithDomain(NSOSStatusErrorDomain, 1);
    EXPECT_FALSE(bundle->saveObject(some, "a", &error));
    EXPECT_FALSE(error);
    EXPECT_FALSE(bundle->decodeObjectWithKey("a"));
}

TEST_F(LUMDocumentBundleObjectsTest, WhatIsNoArchiveRaises)
{
    put("doc/Contents/Objects/a.object", "no archive");
    EXPECT_EQ(nameRaisedBy([&] { return bundle->decodeObjectWithKey("a"); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { return bundle->decodeObjectWithKeyDelegate("a", nullptr); }),
        "NSInvalidArgumentException");
}

TEST_F(LUMDocumentBundleObjectsTest, ADelegateCanStandInForClasses)
{
    EXPECT_TRUE(bundle->saveObject(NSDictionary::of({ { "c", 1 } }), "a"));
    // The archive names its class as text; another name of the same length is a class that is gone.
    std::string archive = get("doc/Contents/Objects/a.object");
    for (std::size_t at = 0; (at = archive.find("NSDictionary", at)) != std::string::npos;)
        archive.replace(at, 12, "NSWhatIsGone");
    put("doc/Contents/Objects/a.object", archive);
    EXPECT_EQ(nameRaisedBy([&] { return bundle->decodeObjectWithKey("a"); }),
        "NSInvalidUnarchiveOperationException");
    NSRef<NSError> error;
    EXPECT_THAT(bundle->decodeObjectWithKeyDelegate("a", NSMake<StandIn>(), &error),
        Equals(NSDictionary::of({ { "c", 1 } })));
    EXPECT_FALSE(error);
}

TEST_F(LUMDocumentBundleObjectsTest, ThePathIsToldWhetherOrNotTheFolderCanBeMade)
{
    EXPECT_THAT(bundle->pathForObjectWithKey("a", "x", false), Equals(at("doc/Contents/x/Objects/a.object")));
    EXPECT_FALSE(isThere("doc/Contents"));
    put("doc/Contents", "in the way");
    NSRef<NSError> error;
    EXPECT_THAT(bundle->pathForObjectWithKey("a", nullptr, true, &error),
        Equals(at("doc/Contents/Objects/a.object")));
    EXPECT_NE(codeOf(error), 0);
    EXPECT_FALSE(bundle->saveObject("x", "a", &error));
    EXPECT_NE(codeOf(error), 0);
    EXPECT_FALSE(bundle->decodeObjectWithKey("a", &error));
    EXPECT_NE(codeOf(error), 0);
    EXPECT_EQ(get("doc/Contents"), "in the way");
}

TEST_F(LUMDocumentBundleObjectsTest, KeysThatWouldLeaveTheBundleAreRefused)
{
    for (const NSRef<NSString>& key : { NSRef<NSString>("../../../outside/a"), NSRef<NSString>("/tmp/a"),
             NSRef<NSString>(".."), NSRef<NSString>(""), NSRef<NSString>() }) {
        NSRef<NSError> error;
        EXPECT_FALSE(bundle->saveObject("x", key, &error));
        EXPECT_EQ(codeOf(error), -37);
        EXPECT_FALSE(bundle->decodeObjectWithKey(key, &error));
        EXPECT_EQ(codeOf(error), -37);
        EXPECT_FALSE(bundle->decodeObjectWithKeyDelegate(key, nullptr, &error));
        EXPECT_EQ(codeOf(error), -37);
    }
    EXPECT_FALSE(bundle->saveObjectDomain("x", "a", "../../outside"));
    EXPECT_FALSE(isThere("outside/a.object"));
    EXPECT_FALSE(isThere("outside/Objects"));
    EXPECT_FALSE(isThere("doc/Contents"));
}

TEST_F(LUMDocumentBundleObjectsTest, KeysAndDomainsThatWouldShareAFileAreRefused)
{
    EXPECT_TRUE(bundle->saveObject("first", "a"));
    EXPECT_TRUE(bundle->saveObject("first", "a/b"));
    const auto expectRefused = [&](const char* key, const char* domain) {
        const auto named = domain ? NSRef<NSString>(domain) : nullptr;
        NSRef<NSError> error;
        EXPECT_FALSE(bundle->saveObjectDomain("second", key, named, &error));
        EXPECT_EQ(codeOf(error), -37);
        EXPECT_FALSE(bundle->decodeObjectWithKeyDomain(key, named, &error));
        EXPECT_EQ(codeOf(error), -37);
        EXPECT_FALSE(bundle->pathForObjectWithKey(key, named, true));
    };
    for (const char* key : { "a/", "a//", "a//b", "a/b/" })
        expectRefused(key, nullptr);
    for (const char* domain : { "x/", "x//y" })
        expectRefused("a", domain);
    EXPECT_THAT(bundle->decodeObjectWithKey("a"), Equals("first"));
    EXPECT_THAT(bundle->decodeObjectWithKey("a/b"), Equals("first"));
    EXPECT_FALSE(isThere("doc/Contents/x"));
}

TEST_F(LUMDocumentBundleObjectsTest, LinksWithinTheBundleAreFollowed)
{
    EXPECT_TRUE(bundle->saveObject(some, "real"));
    link("real.object", "doc/Contents/Objects/a.object");
    EXPECT_THAT(bundle->decodeObjectWithKey("a"), Equals(some));
    EXPECT_THAT(bundle->decodeObjectWithKeyDelegate("a", nullptr), Equals(some));
    EXPECT_TRUE(bundle->saveObject("other", "a"));
    EXPECT_THAT(bundle->decodeObjectWithKey("real"), Equals("other"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "doc/Contents/Objects/a.object"));
}

TEST_F(LUMDocumentBundleObjectsTest, LinksThatLeadOutOfTheBundleAreRefused)
{
    link("../../outside", "doc/Contents/Objects");
    link("../../../../outside/a.object", "doc/Contents/x/Objects/a.object");
    NSRef<NSError> error;
    EXPECT_FALSE(bundle->saveObject("x", "a", &error));
    EXPECT_EQ(codeOf(error), -5000);
    EXPECT_FALSE(bundle->saveObjectDomain("x", "a", "x", &error));
    EXPECT_EQ(codeOf(error), -5000);
    EXPECT_FALSE(bundle->decodeObjectWithKey("a", &error));
    EXPECT_EQ(codeOf(error), -5000);
    EXPECT_FALSE(isThere("outside/a.object"));
}

}
