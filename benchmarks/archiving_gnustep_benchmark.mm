// The peer of KeyedArchive and KeyedUnarchive in archiving_benchmark.cpp, with the same rows. It is a program of its own
// because the other framework's names are ours.
#import <Foundation/Foundation.h>

#include <benchmark/benchmark.h>
#include <cstdint>

@interface Track : NSObject <NSCoding> {
@public
    NSString* title;
    NSDate* date;
    NSNumber* size;
    int count;
}
@end

@implementation Track
- (void)encodeWithCoder:(NSCoder*)coder
{
    [coder encodeObject:title forKey:@"title"];
    [coder encodeObject:date forKey:@"date"];
    [coder encodeObject:size forKey:@"size"];
    [coder encodeInt:count forKey:@"count"];
}
- (id)initWithCoder:(NSCoder*)coder
{
    title = [[coder decodeObjectForKey:@"title"] retain];
    date = [[coder decodeObjectForKey:@"date"] retain];
    size = [[coder decodeObjectForKey:@"size"] retain];
    count = [coder decodeIntForKey:@"count"];
    return self;
}
- (void)dealloc
{
    [title release];
    [date release];
    [size release];
    [super dealloc];
}
@end

namespace {

/// A list of tracks, each of four objects.
NSArray* tracks(int64_t objects)
{
    NSMutableArray* list = [NSMutableArray array];
    for (int64_t at = 0; at < objects / 4; ++at) {
        Track* track = [[[Track alloc] init] autorelease];
        track->title = [[NSString alloc] initWithFormat:@"Take %lld of the song", static_cast<long long>(at)];
        track->date = [[NSDate alloc] initWithTimeIntervalSinceReferenceDate:static_cast<double>(at) + 0.5];
        track->size = [[NSNumber alloc] initWithLongLong:1000000 + at];
        track->count = static_cast<int>(at);
        [list addObject:track];
    }
    return list;
}

NSData* archived(NSArray* list, NSPropertyListFormat format)
{
    NSMutableData* data = [NSMutableData data];
    NSKeyedArchiver* archiver = [[NSKeyedArchiver alloc] initForWritingWithMutableData:data];
    [archiver setOutputFormat:format];
    [archiver encodeObject:list forKey:@"root"];
    [archiver finishEncoding];
    [archiver release];
    return data;
}

void KeyedArchive(benchmark::State& state)
{
    NSAutoreleasePool* pool = [NSAutoreleasePool new];
    NSArray* list = tracks(state.range());
    for (auto _ : state) {
        NSAutoreleasePool* inner = [NSAutoreleasePool new];
        // In XML: its writer of binary archives takes time with the square of the objects, minutes for the most here.
        benchmark::DoNotOptimize(archived(list, NSPropertyListXMLFormat_v1_0));
        [inner release];
    }
    state.SetItemsProcessed(state.iterations() * state.range());
    [pool release];
}

void KeyedUnarchive(benchmark::State& state, NSPropertyListFormat format)
{
    NSAutoreleasePool* pool = [NSAutoreleasePool new];
    NSData* data = archived(tracks(state.range()), format);
    for (auto _ : state) {
        NSAutoreleasePool* inner = [NSAutoreleasePool new];
        NSArray* read = [NSKeyedUnarchiver unarchiveObjectWithData:data];
        if ([read count] != static_cast<NSUInteger>(state.range() / 4))
            state.SkipWithError("not what was archived");
        [inner release];
    }
    state.SetItemsProcessed(state.iterations() * state.range());
    [pool release];
}

/// What it reads faster, as far as it can write it.
void KeyedUnarchiveBinary(benchmark::State& state)
{
    KeyedUnarchive(state, NSPropertyListBinaryFormat_v1_0);
}
void KeyedUnarchiveXml(benchmark::State& state)
{
    KeyedUnarchive(state, NSPropertyListXMLFormat_v1_0);
}

BENCHMARK(KeyedArchive)->Name("KeyedArchive/gnustep_xml")->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(KeyedUnarchiveBinary)->Name("KeyedUnarchive/gnustep")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(KeyedUnarchiveXml)->Name("KeyedUnarchive/gnustep_xml")->Arg(100000)->Unit(benchmark::kMillisecond);

}
