// Whatever moment a process is killed at while it writes to a bundle, the old content is there or the new
// one.
#include "tests/document/bundle_fixture.h"
#include "tests/document/kill_at_every_call.h"

namespace {

class LUMDocumentBundleKillTest : public BundleTest {
protected:
    /// What killed writers leave behind. Each child would choose the same names anew, since each begins as a
    /// copy of this process.
    void removeHidden() const
    {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            if (entry.path().filename().string().starts_with('.'))
                std::filesystem::remove(entry.path());
    }

    /// Kills writers of `fresh` at every call; what `read` finds must always be `old` or `fresh`, and each at
    /// least once.
    void expectOldOrNew(const NSId& old, const NSId& fresh, const std::function<void()>& write,
        const std::function<NSId()>& read)
    {
        int olds = 0;
        int news = 0;
        const int kills = killAtEveryCall(write, [&] {
            NSId found = read();
            NSEqual(found, old) ? ++olds : ++news;
            EXPECT_TRUE(NSEqual(found, old) || NSEqual(found, fresh)) << found;
            removeHidden();
        });
        if (kills < 0)
            GTEST_SKIP() << "processes cannot be traced here";
        EXPECT_GT(kills, 20);
        EXPECT_GT(olds, 0);
        EXPECT_GT(news, 0);
    }
};

TEST_F(LUMDocumentBundleKillTest, ASavedObjectIsTheOldOneOrTheNewOne)
{
    const NSId old = NSArray::of("old", 1);
    const NSId fresh = NSArray::of("new", 2);
    EXPECT_TRUE(bundle->saveObject(old, "a"));
    expectOldOrNew(
        old, fresh, [&] { (void)bundle->saveObject(fresh, "a"); },
        [&] { return bundle->decodeObjectWithKey("a"); });
}

TEST_F(LUMDocumentBundleKillTest, ADictionaryIsTheOldOneOrTheNewOne)
{
    auto old = NSDictionary::of({ { "a", "old" } });
    auto fresh = NSDictionary::of({ { "a", "new" }, { "b", 2 } });
    EXPECT_TRUE(bundle->setDictionary(old));
    expectOldOrNew(
        old, fresh, [&] { (void)bundle->setDictionary(fresh); },
        [&]() -> NSId { return bundle->dictionaryError(); });
}

TEST_F(LUMDocumentBundleKillTest, TheCodesAreTheOldOnesOrTheNewOnes)
{
    put("doc/Contents/PkgInfo", "LUMdsong");
    bundle->loadPkgInfo();
    expectOldOrNew(
        "LUMdsong", "LUMdmovi", [&] { bundle->setTypeCode(fourCharacters("movi")); },
        [&]() -> NSId { return get("doc/Contents/PkgInfo"); });
}

}
