// Dynamic calls beside a virtual call and beside what the field offers.

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSWeak.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace {

class Counter : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"add:", &Counter::add>(),
            NSMethodOf<"take:", &Counter::take>(),
        };
        static const NSClass& type = NSClass::define("Counter", &NSObject::classObject(), kMethods);
        return type;
    }

    virtual void add(std::int64_t number) { mSum += number; }
    virtual void take(const NSId& object) { mSum += object ? 1 : 0; }

protected:
    Counter() = default;
    ~Counter() override = default;

private:
    std::int64_t mSum = 0;
};

struct PlainCounter {
    virtual ~PlainCounter() = default;
    virtual void add(std::int64_t number) { mSum += number; }
    std::int64_t mSum = 0;
};

void sendNumber(benchmark::State& state)
{
    const NSSelector selector("add:");
    auto counter = NSMake<Counter>();
    std::int64_t number = 0;
    for (auto _ : state)
        NSSend(counter, selector, ++number);
}
BENCHMARK(sendNumber)->Name("DynamicSend/ours/1");

void sendObject(benchmark::State& state)
{
    const NSSelector selector("take:");
    auto counter = NSMake<Counter>();
    NSId object = NSMake<NSObject>();
    for (auto _ : state)
        NSSend(counter, selector, object);
}
BENCHMARK(sendObject)->Name("DynamicSendObject/ours/1");

void callTyped(benchmark::State& state)
{
    auto counter = NSMake<Counter>();
    benchmark::DoNotOptimize(counter.get());
    std::int64_t number = 0;
    for (auto _ : state) {
        counter->add(++number);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(callTyped)->Name("TypedCall/ours/1");

void callVirtual(benchmark::State& state)
{
    std::unique_ptr<PlainCounter> counter = std::make_unique<PlainCounter>();
    PlainCounter* hidden = counter.get();
    benchmark::DoNotOptimize(hidden);
    std::int64_t number = 0;
    for (auto _ : state) {
        hidden->add(++number);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(callVirtual)->Name("TypedCall/virtual/1");

void makeAndEnd(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(NSMake<NSObject>());
}
BENCHMARK(makeAndEnd)->Name("MakeObject/ours/1");

struct Empty {
    virtual ~Empty() = default;
};

void makeShared(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(std::make_shared<Empty>());
}
BENCHMARK(makeShared)->Name("MakeObject/shared_ptr/1");

void readWeak(benchmark::State& state)
{
    auto object = NSMake<NSObject>();
    const NSWeak<NSObject> weak = object;
    for (auto _ : state)
        benchmark::DoNotOptimize(weak.get());
}
BENCHMARK(readWeak)->Name("ReadWeak/ours/1");

void readWeakPointer(benchmark::State& state)
{
    auto object = std::make_shared<Empty>();
    const std::weak_ptr<Empty> weak = object;
    for (auto _ : state)
        benchmark::DoNotOptimize(weak.lock());
}
BENCHMARK(readWeakPointer)->Name("ReadWeak/weak_ptr/1");

}
