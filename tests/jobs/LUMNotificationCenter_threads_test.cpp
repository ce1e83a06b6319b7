#include "LUMFoundation/LUMNotificationCenter.h"

#include "LUMPlatform/NSClass.h"
#include "tests/fixture.h"

#include <thread>

namespace {

struct Counter : NSObject {
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"count:", &Counter::count>() };
        static const NSClass& type = NSClass::define("Counter", &NSObject::classObject(), kMethods);
        return type;
    }
    void count(const NSRef<NSNotification>&) { ++counted; }
    int counted = 0;
};

struct LUMNotificationCenterThreadsTest : ObjectTest { };

TEST_F(LUMNotificationCenterThreadsTest, LeavesOneRegistrationThoughTwoThreadsMakeIt)
{
    const NSSelector count("count:");
    auto counter = NSMake<Counter>();
    for (int round = 0; round < 500; ++round) {
        NSRef<NSNotificationCenter> center = NSMake<LUMNotificationCenter>();
        std::thread other([&] { center->addObserver(counter, count, "N", nullptr); });
        center->addObserver(counter, count, "N", nullptr);
        other.join();
        center->postNotificationName("N");
    }
    EXPECT_EQ(counter->counted, 500);
}

}
