// Keyed and sequential archives of a list of small objects. The peer of the keyed ones is
// archiving_gnustep_benchmark.mm.
#include "LUMPlatform/NSArchiver.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSCoding.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSUnarchiver.h"

#include <benchmark/benchmark.h>

namespace {

constexpr NSStringConstant kTitle("title");
constexpr NSStringConstant kDate("date");
constexpr NSStringConstant kSize("size");
constexpr NSStringConstant kCount("count");

class Track : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("Track", &NSObject::classObject(), {});
        return type;
    }
    static NSRef<Track> initWithCoder(NSCoder& coder)
    {
        auto track = NSMake<Track>();
        if (coder.allowsKeyedCoding()) {
            track->title = coder.decodeObjectForKey<NSString>(kTitle);
            track->date = coder.decodeObjectForKey<NSDate>(kDate);
            track->size = coder.decodeObjectForKey<NSNumber>(kSize);
            track->count = coder.decodeIntForKey(kCount);
        } else
            coder.decodeValuesOfObjCTypes(track->title, track->date, track->size, track->count);
        return track;
    }
    void encodeWithCoder(NSCoder& coder) const override
    {
        if (coder.allowsKeyedCoding()) {
            coder.encodeObjectForKey(title, kTitle);
            coder.encodeObjectForKey(date, kDate);
            coder.encodeObjectForKey(size, kSize);
            coder.encodeInt(count, kCount);
        } else
            coder.encodeValuesOfObjCTypes(title, date, size, count);
    }

    NSRef<NSString> title;
    NSRef<NSDate> date;
    NSRef<NSNumber> size;
    int count = 0;
};

/// A list of tracks, each of four objects.
NSRef<NSArray> tracks(std::int64_t objects)
{
    NSCoding::registerClass<Track>();
    auto list = NSMutableArray::array();
    for (std::int64_t at = 0; at < objects / 4; ++at) {
        auto track = NSMake<Track>();
        track->title = NSString::stringWithFormat("Take %lld of the song", at);
        track->date = NSDate::dateWithTimeIntervalSinceReferenceDate(static_cast<double>(at) + 0.5);
        track->size = NSNumber::numberWithLongLong(1'000'000 + at);
        track->count = static_cast<int>(at);
        list->addObject(track);
    }
    return list;
}

template<auto Archive> void archive(benchmark::State& state)
{
    const auto list = tracks(state.range());
    for (auto _ : state)
        benchmark::DoNotOptimize(Archive(list));
    state.SetItemsProcessed(state.iterations() * state.range());
}

template<auto Archive, auto Unarchive> void unarchive(benchmark::State& state)
{
    const auto data = Archive(tracks(state.range()));
    for (auto _ : state) {
        auto read = NSCast<NSArray>(Unarchive(data));
        if (read->count() != static_cast<NSUInteger>(state.range() / 4))
            state.SkipWithError("not what was archived");
    }
    state.SetItemsProcessed(state.iterations() * state.range());
}

void KeyedArchive(benchmark::State& state)
{
    archive<&NSKeyedArchiver::archivedDataWithRootObject>(state);
}
void KeyedUnarchive(benchmark::State& state)
{
    unarchive<&NSKeyedArchiver::archivedDataWithRootObject, &NSKeyedUnarchiver::unarchiveObjectWithData>(
        state);
}
void SequentialArchive(benchmark::State& state)
{
    archive<&NSArchiver::archivedDataWithRootObject>(state);
}
void SequentialUnarchive(benchmark::State& state)
{
    unarchive<&NSArchiver::archivedDataWithRootObject, &NSUnarchiver::unarchiveObjectWithData>(state);
}

BENCHMARK(KeyedArchive)->Name("KeyedArchive/ours")->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(KeyedUnarchive)->Name("KeyedUnarchive/ours")->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SequentialArchive)->Name("SequentialArchive/ours")->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SequentialUnarchive)->Name("SequentialUnarchive/ours")->Arg(100000)->Unit(benchmark::kMillisecond);

}
