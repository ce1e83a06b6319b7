#include "LUMPlatform/NSNotificationCenter.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSWeak.h"
#include "tests/fixture.h"

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace {

/// Writes down what it is told.
class Observer : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"first:", &Observer::first>(),
            NSMethodOf<"second:", &Observer::second>(),
            NSMethodOf<"fail:", &Observer::fail>(),
            NSMethodOf<"nothing", &Observer::nothing>(),
        };
        static const NSClass& type = NSClass::define("Observer", &NSObject::classObject(), kMethods);
        return type;
    }

    void first(NSNotification& notification) { hear("1", notification); }
    void second(NSNotification& notification) { hear("2", notification); }
    void fail(NSNotification&) { throw NSException(NSRangeException, "deaf"); }
    void nothing() { }

    std::function<void(NSNotification&)> onHearing;

protected:
    Observer(std::string name, std::string& told) : mName(std::move(name)), mTold(told) { }
    ~Observer() override = default;

private:
    void hear(const char* selector, NSNotification& notification)
    {
        mTold += mName + selector + ' ';
        if (onHearing)
            onHearing(notification);
    }

    const std::string mName;
    std::string& mTold;
};

const NSSelector kFirst("first:");
const NSSelector kSecond("second:");

class NSNotificationCenterTest : public ObjectTest {
protected:
    NSRef<Observer> observer(const char* name) { return NSMake<Observer>(name, told); }
    std::string take() { return std::exchange(told, ""); }
    std::string posted(const NSRef<NSString>& name, const NSId& object)
    {
        center->postNotificationName(name, object);
        return take();
    }

    std::string told;
    NSRef<NSNotificationCenter> center = NSMake<NSNotificationCenter>();
    // Equal, but not the same.
    NSId x = NSMutableString::stringWithString("object");
    NSId y = NSMutableString::stringWithString("object");
};

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
            center->removeObserver(observers[static_cast<size_t>(i)]);
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

TEST_F(NSNotificationCenterTest, KeepsAPostedNotificationWhileObserversAreTold)
{
    auto a = observer("a");
    auto b = observer("b");
    auto notification = NSNotification::notificationWithName("N");
    a->onHearing = [&](NSNotification&) { notification = nullptr; };
    b->onHearing = [&](NSNotification& told_) { EXPECT_EQ(told_.name()->utf8(), "N"); };
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, "N", nullptr);
    center->postNotification(notification);
    EXPECT_EQ(take(), "a1 b1 ");
}

TEST_F(NSNotificationCenterTest, DoesNotTellWhoIsAddedDuringThePosting)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { center->addObserver(b, kFirst, "N", nullptr); };
    center->addObserver(a, kFirst, "N", nullptr);
    EXPECT_EQ(posted("N", nullptr), "a1 ");
    a->onHearing = nullptr;
    EXPECT_EQ(posted("N", nullptr), "a1 b1 ");
}

TEST_F(NSNotificationCenterTest, DoesNotTellWhoIsRemovedDuringThePosting)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { center->removeObserver(b); };
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, "N", nullptr);
    EXPECT_EQ(posted("N", nullptr), "a1 ");
}

TEST_F(NSNotificationCenterTest, DoesNotTellWhoEndsDuringThePosting)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { b = nullptr; };
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, "N", nullptr);
    EXPECT_EQ(posted("N", nullptr), "a1 ");
}

TEST_F(NSNotificationCenterTest, LetsAnObserverEndWhileItIsTold)
{
    auto a = observer("a");
    a->onHearing = [&](NSNotification&) { a = nullptr; };
    center->addObserver(a, kFirst, "N", nullptr);
    EXPECT_EQ(posted("N", nullptr), "a1 ");
    EXPECT_EQ(posted("N", nullptr), "");
}

TEST_F(NSNotificationCenterTest, MayBeDroppedByAnObserver)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { center = nullptr; };
    center->addObserver(a, kFirst, "N", nullptr);
    center->addObserver(b, kFirst, nullptr, nullptr);
    center->postNotificationName("N");
    EXPECT_EQ(take(), "a1 b1 ");
}

TEST_F(NSNotificationCenterTest, TellsOfAPostingWithinAPosting)
{
    auto a = observer("a");
    auto b = observer("b");
    a->onHearing = [&](NSNotification&) { center->postNotificationName("inner"); };
    center->addObserver(a, kFirst, "outer", nullptr);
    center->addObserver(b, kFirst, "inner", nullptr);
    center->addObserver(b, kSecond, "outer", nullptr);
    EXPECT_EQ(posted("outer", nullptr), "a1 b1 b2 ");
}

TEST_F(NSNotificationCenterTest, KeepsNeitherObserversNorObjects)
{
    auto a = observer("a");
    NSWeak<Observer> weak = a;
    NSWeak<NSObject> weakObject = x;
    center->addObserver(a, kFirst, "N", x);
    a = nullptr;
    x = nullptr;
    EXPECT_FALSE(weak);
    EXPECT_FALSE(weakObject);
}

/// Gives out memory of one size that is used again at once, so that objects meet at one address.
class AtOneAddress : public NSObject {
public:
    static void* operator new(std::size_t size)
    {
        static std::aligned_storage_t<256> place;
        EXPECT_LE(size, sizeof place);
        return &place;
    }
    static void operator delete(void*) { }

protected:
    AtOneAddress() = default;
    ~AtOneAddress() override = default;
};

TEST_F(NSNotificationCenterTest, DoesNotTakeANewObjectForOneThatHasEnded)
{
    auto a = observer("a");
    auto object = NSMake<AtOneAddress>();
    const void* address = object.get();
    center->addObserver(a, kFirst, "N", object);
    center->addObserver(a, kSecond, nullptr, object);
    EXPECT_EQ(posted("N", object), "a1 a2 ");
    object = nullptr;
    object = NSMake<AtOneAddress>();
    ASSERT_EQ(object.get(), address);
    EXPECT_EQ(posted("N", object), "");
    center->addObserver(a, kFirst, "N", object);
    EXPECT_EQ(posted("N", object), "a1 ");
    center->removeObserver(a, "N", object);
    EXPECT_EQ(posted("N", object), "");
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

struct NSNotificationTest : ObjectTest { };

TEST_F(NSNotificationTest, HoldsNameObjectAndInformation)
{
    NSId object = NSMake<NSObject>();
    auto info = NSDictionary::of({ { "key", "value" } });
    auto notification = NSNotification::notificationWithName("N", object, info);
    EXPECT_EQ(notification->name()->utf8(), "N");
    EXPECT_EQ(notification->object(), object);
    EXPECT_EQ(notification->userInfo(), info);
    EXPECT_EQ(notification->copy(), notification);
}

TEST_F(NSNotificationTest, NeedsNoMoreThanAName)
{
    auto notification = NSNotification::notificationWithName("N");
    EXPECT_EQ(notification->object(), nullptr);
    EXPECT_EQ(notification->userInfo(), nullptr);
    EXPECT_THROW(static_cast<void>(NSNotification::notificationWithName(nullptr)), NSException);
}

TEST_F(NSNotificationTest, IsEqualByNameObjectAndInformation)
{
    NSId object = NSMake<NSObject>();
    auto info = NSDictionary::of({ { "key", "value" } });
    auto same = NSDictionary::of({ { "key", "value" } });
    auto a = NSNotification::notificationWithName("N", object, info);
    EXPECT_TRUE(a->isEqual(NSNotification::notificationWithName("N", object, same)));
    EXPECT_EQ(a->hash(), NSNotification::notificationWithName("N", object, same)->hash());
    EXPECT_FALSE(a->isEqual(NSNotification::notificationWithName("M", object, info)));
    EXPECT_FALSE(a->isEqual(NSNotification::notificationWithName("N", nullptr, info)));
    EXPECT_FALSE(a->isEqual(NSNotification::notificationWithName("N", object)));
    EXPECT_FALSE(a->isEqual(object));
}

TEST_F(NSNotificationTest, DescribesItself)
{
    EXPECT_EQ(NSNotification::notificationWithName("N", NSRef<NSString>("it"))->description()->utf8(),
        "NSNotification { name = N, object = it, userInfo = (null) }");
}

}
