#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSNotificationCenter.h"

#include <benchmark/benchmark.h>
#include <vector>

#ifdef LUM_PEER_BOOST
#include <boost/signals2/signal.hpp>
#include <memory>
#endif

namespace {

class Counter : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"count:", &Counter::count>() };
        static const NSClass& type = NSClass::define("Counter", &NSObject::classObject(), kMethods);
        return type;
    }
    void count(const NSRef<NSNotification>&) { ++mCalls; }

private:
    std::int64_t mCalls = 0;
};

const NSSelector kCount("count:");

std::vector<NSRef<Counter>> counters(std::int64_t count)
{
    std::vector<NSRef<Counter>> made;
    for (std::int64_t i = 0; i < count; ++i)
        made.push_back(NSMake<Counter>());
    return made;
}

NSRef<NSNotificationCenter> centerTelling(const std::vector<NSRef<Counter>>& observers)
{
    auto center = NSMake<NSNotificationCenter>();
    for (const auto& observer : observers)
        center->addObserver(observer, kCount, "Changed", nullptr);
    return center;
}

void NotificationPost_Name(benchmark::State& state)
{
    auto observers = counters(state.range());
    auto center = centerTelling(observers);
    NSRef<NSString> name = "Changed";
    for (auto _ : state)
        center->postNotificationName(name, center);
}

void NotificationPost_Made(benchmark::State& state)
{
    auto observers = counters(state.range());
    auto center = centerTelling(observers);
    auto notification = NSNotification::notificationWithName("Changed", center);
    for (auto _ : state)
        center->postNotification(notification);
}

void NotificationRegister_Own(benchmark::State& state)
{
    auto observers = counters(state.range());
    for (auto _ : state)
        benchmark::DoNotOptimize(centerTelling(observers));
    state.SetItemsProcessed(state.iterations() * state.range());
}

BENCHMARK(NotificationPost_Name)->Name("NotificationPost/ours")->Arg(1)->Arg(100);
BENCHMARK(NotificationPost_Made)->Name("NotificationPost/ours_made_before")->Arg(1)->Arg(100);
BENCHMARK(NotificationRegister_Own)->Name("NotificationRegister/ours")->Arg(1000)->Arg(100000);

#ifdef LUM_PEER_BOOST
using Signal = boost::signals2::signal<void(std::int64_t)>;

/// Slots that are not called once what they stand for has ended, as observers are.
void NotificationPost_BoostTracked(benchmark::State& state)
{
    std::vector<std::shared_ptr<std::int64_t>> observers;
    Signal changed;
    for (std::int64_t i = 0; i < state.range(); ++i) {
        auto calls = observers.emplace_back(std::make_shared<std::int64_t>(0)).get();
        changed.connect(
            Signal::slot_type([calls](std::int64_t by) { *calls += by; }).track_foreign(observers.back()));
    }
    for (auto _ : state)
        changed(1);
}

/// Slots that outlive the signal by promise, and are called without a look.
void NotificationPost_BoostPlain(benchmark::State& state)
{
    std::vector<std::int64_t> calls(static_cast<std::size_t>(state.range()));
    Signal changed;
    for (std::int64_t& count : calls)
        changed.connect([&count](std::int64_t by) { count += by; });
    for (auto _ : state)
        changed(1);
}

BENCHMARK(NotificationPost_BoostTracked)->Name("NotificationPost/boost_signals2_tracked")->Arg(1)->Arg(100);
BENCHMARK(NotificationPost_BoostPlain)->Name("NotificationPost/boost_signals2")->Arg(1)->Arg(100);
#endif

}
