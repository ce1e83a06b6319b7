// GNUstep at the work of proplists_benchmark.cpp, with the same rows. It is a program of its own because the other
// framework's names are ours.
#import <Foundation/Foundation.h>

#include "benchmarks/proplists_records.h"

#include <benchmark/benchmark.h>

namespace {

NSString* text(const std::string& utf8)
{
    return [NSString stringWithUTF8String:utf8.c_str()];
}

NSDictionary* graphOf(int64_t size)
{
    NSMutableArray* tracks = [NSMutableArray array];
    for (const TrackRecord& record : trackRecords(size)) {
        NSMutableDictionary* track = [NSMutableDictionary dictionary];
        [track setObject:[NSNumber numberWithLongLong:record.identifier] forKey:@"Identifier"];
        [track setObject:text(record.title) forKey:@"Title"];
        [track setObject:text(record.artist) forKey:@"Artist"];
        [track setObject:[NSNumber numberWithDouble:record.rating] forKey:@"Rating"];
        [track setObject:[NSDate dateWithTimeIntervalSinceReferenceDate:record.added] forKey:@"Added"];
        [track setObject:[NSNumber numberWithBool:record.isPlayed] forKey:@"Is Played"];
        [track setObject:[NSArray arrayWithObjects:text(record.tags[0]), text(record.tags[1]), text(record.tags[2]), nil]
                  forKey:@"Tags"];
        [track setObject:[NSData dataWithBytes:record.art.data() length:record.art.size()] forKey:@"Art"];
        [tracks addObject:track];
    }
    return [NSDictionary dictionaryWithObject:tracks forKey:@"Tracks"];
}

NSData* written(id graph, NSPropertyListFormat format)
{
    return [NSPropertyListSerialization dataFromPropertyList:graph format:format errorDescription:nullptr];
}

void write(benchmark::State& state, NSPropertyListFormat format)
{
    NSAutoreleasePool* outer = [NSAutoreleasePool new];
    NSDictionary* graph = graphOf(state.range());
    for (auto _ : state) {
        NSAutoreleasePool* pool = [NSAutoreleasePool new];
        state.counters["bytes"] = static_cast<double>([written(graph, format) length]);
        [pool release];
    }
    [outer release];
}

void read(benchmark::State& state, NSPropertyListFormat format)
{
    NSAutoreleasePool* outer = [NSAutoreleasePool new];
    NSData* data = written(graphOf(state.range()), format);
    for (auto _ : state) {
        NSAutoreleasePool* pool = [NSAutoreleasePool new];
        [NSPropertyListSerialization propertyListFromData:data
                                         mutabilityOption:NSPropertyListImmutable
                                                   format:nullptr
                                         errorDescription:nullptr];
        [pool release];
    }
    [outer release];
}

// Its binary writer takes time quadratic in the size, and its reader is given what that wrote.
void sizes(benchmark::internal::Benchmark* row, bool isXml)
{
    row->Unit(benchmark::kMillisecond)->Arg(100'000);
    if (isXml)
        row->Arg(1'000'000);
}
void binarySizes(benchmark::internal::Benchmark* row) { sizes(row, false); }
void xmlSizes(benchmark::internal::Benchmark* row) { sizes(row, true); }

BENCHMARK_CAPTURE(read, binary, NSPropertyListBinaryFormat_v1_0)->Name("PropertyListBinaryRead/gnustep")->Apply(binarySizes);
BENCHMARK_CAPTURE(write, binary, NSPropertyListBinaryFormat_v1_0)->Name("PropertyListBinaryWrite/gnustep")->Apply(binarySizes);
BENCHMARK_CAPTURE(read, xml, NSPropertyListXMLFormat_v1_0)->Name("PropertyListXmlRead/gnustep")->Apply(xmlSizes);
BENCHMARK_CAPTURE(write, xml, NSPropertyListXMLFormat_v1_0)->Name("PropertyListXmlWrite/gnustep")->Apply(xmlSizes);

}
