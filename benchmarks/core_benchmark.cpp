// List operations on arrays beside a vector of shared pointers.

#include "LUMFoundation/LUMArray.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSNumber.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int kElements = 1'000'000;
constexpr int kSearches = 1 << 17; // more than a processor can learn the turns of

/// Objects with a virtual comparison, here and there.
class Item : public NSObject {
public:
    virtual NSComparisonResult compare(const Item& other) const
    {
        return mValue < other.mValue ? NSOrderedAscending
            : mValue > other.mValue  ? NSOrderedDescending
                                     : NSOrderedSame;
    }

protected:
    explicit Item(int value) : mValue(value) { }
    ~Item() override = default;

private:
    int mValue;
};

struct Value {
    explicit Value(int value_) : value(value_) { }
    virtual ~Value() = default;
    virtual int compare(const Value& other) const
    {
        return value < other.value ? -1 : value > other.value ? 1 : 0;
    }
    int value;
};
using Values = std::vector<std::shared_ptr<Value>>;

template<typename Make> NSRef<NSMutableArray> evenElements(Make make)
{
    auto array = NSMutableArray::arrayWithCapacity(kElements);
    for (int i = 0; i < kElements; ++i)
        array->addObject(make(2 * i));
    return array;
}

Values evenValues()
{
    Values values;
    values.reserve(kElements);
    for (int i = 0; i < kElements; ++i)
        values.push_back(std::make_shared<Value>(2 * i));
    return values;
}

template<typename Make> auto wanted(Make make)
{
    std::mt19937 random(1);
    std::uniform_int_distribution<int> any(0, 2 * kElements);
    std::vector<decltype(make(0))> list;
    for (int i = 0; i < kSearches; ++i)
        list.push_back(make(any(random)));
    return list;
}

void reverseArray(benchmark::State& state)
{
    auto array = evenElements([](int value) { return NSMake<Item>(value); });
    for (auto _ : state) {
        LUMArray::reverse(array);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(reverseArray)->Name("ArrayReverse/ours/1000000");

void reverseVector(benchmark::State& state)
{
    Values values = evenValues();
    for (auto _ : state) {
        std::reverse(values.begin(), values.end());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(reverseVector)->Name("ArrayReverse/vector_shared_ptr/1000000");

NSComparisonResult compareItems(const NSId& first, const NSId& second, void*)
{
    return static_cast<const Item&>(*first).compare(static_cast<const Item&>(*second));
}

void searchByFunction(benchmark::State& state)
{
    auto make = [](int value) -> NSId { return NSMake<Item>(value); };
    auto array = evenElements(make);
    auto values = wanted(make);
    std::size_t at = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            LUMArray::bsearchComparatorFunction(array, values[at++ % kSearches], &compareItems, nullptr));
}
BENCHMARK(searchByFunction)->Name("ArrayBsearch/ours/1000000");

void searchBySelector(benchmark::State& state)
{
    const NSSelector compare("compare:");
    auto make = [](int value) -> NSId { return NSNumber::numberWithInt(value); };
    auto array = evenElements(make);
    auto values = wanted(make);
    std::size_t at = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(LUMArray::bsearchSelector(array, values[at++ % kSearches], compare));
}
BENCHMARK(searchBySelector)->Name("ArrayBsearch/ours_by_selector/1000000");

void searchVector(benchmark::State& state)
{
    const Values values = evenValues();
    auto searched = wanted([](int value) { return std::make_shared<Value>(value); });
    std::size_t at = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(std::lower_bound(values.begin(), values.end(), searched[at++ % kSearches],
            [](const auto& a, const auto& b) { return a->compare(*b) < 0; }));
}
BENCHMARK(searchVector)->Name("ArrayBsearch/vector_shared_ptr/1000000");

}
