// Whoever puts a link that leads out in the place of a file, between any two calls of the system, nothing
// that is not in the bundle is read or written; and links that lead within it are followed all the time.
#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"
#include "tests/document/bundle_fixture.h"
#include "tests/document/system_calls.h"

namespace fs = std::filesystem;

namespace {

/// What is in the place of the file before.
enum class Before { File, LinkInside };

class LUMDocumentBundleLinkRacesTest : public BundleTest, public testing::WithParamInterface<Before> {
protected:
    LUMDocumentBundleLinkRacesTest()
    {
        const auto other = LUMDocumentBundle::documentBundleWithPath(at("other"), true);
        EXPECT_TRUE(other->saveObject("secret", "a"));
        EXPECT_TRUE(other->setDictionary(NSDictionary::of({ { "a", "secret" } })));
        put("other/Contents/PkgInfo", "OTHRmovi");
        EXPECT_TRUE(bundle->saveObject("own", "a"));
        EXPECT_TRUE(bundle->setDictionary(NSDictionary::of({ { "a", "own" } })));
        put("doc/Contents/PkgInfo", "LUMdsong");
    }

    /// Does `action` while a link to the file of the same name in the other bundle comes into the place of
    /// `file`, and of what that leads to.
    void meddle(const std::string& file, const std::function<bool()>& action,
        const std::function<void(bool)>& check) const
    {
        const std::string own = get("doc/" + file);
        const std::string other = get("other/" + file);
        const auto prepare = [&] {
            fs::remove(folder / "doc" / file);
            fs::remove(folder / "doc/real");
            put(GetParam() == Before::File ? "doc/" + file : "doc/real", own);
            if (GetParam() == Before::LinkInside)
                link((folder / "doc/real").string(), "doc/" + file);
        };
        const auto exchange = [&](TracedChild&) {
            for (const std::string& place : { "doc/" + file, std::string("doc/real") }) {
                link((folder / "other" / file).string(), "new");
                fs::rename(folder / "new", folder / place);
            }
        };
        const bool isTested = meddleAtEveryCall(prepare, action, exchange, [&](bool result) {
            EXPECT_EQ(get("other/" + file), other);
            check(result);
        });
        if (!isTested)
            GTEST_SKIP() << "processes cannot be traced here";
    }
    void expectIsNeverRead(const std::string& file, const std::function<bool()>& isReadOutside) const
    {
        meddle(file, isReadOutside, [](bool isOutside) { EXPECT_FALSE(isOutside); });
    }
    void expectIsNeverWritten(const std::string& file, const std::function<bool()>& write) const
    {
        meddle(file, write, [](bool) {});
    }
};

TEST_P(LUMDocumentBundleLinkRacesTest, NoDictionaryOutsideIsRead)
{
    expectIsNeverRead("Info.plist", [&] {
        const auto found = bundle->dictionaryError();
        return found && NSEqual(found->objectForKey("a"), NSRef<NSString>("secret"));
    });
}

TEST_P(LUMDocumentBundleLinkRacesTest, NoDictionaryOutsideIsWritten)
{
    expectIsNeverWritten("Info.plist", [&] {
        return bundle->setDictionary(NSDictionary::of({ { "b", 2 } }));
    });
}

TEST_P(LUMDocumentBundleLinkRacesTest, NoObjectOutsideIsRead)
{
    const auto isSecret = [](const NSId& object) { return NSEqual(object, NSRef<NSString>("secret")); };
    expectIsNeverRead(
        "Contents/Objects/a.object", [&] { return isSecret(bundle->decodeObjectWithKey("a")); });
    expectIsNeverRead("Contents/Objects/a.object",
        [&] { return isSecret(bundle->decodeObjectWithKeyDelegate("a", nullptr)); });
}

TEST_P(LUMDocumentBundleLinkRacesTest, NoObjectOutsideIsWritten)
{
    expectIsNeverWritten("Contents/Objects/a.object", [&] { return bundle->saveObject("new", "a"); });
}

TEST_P(LUMDocumentBundleLinkRacesTest, NoCodesOutsideAreRead)
{
    expectIsNeverRead("Contents/PkgInfo", [&] {
        bundle->loadPkgInfo();
        return bundle->creatorCode() == fourCharacters("OTHR");
    });
}

TEST_P(LUMDocumentBundleLinkRacesTest, NoCodesOutsideAreWritten)
{
    bundle->loadPkgInfo();
    expectIsNeverWritten("Contents/PkgInfo", [&] {
        bundle->setTypeCode(fourCharacters("film"));
        return true;
    });
}

INSTANTIATE_TEST_SUITE_P(In, LUMDocumentBundleLinkRacesTest,
    testing::Values(Before::File, Before::LinkInside), [](const auto& before) {
        return std::string(before.param == Before::File ? "PlaceOfAFile" : "PlaceOfALink");
    });

}
