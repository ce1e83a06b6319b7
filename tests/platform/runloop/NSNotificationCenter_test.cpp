#include "LUMPlatform/NSNotificationCenter.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "tests/platform/runloop/notification_observer.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

/// One registration of every kind.
class MatchingTest : public NSNotificationCenterTest {
protected:
    MatchingTest()
    {
        center->addObserver(any, kFirst, nullptr, nullptr);
        center->addObserver(n, kFirst, "N", nullptr);
        center->addObserver(ofX, kFirst, nullptr, x);
        center->addObserver(nOfX, kFirst, "N", x);
        center->addObserver(nOfY, kFirst, "N", y);
        center->addObserver(z, kFirst, "Z", nullptr);
    }

    NSRef<Observer> any = observer("any");
    NSRef<Observer> n = observer("N");
    NSRef<Observer> ofX = observer("X");
    NSRef<Observer> nOfX = observer("NX");
    NSRef<Observer> nOfY = observer("NY");
    NSRef<Observer> z = observer("Z");
};

TEST_F(MatchingTest, TellsOfANameWithoutObjectThoseWhoTakeAnyObject)
{
    EXPECT_EQ(posted("N", nullptr), "any1 N1 ");
}

TEST_F(MatchingTest, TellsOfANameAndObjectAllWhoMatchInOrderOfRegistration)
{
    EXPECT_EQ(posted("N", x), "any1 N1 X1 NX1 ");
}

TEST_F(MatchingTest, ComparesObjectsByIdentity)
{
    EXPECT_EQ(posted("N", y), "any1 N1 NY1 ");
}

TEST_F(MatchingTest, TellsOfAnyNameThoseWhoWatchTheObject)
{
    EXPECT_EQ(posted("Q", x), "any1 X1 ");
}

TEST_F(MatchingTest, TellsOfAnythingWhoTakesAnything)
{
    EXPECT_EQ(posted("Q", nullptr), "any1 ");
}

TEST_F(MatchingTest, ComparesNamesByEquality)
{
    EXPECT_EQ(posted(NSMutableString::stringWithString("N"), nullptr), "any1 N1 ");
}

struct Removal {
    const char* label;
    const char* name;
    bool object;
    const char* counts; // of calls for N,X; N,null; Z,X; Q,X
};

class RemovalTest : public NSNotificationCenterTest, public testing::WithParamInterface<Removal> { };

TEST_P(RemovalTest, ComparesWithWhatWasRegistered)
{
    auto r = observer("r");
    center->addObserver(r, kFirst, "N", x);
    center->addObserver(r, kSecond, "N", nullptr);
    center->addObserver(r, kFirst, nullptr, x);
    center->addObserver(r, kSecond, "Z", x);
    if (GetParam().label != std::string("Nothing"))
        center->removeObserver(r, GetParam().name, GetParam().object ? x : nullptr);
    std::string counts;
    auto post = [&](const char* name, const NSId& object) {
        counts += std::to_string(posted(name, object).size() / 3) + ' '; // each call is "r1 " or "r2 "
    };
    post("N", x);
    post("N", nullptr);
    post("Z", x);
    post("Q", x);
    EXPECT_EQ(counts, GetParam().counts);
}

INSTANTIATE_TEST_SUITE_P(Of, RemovalTest,
    testing::Values(Removal { "Nothing", nullptr, false, "3 1 2 1 " },
        Removal { "NameAndObject", "N", true, "2 1 2 1 " }, Removal { "Name", "N", false, "1 0 2 1 " },
        Removal { "Object", nullptr, true, "1 1 0 0 " },
        Removal { "Everything", nullptr, false, "0 0 0 0 " }),
    [](const auto& row) { return row.param.label; });

TEST_F(NSNotificationCenterTest, TellsAnObserverAsOftenAsItRegistered)
{
    auto r = observer("r");
    center->addObserver(r, kFirst, "N", x);
    center->addObserver(r, kFirst, "N", x);
    EXPECT_EQ(posted("N", x), "r1 r1 ");
    center->removeObserver(r, "N", x);
    EXPECT_EQ(posted("N", x), "");
}

TEST_F(NSNotificationCenterTest, RemovesOnlyTheObserverThatIsGiven)
{
    auto a = observer("a");
    auto b = observer("b");
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, "N", nullptr);
    center->removeObserver(a, "N");
    EXPECT_EQ(posted("N", nullptr), "b1 ");
    center->removeObserver(a);
    center->removeObserver(nullptr);
    center->removeObserver(b, "M");
    center->removeObserver(b, "N", x);
    EXPECT_EQ(posted("N", nullptr), "b1 ");
}

TEST_F(NSNotificationCenterTest, TellsInOrderAfterManyCameAndWent)
{
    std::vector<NSRef<Observer>> observers;
    std::string expected;
    for (int i = 0; i < 100; ++i) {
        observers.push_back(observer(("o" + std::to_string(i) + "_").c_str()));
        center->addObserver(observers.back(), kFirst, i % 3 ? "N" : nullptr, i % 2 ? x : nullptr);
    }
    for (int i = 0; i < 100; ++i)
        if (i % 10)
            center->removeObserver(observers[static_cast<std::size_t>(i)]);
        else
            expected += "o" + std::to_string(i) + "_1 ";
    EXPECT_EQ(posted("N", x), expected);
}

TEST_F(NSNotificationCenterTest, HandsOverTheNotificationThatWasPosted)
{
    auto r = observer("r");
    auto info = NSDictionary::of({ { "key", "value" } });
    NSId seen;
    r->onHearing = [&](NSNotification& notification) { seen = NSShare(&notification); };
    center->addObserver(r, kFirst, "N", nullptr);
    auto notification = NSNotification::notificationWithName("N", x, info);
    center->postNotification(notification);
    EXPECT_EQ(seen, notification);
    center->postNotificationName("N", x, info);
    EXPECT_NE(seen, notification);
    EXPECT_TRUE(NSEqual(seen, notification));
}

TEST_F(NSNotificationCenterTest, CopiesTheNameOfARegistration)
{
    auto a = observer("a");
    auto name = NSMutableString::stringWithString("N");
    center->addObserver(a, kFirst, name, nullptr);
    auto notification = NSNotification::notificationWithName(name);
    name->appendString("ext");
    EXPECT_EQ(posted("N", nullptr), "a1 ");
    EXPECT_EQ(posted("Next", nullptr), "");
    EXPECT_EQ(notification->name()->utf8(), "N");
}

TEST_F(NSNotificationCenterTest, TellsApartNamesWithoutLettersFromNoName)
{
    auto a = observer("a");
    center->addObserver(a, kFirst, "", nullptr);
    EXPECT_EQ(posted("N", nullptr), "");
    EXPECT_EQ(posted("", nullptr), "a1 ");
}

TEST_F(NSNotificationCenterTest, RaisesForANullName)
{
    EXPECT_THROW(center->postNotificationName(nullptr), NSException);
    EXPECT_THROW(center->postNotification(nullptr), NSException);
}

TEST_F(NSNotificationCenterTest, RaisesForARegistrationThatCannotBeTold)
{
    EXPECT_THROW(center->addObserver(nullptr, kFirst, "N", nullptr), NSException);
    EXPECT_THROW(center->addObserver(observer("a"), NSSelector(), "N", nullptr), NSException);
}

TEST_F(NSNotificationCenterTest, RaisesAtThePosterForASelectorNobodyAnswers)
{
    auto a = observer("a");
    center->addObserver(a, NSSelector("unknown:"), "N", nullptr);
    EXPECT_THROW(center->postNotificationName("N"), NSException);
    center->removeObserver(a);
    center->addObserver(a, NSSelector("nothing"), "N", nullptr);
    EXPECT_THROW(center->postNotificationName("N"), NSException);
}

TEST_F(NSNotificationCenterTest, PassesAnExceptionOnAndTellsNoMore)
{
    auto a = observer("a");
    auto b = observer("b");
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, NSSelector("fail:"), "N", nullptr);
    center->addObserver(a, kSecond, "N", nullptr);
    EXPECT_THROW(center->postNotificationName("N"), NSException);
    EXPECT_EQ(take(), "a1 ");
    center->removeObserver(b);
    EXPECT_EQ(posted("N", nullptr), "a1 a2 ");
}

TEST_F(NSNotificationCenterTest, TellsOnTheThreadThatPosts)
{
    auto a = observer("a");
    std::thread::id where;
    a->onHearing = [&](NSNotification&) { where = std::this_thread::get_id(); };
    center->addObserver(a, kFirst, "N", nullptr);
    std::thread poster([&] { center->postNotificationName("N"); });
    std::thread::id expected = poster.get_id();
    poster.join();
    EXPECT_EQ(where, expected);
}

TEST_F(NSNotificationCenterTest, AnswersMessages)
{
    auto a = observer("a");
    NSSend(center, NSSelector("addObserver:selector:name:object:"), a, kFirst, NSRef<NSString>("N"), NSId());
    NSSend(center, NSSelector("postNotificationName:object:"), NSRef<NSString>("N"), x);
    NSSend(center, NSSelector("postNotificationName:object:userInfo:"), NSRef<NSString>("N"), x, NSId());
    NSSend(center, NSSelector("postNotification:"), NSNotification::notificationWithName("N"));
    EXPECT_EQ(take(), "a1 a1 a1 ");
    NSSend(center, NSSelector("removeObserver:name:object:"), a, NSRef<NSString>("M"), NSId());
    EXPECT_EQ(posted("N", x), "a1 ");
    NSSend(center, NSSelector("removeObserver:"), a);
    EXPECT_EQ(posted("N", x), "");
}

TEST_F(NSNotificationCenterTest, HasOneDefaultCenter)
{
    EXPECT_EQ(NSNotificationCenter::defaultCenter(), NSNotificationCenter::defaultCenter());
    EXPECT_NE(NSNotificationCenter::defaultCenter(), center);
}

/// Counts without a text to write to, for many threads.
class Counter : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"count:", &Counter::count>() };
        static const NSClass& type = NSClass::define("Counter", &NSObject::classObject(), kMethods);
        return type;
    }
    void count(const NSRef<NSNotification>&) { ++calls; }

    std::atomic<int> calls = 0;
};

TEST_F(NSNotificationCenterTest, ServesManyThreadsThatAddPostRemoveAndEnd)
{
    auto steady = NSMake<Counter>();
    center->addObserver(steady, NSSelector("count:"), "N", nullptr);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < 500; ++round) {
                auto removed = NSMake<Counter>();
                auto dropped = NSMake<Counter>();
                center->addObserver(removed, NSSelector("count:"), "N", dropped);
                center->addObserver(dropped, NSSelector("count:"), nullptr, nullptr);
                center->postNotificationName("N", dropped);
                EXPECT_GE(removed->calls, 1);
                EXPECT_GE(dropped->calls, 1);
                center->removeObserver(removed);
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(steady->calls, 4 * 500);
}

}
