// A bundle whose folder others change meanwhile: other bundle objects, and those who rename and remove.
#include "tests/document/bundle_fixture.h"

#include <atomic>
#include <thread>

namespace fs = std::filesystem;

namespace {

class LUMDocumentBundleThreadsTest : public BundleTest {
protected:
    /// Does `disturb` on a thread of its own, over and over, while `use` is done `times` times.
    static void whileOthers(const std::function<void()>& disturb, int times, const std::function<void()>& use)
    {
        std::atomic<bool> isOver = false;
        std::thread other([&] {
            while (!isOver)
                disturb();
        });
        for (int time = 0; time < times && !HasFailure(); ++time)
            use();
        isOver = true;
        other.join();
    }
};

TEST_F(LUMDocumentBundleThreadsTest, DomainsMayGoWhileTheyAreListed)
{
    put("doc/Contents/stays.plist", "{}");
    const auto comeAndGo = [&] {
        for (int number = 0; number < 20; ++number)
            fs::create_directory(folder / ("doc/Contents/x" + std::to_string(number)));
        for (int number = 0; number < 20; ++number)
            fs::remove(folder / ("doc/Contents/x" + std::to_string(number)));
    };
    whileOthers(comeAndGo, 300,
        [&] { EXPECT_TRUE(bundle->presentDomains()->containsObject(NSRef<NSString>("stays"))); });
}

TEST_F(LUMDocumentBundleThreadsTest, TheFolderMayMoveWhileItIsUsed)
{
    const auto some = NSDictionary::of({ { "a", 1 } });
    EXPECT_TRUE(bundle->setDictionary(some));
    put("doc/Contents/Resources/thumbs/a", "a");
    const auto there = folder / "doc";
    const auto elsewhere = folder / "moved";
    const auto moveToAndFro = [&] {
        fs::rename(there, elsewhere);
        fs::rename(elsewhere, there);
    };
    whileOthers(moveToAndFro, 100, [&] {
        const auto found = bundle->dictionaryError();
        EXPECT_TRUE(!found || NSEqual(found, some));
        (void)bundle->setDictionary(some);
        EXPECT_LE(bundle->resourceTypesInDomain(nullptr)->count(), 1u);
    });
    EXPECT_THAT(bundle->dictionaryError(), Equals(some));
}

TEST_F(LUMDocumentBundleThreadsTest, TheFolderMayGoWhileItIsUsed)
{
    for (int round = 0; round < 300; ++round) {
        auto going = LUMDocumentBundle::documentBundleWithPath(at("going"), true);
        std::atomic<bool> isGone = false;
        std::thread other([&] {
            fs::remove(folder / "going");
            isGone = true;
        });
        do {
            EXPECT_FALSE(going->dictionaryError());
            EXPECT_EQ(going->resourceTypesInDomain(nullptr)->count(), 0u);
            EXPECT_EQ(going->presentDomains()->count(), 0u);
        } while (!isGone);
        other.join();
        EXPECT_FALSE(going->setDictionary(NSDictionary::dictionary()));
    }
}

TEST_F(LUMDocumentBundleThreadsTest, OfTwoMovesToOneNameOneSucceeds)
{
    for (int round = 0; round < 300 && !HasFailure(); ++round) {
        put("first/pic", "first");
        put("second/pic", "second");
        std::atomic<int> ready = 0;
        bool moved[2] = {};
        const auto move = [&](int which, const char* from) {
            auto own = LUMDocumentBundle::documentBundleWithPath(at("doc"), false);
            const auto source = NSURL::fileURLWithPath(at(from));
            ++ready;
            while (ready < 2) { }
            moved[which] = own->moveResource(source, nullptr, nullptr);
        };
        std::thread other(move, 0, "first/pic");
        move(1, "second/pic");
        other.join();
        EXPECT_NE(moved[0], moved[1]);
        EXPECT_EQ(get("doc/Contents/Resources/pic"), moved[0] ? "first" : "second");
        EXPECT_TRUE(bundle->removeResource("pic", nullptr, nullptr));
    }
}

TEST_F(LUMDocumentBundleThreadsTest, ManySaveAtOnceUnderKeysOfTheirOwn)
{
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 4; ++writer)
        writers.emplace_back([this, writer] {
            auto own = LUMDocumentBundle::documentBundleWithPath(at("doc"), false);
            for (int number = 0; number < 25; ++number)
                EXPECT_TRUE(own->saveObjectDomain(number, std::to_string(writer), std::to_string(number)));
        });
    for (std::thread& writer : writers)
        writer.join();
    EXPECT_EQ(bundle->presentDomains()->count(), 25u);
    EXPECT_THAT(bundle->decodeObjectWithKeyDomain("3", "24"), Equals(24));
}

}
