// Whatever others do to folders between any two calls of the system, nothing is written or removed in what is
// not the bundle.
#include "tests/document/bundle_fixture.h"
#include "tests/document/system_calls.h"

#include <map>

namespace fs = std::filesystem;

namespace {

class LUMDocumentBundleRacesTest : public BundleTest {
protected:
    LUMDocumentBundleRacesTest() { put("pic", "new"); }

    using Files = std::map<std::string, std::string>;
    Files filesIn(const std::string& name) const
    {
        Files files;
        for (const auto& entry : fs::recursive_directory_iterator(folder / name))
            if (entry.is_regular_file())
                files.emplace(entry.path().lexically_relative(folder / name),
                    get(entry.path().lexically_relative(folder)));
        return files;
    }
    void putAll(const std::string& name, const Files& files) const
    {
        for (const auto& [file, text] : files)
            put(name + "/" + file, text);
    }
    void rename(const std::string& from, const std::string& to) const
    {
        fs::rename(folder / from, folder / to);
    }

    /// While `action` runs, the bundle is moved away, and another one put in its place; that one keeps all it
    /// has. An action that says it succeeded has done so in the bundle.
    void expectNoOtherBundleIsChanged(
        const std::function<bool()>& action, const std::function<bool(const Files&)>& isDone) const
    {
        const Files all { { "Info.plist", "{ a = 1; }" }, { "Contents/PkgInfo", "LUMdsong" },
            { "Contents/Objects/a.object", "a" }, { "Contents/x.plist", "{}" },
            { "Contents/x/Objects/a.object", "b" }, { "Contents/Resources/thumbs/old", "c" } };
        const auto prepare = [&] {
            if (isThere("moved")) {
                rename("doc", "other");
                rename("moved", "doc");
            }
            fs::remove_all(folder / "doc/Contents");
            putAll("doc", all);
            fs::remove_all(folder / "other");
            putAll("other", all);
        };
        const auto exchange = [&](TracedChild&) {
            rename("doc", "moved");
            rename("other", "doc");
        };
        const bool isTested = meddleAtEveryCall(prepare, action, exchange, [&](bool result) {
            const bool isMoved = isThere("moved");
            EXPECT_EQ(filesIn(isMoved ? "doc" : "other"), all);
            EXPECT_TRUE(!result || isDone(filesIn(isMoved ? "moved" : "doc")));
        });
        if (!isTested)
            GTEST_SKIP() << "processes cannot be traced here";
    }

    /// While `action` runs, the folder of the domain x is replaced by a link to another outside.
    void expectNothingOutsideIsChanged(const std::function<bool()>& action) const
    {
        const Files all { { "Objects/a.object", "a" }, { "Resources/thumbs/old", "b" } };
        putAll("outside", all);
        const Files outside = filesIn("outside");
        const auto prepare = [&] {
            fs::remove_all(folder / "doc/Contents");
            putAll("doc/Contents/x", all);
        };
        const auto exchange = [&](TracedChild&) {
            rename("doc/Contents", "doc/Contents before");
            link("../../outside", "doc/Contents/x");
            fs::remove_all(folder / "doc/Contents before");
        };
        const bool isTested = meddleAtEveryCall(
            prepare, action, exchange, [&](bool) { EXPECT_EQ(filesIn("outside"), outside); });
        if (!isTested)
            GTEST_SKIP() << "processes cannot be traced here";
    }

    NSRef<NSURL> picture() const { return NSURL::fileURLWithPath(at("pic")); }
};

TEST_F(LUMDocumentBundleRacesTest, WhatIsReadIsTheBundles)
{
    EXPECT_TRUE(bundle->saveObject("own", "a"));
    EXPECT_TRUE(bundle->setDictionary(NSDictionary::of({ { "a", "own" } })));
    put("doc/Contents/PkgInfo", "LUMdsong");
    auto other = LUMDocumentBundle::documentBundleWithPath(at("other"), true);
    EXPECT_TRUE(other->saveObject("other", "a"));
    EXPECT_TRUE(other->setDictionary(NSDictionary::of({ { "a", "other" } })));
    put("other/Contents/PkgInfo", "OTHRmovi");
    const auto prepare = [&] {
        if (isThere("moved")) {
            rename("doc", "other");
            rename("moved", "doc");
        }
    };
    const auto exchange = [&](TracedChild&) {
        rename("doc", "moved");
        rename("other", "doc");
    };
    const auto read = [&] {
        const auto object = bundle->decodeObjectWithKey("a");
        const auto dictionary = bundle->dictionaryError();
        bundle->loadPkgInfo();
        const auto creator = bundle->creatorCode();
        return (!object || NSEqual(object, NSRef<NSString>("own")))
            && (!dictionary || NSEqual(dictionary->objectForKey("a"), NSRef<NSString>("own")))
            && (creator == 0 || creator == fourCharacters("LUMd"));
    };
    if (!meddleAtEveryCall(prepare, read, exchange, [](bool isOwn) { EXPECT_TRUE(isOwn); }))
        GTEST_SKIP() << "processes cannot be traced here";
}

TEST_F(LUMDocumentBundleRacesTest, AnObjectIsSavedInTheBundle)
{
    expectNoOtherBundleIsChanged([&] { return bundle->saveObject("new", "a"); },
        [](const Files& files) { return files.at("Contents/Objects/a.object") != "a"; });
    expectNothingOutsideIsChanged([&] { return bundle->saveObjectDomain("new", "a", "x"); });
}

TEST_F(LUMDocumentBundleRacesTest, ADictionaryIsWrittenInTheBundle)
{
    const auto dictionary = NSDictionary::of({ { "b", 2 } });
    expectNoOtherBundleIsChanged([&] { return bundle->setDictionary(dictionary); },
        [](const Files& files) { return files.at("Info.plist") != "{ a = 1; }"; });
    expectNothingOutsideIsChanged(
        [&] { return bundle->setDictionaryForDomain(dictionary, "x/Objects/new"); });
}

TEST_F(LUMDocumentBundleRacesTest, CodesAreWrittenInTheBundle)
{
    bundle->loadPkgInfo();
    const auto set = [&] {
        bundle->setTypeCode(fourCharacters("movi"));
        return false; // they tell nothing
    };
    expectNoOtherBundleIsChanged(set, [](const Files&) { return true; });
}

TEST_F(LUMDocumentBundleRacesTest, AResourceIsCopiedIntoTheBundle)
{
    expectNoOtherBundleIsChanged([&] { return bundle->copyResource(picture(), "thumbs", nullptr); },
        [](const Files& files) { return files.contains("Contents/Resources/thumbs/pic"); });
    expectNothingOutsideIsChanged(
        [&] { return bundle->copyResourceDomain(picture(), "thumbs", nullptr, "x"); });
}

TEST_F(LUMDocumentBundleRacesTest, AResourceIsRemovedFromTheBundle)
{
    expectNoOtherBundleIsChanged([&] { return bundle->removeResource("old", nullptr, "thumbs"); },
        [](const Files&) { return true; }); // also of one that cannot be removed
    expectNothingOutsideIsChanged(
        [&] { return bundle->removeResourceDomain("old", nullptr, "thumbs", "x"); });
}

TEST_F(LUMDocumentBundleRacesTest, TheFolderOfARemovedResourceIsTheBundles)
{
    const std::string thumbs = "/Contents/Resources/thumbs";
    const auto prepare = [&] {
        if (isThere("moved")) {
            rename("doc", "other");
            rename("moved", "doc");
        }
        put("doc" + thumbs + "/old", "");
        fs::create_directories(folder / ("other" + thumbs));
    };
    const auto exchange = [&](TracedChild&) {
        rename("doc", "moved");
        rename("other", "doc");
    };
    const auto remove = [&] { return bundle->removeResource("old", nullptr, "thumbs"); };
    const bool isTested = meddleAtEveryCall(prepare, remove, exchange, [&](bool isRemoved) {
        const bool isMoved = isThere("moved");
        const std::string own = (isMoved ? "moved" : "doc") + thumbs;
        EXPECT_TRUE(isThere((isMoved ? "doc" : "other") + thumbs));
        EXPECT_TRUE(isRemoved);
        EXPECT_TRUE(isThere(own + "/old") || !isThere(own)); // true is told of one that stays, too
    });
    if (!isTested)
        GTEST_SKIP() << "processes cannot be traced here";
}

TEST_F(LUMDocumentBundleRacesTest, ADomainIsRemovedFromTheBundle)
{
    expectNoOtherBundleIsChanged([&] { return bundle->removeDomain("x"); },
        [](const Files& files) { return !files.contains("Contents/x.plist"); });
    expectNothingOutsideIsChanged([&] { return bundle->removeDomain("x/Objects"); });
}

}
