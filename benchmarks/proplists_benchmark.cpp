#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"
#include "benchmarks/proplists_records.h"

#include <benchmark/benchmark.h>

namespace {

constexpr auto kBinary = NSPropertyListBinaryFormat_v1_0;
constexpr auto kXml = NSPropertyListXMLFormat_v1_0;

NSId graphOf(std::int64_t size)
{
    std::vector<NSId> tracks;
    for (const TrackRecord& record : trackRecords(size))
        tracks.push_back(NSDictionary::of({
            { "Identifier", record.identifier },
            { "Title", record.title },
            { "Artist", record.artist },
            { "Rating", record.rating },
            { "Added", NSDate::dateWithTimeIntervalSinceReferenceDate(record.added) },
            { "Is Played", record.isPlayed },
            { "Tags", NSArray::of(record.tags[0], record.tags[1], record.tags[2]) },
            { "Art", NSData::dataWithBytes(record.art.data(), record.art.size()) },
        }));
    return NSDictionary::of({ { "Tracks", NSArray::arrayWithObjects(std::move(tracks)) } });
}

void write(benchmark::State& state, NSPropertyListFormat format)
{
    const NSId graph = graphOf(state.range());
    for (auto _ : state) {
        auto data = NSPropertyListSerialization::dataWithPropertyList(graph, format);
        state.counters["bytes"] = static_cast<double>(data->length());
    }
}

void read(benchmark::State& state, NSPropertyListFormat format)
{
    auto data = NSPropertyListSerialization::dataWithPropertyList(graphOf(state.range()), format);
    for (auto _ : state)
        benchmark::DoNotOptimize(NSPropertyListSerialization::propertyListWithData(data));
}

constexpr std::int64_t kMegabyte = 1'000'000;

#define ROWS(path, function, format)                                                                         \
    BENCHMARK_CAPTURE(function, path, format)                                                                \
        ->Name(#path "/ours")                                                                                \
        ->Arg(kMegabyte / 10)                                                                                \
        ->Arg(kMegabyte)                                                                                     \
        ->Arg(100 * kMegabyte)                                                                               \
        ->Unit(benchmark::kMillisecond)

ROWS(PropertyListBinaryRead, read, kBinary);
ROWS(PropertyListBinaryWrite, write, kBinary);
ROWS(PropertyListXmlRead, read, kXml);
ROWS(PropertyListXmlWrite, write, kXml);

}
