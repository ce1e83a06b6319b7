// Arrays and dictionaries beside the containers of the C++ library over counted pointers.

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>
#include <random>
#include <unordered_map>

namespace {

/// What the peers hold: one allocation for the number and its count, as ours has.
using Shared = std::shared_ptr<long>;

std::vector<long> numbers(std::size_t count)
{
    std::mt19937_64 random(1);
    std::vector<long> result(count);
    for (long& number : result)
        number = static_cast<long>(random() >> 1);
    return result;
}

std::vector<Shared> sharedNumbers(std::size_t count)
{
    std::vector<Shared> result;
    for (long number : numbers(count))
        result.push_back(std::make_shared<long>(number));
    return result;
}

NSRef<NSMutableArray> ownNumbers(std::size_t count)
{
    auto result = NSMutableArray::array();
    for (long number : numbers(count))
        result->addObject(number);
    return result;
}

std::size_t countOf(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

void appendOurs(benchmark::State& state)
{
    NSId object = 1;
    for (auto _ : state) {
        auto array = NSMutableArray::array();
        for (std::size_t i = 0; i < countOf(state); ++i)
            array->addObject(object);
        benchmark::DoNotOptimize(array);
    }
}

void appendPeer(benchmark::State& state)
{
    auto object = std::make_shared<long>(1);
    for (auto _ : state) {
        std::vector<Shared> vector;
        for (std::size_t i = 0; i < countOf(state); ++i)
            vector.push_back(object);
        benchmark::DoNotOptimize(vector);
    }
}

void indexOurs(benchmark::State& state)
{
    auto array = ownNumbers(countOf(state));
    for (auto _ : state)
        for (NSUInteger at = 0; at < array->count(); ++at)
            benchmark::DoNotOptimize(array->objectAtIndex(at));
}

void indexPeer(benchmark::State& state)
{
    auto vector = sharedNumbers(countOf(state));
    for (auto _ : state)
        for (std::size_t at = 0; at < vector.size(); ++at) {
            Shared element = vector.at(at);
            benchmark::DoNotOptimize(element);
        }
}

void loopOurs(benchmark::State& state)
{
    auto array = ownNumbers(countOf(state));
    for (auto _ : state)
        for (const NSId& element : array)
            benchmark::DoNotOptimize(element.get());
}

void loopPeer(benchmark::State& state)
{
    auto vector = sharedNumbers(countOf(state));
    for (auto _ : state)
        for (Shared element : vector)
            benchmark::DoNotOptimize(element.get());
}

void copyOurs(benchmark::State& state)
{
    auto array = ownNumbers(countOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(array->copy());
}

void copyPeer(benchmark::State& state)
{
    auto vector = sharedNumbers(countOf(state));
    for (auto _ : state) {
        auto copy = vector;
        benchmark::DoNotOptimize(copy);
    }
}

void reverseOurs(benchmark::State& state)
{
    auto array = ownNumbers(countOf(state));
    const NSUInteger count = array->count();
    for (auto _ : state)
        for (NSUInteger at = 0; at < count / 2; ++at)
            array->exchangeObjectAtIndex(at, count - 1 - at);
}

void reversePeer(benchmark::State& state)
{
    auto vector = sharedNumbers(countOf(state));
    const std::size_t count = vector.size();
    for (auto _ : state)
        for (std::size_t at = 0; at < count / 2; ++at)
            std::swap(vector.at(at), vector.at(count - 1 - at));
}

void sortOurs(benchmark::State& state)
{
    auto array = ownNumbers(countOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(array->sortedArrayUsingComparator([](const NSId& a, const NSId& b) {
            const long first = static_cast<const NSNumber*>(a.get())->longValue();
            const long second = static_cast<const NSNumber*>(b.get())->longValue();
            return first < second ? NSOrderedAscending : first > second ? NSOrderedDescending : NSOrderedSame;
        }));
}

void sortBySelectorOurs(benchmark::State& state)
{
    auto array = ownNumbers(countOf(state));
    const NSSelector compare("compare:");
    for (auto _ : state)
        benchmark::DoNotOptimize(array->sortedArrayUsingSelector(compare));
}

void sortPeer(benchmark::State& state)
{
    auto vector = sharedNumbers(countOf(state));
    for (auto _ : state) {
        auto sorted = vector;
        std::stable_sort(
            sorted.begin(), sorted.end(), [](const Shared& a, const Shared& b) { return *a < *b; });
        benchmark::DoNotOptimize(sorted);
    }
}

std::vector<std::string> keys(std::size_t count)
{
    std::vector<std::string> result;
    for (long number : numbers(count))
        result.push_back("key " + std::to_string(number));
    return result;
}

void fillOurs(benchmark::State& state)
{
    std::vector<NSId> names;
    for (const std::string& key : keys(countOf(state)))
        names.emplace_back(key);
    for (auto _ : state) {
        auto table = NSMutableDictionary::dictionary();
        for (const NSId& name : names)
            table->setObject(name, name);
        benchmark::DoNotOptimize(table);
    }
}

void fillPeer(benchmark::State& state)
{
    const auto names = keys(countOf(state));
    auto value = std::make_shared<long>(1);
    for (auto _ : state) {
        std::unordered_map<std::string, Shared> table;
        for (const std::string& name : names)
            table.insert_or_assign(name, value);
        benchmark::DoNotOptimize(table);
    }
}

void findOurs(benchmark::State& state)
{
    std::vector<NSId> names;
    auto table = NSMutableDictionary::dictionary();
    for (const std::string& key : keys(countOf(state))) {
        names.emplace_back(key); // equal to the key of the table, not the same object
        table->setObject(1, key);
    }
    for (auto _ : state)
        for (const NSId& name : names)
            benchmark::DoNotOptimize(table->objectForKey(name));
}

void findPeer(benchmark::State& state)
{
    const auto names = keys(countOf(state));
    std::unordered_map<std::string, Shared> table;
    for (const std::string& name : names)
        table.emplace(name, std::make_shared<long>(1));
    for (auto _ : state)
        for (const std::string& name : names) {
            Shared value = table.find(name)->second;
            benchmark::DoNotOptimize(value);
        }
}

constexpr long kMany = 1'000'000;
constexpr auto kUnit = benchmark::kMillisecond;

BENCHMARK(appendOurs)->Name("ArrayAppend/ours")->Arg(kMany)->Unit(kUnit);
BENCHMARK(appendPeer)->Name("ArrayAppend/vector_shared_ptr")->Arg(kMany)->Unit(kUnit);
BENCHMARK(indexOurs)->Name("ArrayIndex/ours")->Arg(kMany)->Unit(kUnit);
BENCHMARK(indexPeer)->Name("ArrayIndex/vector_shared_ptr")->Arg(kMany)->Unit(kUnit);
BENCHMARK(loopOurs)->Name("ArrayLoop/ours")->Arg(kMany)->Unit(kUnit);
BENCHMARK(loopPeer)->Name("ArrayLoop/vector_shared_ptr")->Arg(kMany)->Unit(kUnit);
BENCHMARK(copyOurs)->Name("ArrayCopy/ours")->Arg(kMany)->Unit(kUnit);
BENCHMARK(copyPeer)->Name("ArrayCopy/vector_shared_ptr")->Arg(kMany)->Unit(kUnit);
BENCHMARK(reverseOurs)->Name("ArrayReverse/ours")->Arg(kMany)->Unit(kUnit);
BENCHMARK(reversePeer)->Name("ArrayReverse/vector_shared_ptr")->Arg(kMany)->Unit(kUnit);
BENCHMARK(sortOurs)->Name("ArraySort/ours")->Arg(kMany)->Unit(kUnit);
BENCHMARK(sortBySelectorOurs)->Name("ArraySort/ours_by_selector")->Arg(kMany)->Unit(kUnit);
BENCHMARK(sortPeer)->Name("ArraySort/vector_shared_ptr")->Arg(kMany)->Unit(kUnit);
BENCHMARK(fillOurs)->Name("DictionaryFill/ours")->Arg(100'000)->Unit(kUnit);
BENCHMARK(fillPeer)->Name("DictionaryFill/unordered_map")->Arg(100'000)->Unit(kUnit);
BENCHMARK(findOurs)->Name("DictionaryFind/ours")->Arg(100'000)->Unit(kUnit);
BENCHMARK(findPeer)->Name("DictionaryFind/unordered_map")->Arg(100'000)->Unit(kUnit);

}
