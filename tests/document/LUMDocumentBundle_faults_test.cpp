// Whatever the system refuses while a bundle is written, the old content is there or the new one, nothing is
// left behind, and what is told to have been done was done.
#include "tests/document/bundle_fixture.h"
#include "tests/document/system_calls.h"

#include <cerrno>

namespace fs = std::filesystem;

namespace {

struct Fault {
    const char* name;
    int error;
};

class LUMDocumentBundleFaultsTest : public BundleTest, public testing::WithParamInterface<Fault> {
protected:
    bool failing(const std::function<void()>& prepare, const std::function<bool()>& action,
        const std::function<void(bool result)>& check) const
    {
        return failAtEveryCall(GetParam().error, prepare, action, check);
    }

    /// `write` writes `fresh` over `old`, which `put` restores; `read` tells what is there.
    void expectOldOrNew(const NSId& old, const NSId& fresh, const std::function<void()>& put,
        const std::function<bool()>& write, const std::function<NSId()>& read) const
    {
        int failures = 0;
        const bool isTested = failing(put, write, [&](bool isWritten) {
            const NSId found = read();
            EXPECT_TRUE(NSEqual(found, fresh) || (!isWritten && NSEqual(found, old))) << found;
            EXPECT_EQ(hiddenFiles(), "");
            failures += isWritten ? 0 : 1;
        });
        if (!isTested)
            GTEST_SKIP() << "system calls cannot be made to fail here";
        EXPECT_GT(failures, 5);
    }

    std::string hiddenFiles() const
    {
        std::string names;
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (const std::string name = entry.path().filename(); name.starts_with('.'))
                names += name + " ";
        return names;
    }

    const NSId mOld = NSArray::of("old", 1);
    const NSId mFresh = NSArray::of("new", 2);
};

TEST_P(LUMDocumentBundleFaultsTest, ASavedObjectIsTheOldOneOrTheNewOne)
{
    EXPECT_TRUE(bundle->saveObject(mOld, "a"));
    const std::string old = get("doc/Contents/Objects/a.object");
    expectOldOrNew(
        mOld, mFresh, [&] { put("doc/Contents/Objects/a.object", old); },
        [&] { return bundle->saveObject(mFresh, "a"); }, [&] { return bundle->decodeObjectWithKey("a"); });
}

TEST_P(LUMDocumentBundleFaultsTest, AFirstObjectIsThereOrNot)
{
    expectOldOrNew(
        nullptr, mFresh, [&] { fs::remove_all(folder / "doc/Contents"); },
        [&] { return bundle->saveObjectDomain(mFresh, "a", "x"); },
        [&] { return bundle->decodeObjectWithKeyDomain("a", "x"); });
}

TEST_P(LUMDocumentBundleFaultsTest, ADictionaryIsTheOldOneOrTheNewOne)
{
    auto old = NSDictionary::of({ { "a", "old" } });
    auto fresh = NSDictionary::of({ { "a", "new" }, { "b", 2 } });
    expectOldOrNew(
        old, fresh, [&] { put("doc/Contents/x.plist", "{ a = old; }"); },
        [&] { return bundle->setDictionaryForDomain(fresh, "x"); },
        [&]() -> NSId { return bundle->dictionaryForDomain("x"); });
}

TEST_P(LUMDocumentBundleFaultsTest, TheCodesAreTheOldOnesOrTheNewOnes)
{
    put("doc/Contents/PkgInfo", "LUMdsong");
    bundle->loadPkgInfo();
    const auto write = [&] {
        bundle->setTypeCode(fourCharacters("movi"));
        return get("doc/Contents/PkgInfo") == "LUMdmovi"; // they tell nothing themselves
    };
    expectOldOrNew(
        "LUMdsong", "LUMdmovi", [&] { put("doc/Contents/PkgInfo", "LUMdsong"); }, write,
        [&]() -> NSId { return get("doc/Contents/PkgInfo"); });
}

TEST_P(LUMDocumentBundleFaultsTest, AnObjectThatIsReadIsWholeOrNone)
{
    EXPECT_TRUE(bundle->saveObject(mOld, "a"));
    const auto read = [&] {
        const NSId found = bundle->decodeObjectWithKey("a");
        return !found || NSEqual(found, mOld);
    };
    if (!failing([] {}, read, [](bool isWholeOrNone) { EXPECT_TRUE(isWholeOrNone); }))
        GTEST_SKIP() << "system calls cannot be made to fail here";
}

TEST_P(LUMDocumentBundleFaultsTest, ACopiedResourceIsWholeOrNotThere)
{
    put("pic.png", "bytes");
    const auto source = NSURL::fileURLWithPath(at("pic.png"));
    expectOldOrNew(
        "", "bytes", [&] { fs::remove_all(folder / "doc/Contents"); },
        [&] { return bundle->copyResource(source, "thumbs", nullptr); },
        [&]() -> NSId { return get("doc/Contents/Resources/thumbs/pic.png"); });
    EXPECT_EQ(get("pic.png"), "bytes");
}

TEST_P(LUMDocumentBundleFaultsTest, AMovedResourceIsNeverLost)
{
    const std::string moved = "doc/Contents/Resources/thumbs/pic.png";
    const auto prepare = [&] {
        fs::remove_all(folder / "doc/Contents");
        put("pic.png", "bytes");
    };
    const auto source = NSURL::fileURLWithPath(at("pic.png"));
    const auto move = [&] { return bundle->moveResource(source, "thumbs", nullptr); };
    const bool isTested = failing(prepare, move, [&](bool isMoved) {
        EXPECT_EQ(get(isMoved ? moved : "pic.png"), "bytes");
        EXPECT_EQ(isThere(moved), isMoved);
        EXPECT_EQ(hiddenFiles(), "");
    });
    if (!isTested)
        GTEST_SKIP() << "system calls cannot be made to fail here";
}

TEST_P(LUMDocumentBundleFaultsTest, ARemovedDomainIsGoneAndNothingElse)
{
    const auto prepare = [&] {
        put("doc/Contents/x/Objects/a.object", "a");
        put("doc/Contents/x.plist", "{}");
        put("doc/Contents/y.plist", "{}");
    };
    const auto remove = [&] { return bundle->removeDomain("x"); };
    const bool isTested = failing(prepare, remove, [&](bool isRemoved) {
        EXPECT_FALSE(isRemoved && (isThere("doc/Contents/x") || isThere("doc/Contents/x.plist")));
        EXPECT_EQ(get("doc/Contents/y.plist"), "{}");
        EXPECT_EQ(get("outside/secret.plist"), "{ a = b; }");
    });
    if (!isTested)
        GTEST_SKIP() << "system calls cannot be made to fail here";
}

TEST_P(LUMDocumentBundleFaultsTest, ALinkThatLeadsOutIsNeverFollowed)
{
    link("../../outside", "doc/Contents/x");
    const auto write = [&] {
        return bundle->saveObjectDomain(mFresh, "a", "x")
            || bundle->setDictionaryForDomain(NSDictionary::dictionary(), "x/new");
    };
    const bool isTested = failing([] {}, write,
        [&](bool isWritten) {
            EXPECT_FALSE(isWritten);
            EXPECT_FALSE(isThere("outside/Objects"));
            EXPECT_FALSE(isThere("outside/new.plist"));
        });
    if (!isTested)
        GTEST_SKIP() << "system calls cannot be made to fail here";
}

INSTANTIATE_TEST_SUITE_P(Of, LUMDocumentBundleFaultsTest,
    testing::Values(Fault { "ENOSPC", ENOSPC }, Fault { "EIO", EIO }, Fault { "EROFS", EROFS },
        Fault { "EACCES", EACCES }, Fault { "EXDEV", EXDEV }, Fault { "EMFILE", EMFILE }),
    [](const auto& fault) { return std::string(fault.param.name); });

/// What is asked of the system for one save.
class LUMDocumentBundleCallsTest : public BundleTest {
protected:
    static void expectOneFileAndOneRename(const std::vector<TracedChild::Call>& calls)
    {
        if (calls.empty())
            GTEST_SKIP() << "processes cannot be traced here";
        EXPECT_EQ(std::count_if(calls.begin(), calls.end(), makesFile), 1);
        EXPECT_EQ(std::count_if(calls.begin(), calls.end(), isRename), 1);
    }
};

TEST_F(LUMDocumentBundleCallsTest, AnObjectIsOneFileAndOneRenameHoweverManyThereAre)
{
    EXPECT_TRUE(bundle->saveObject("old", "a"));
    const auto save = [&] { (void)bundle->saveObject("new", "a"); };
    const auto alone = callsOf(save);
    expectOneFileAndOneRename(alone);
    for (int number = 0; number < 2'000; ++number)
        put("doc/Contents/Objects/" + std::to_string(number) + ".object", "x");
    EXPECT_EQ(callsOf(save).size(), alone.size());
}

TEST_F(LUMDocumentBundleCallsTest, ADictionaryIsOneFileAndOneRename)
{
    const auto some = NSDictionary::of({ { "a", 1 } });
    expectOneFileAndOneRename(callsOf([&] { (void)bundle->setDictionary(some); }));
}

}
