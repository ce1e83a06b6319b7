// The peer of NotificationPost and NotificationRegister in notification_benchmark.cpp, with the same rows. It is a program
// of its own because the other framework's names are ours.
#import <Foundation/Foundation.h>

#include <benchmark/benchmark.h>
#include <cstdint>

@interface Counter : NSObject {
@public
    int64_t calls;
}
- (void)count:(NSNotification*)notification;
@end

@implementation Counter
- (void)count:(NSNotification*)notification
{
    ++calls;
}
@end

namespace {

NSArray* counters(int64_t count)
{
    NSMutableArray* made = [NSMutableArray array];
    for (int64_t i = 0; i < count; ++i)
        [made addObject:[[[Counter alloc] init] autorelease]];
    return made;
}

NSNotificationCenter* centerTelling(NSArray* observers)
{
    NSNotificationCenter* center = [[NSNotificationCenter alloc] init];
    for (NSUInteger i = 0; i < [observers count]; ++i)
        [center addObserver:[observers objectAtIndex:i] selector:@selector(count:) name:@"Changed" object:nil];
    return center;
}

void NotificationPost(benchmark::State& state)
{
    NSAutoreleasePool* pool = [NSAutoreleasePool new];
    NSArray* observers = counters(state.range());
    NSNotificationCenter* center = centerTelling(observers);
    for (auto _ : state)
        [center postNotificationName:@"Changed" object:observers];
    [center release];
    [pool release];
}

void NotificationRegister(benchmark::State& state)
{
    NSAutoreleasePool* pool = [NSAutoreleasePool new];
    NSArray* observers = counters(state.range());
    for (auto _ : state)
        [centerTelling(observers) release];
    state.SetItemsProcessed(state.iterations() * state.range());
    [pool release];
}

BENCHMARK(NotificationPost)->Name("NotificationPost/gnustep")->Arg(1)->Arg(100);
BENCHMARK(NotificationRegister)->Name("NotificationRegister/gnustep")->Arg(1000)->Arg(100000);

}
