// libplist at the work of proplists_benchmark.cpp, linked into the same program where it is there.
#include "benchmarks/proplists_records.h"

#include <benchmark/benchmark.h>
#include <memory>

#ifdef LUM_PEER_LIBPLIST
#include <plist/plist.h>

namespace {

struct FreePlist {
    void operator()(void* plist) const { plist_free(plist); }
};
using Plist = std::unique_ptr<void, FreePlist>;

Plist graphOf(std::int64_t size)
{
    plist_t tracks = plist_new_array();
    for (const TrackRecord& record : trackRecords(size)) {
        plist_t track = plist_new_dict();
        plist_dict_set_item(
            track, "Identifier", plist_new_uint(static_cast<std::uint64_t>(record.identifier)));
        plist_dict_set_item(track, "Title", plist_new_string(record.title.c_str()));
        plist_dict_set_item(track, "Artist", plist_new_string(record.artist.c_str()));
        plist_dict_set_item(track, "Rating", plist_new_real(record.rating));
        plist_dict_set_item(track, "Added", plist_new_date(static_cast<std::int32_t>(record.added), 0));
        plist_dict_set_item(track, "Is Played", plist_new_bool(record.isPlayed));
        plist_t tags = plist_new_array();
        for (const std::string& tag : record.tags)
            plist_array_append_item(tags, plist_new_string(tag.c_str()));
        plist_dict_set_item(track, "Tags", tags);
        plist_dict_set_item(track, "Art", plist_new_data(record.art.data(), record.art.size()));
        plist_array_append_item(tracks, track);
    }
    plist_t top = plist_new_dict();
    plist_dict_set_item(top, "Tracks", tracks);
    return Plist(top);
}

using ToBytes = void (*)(plist_t, char**, std::uint32_t*);
using FromBytes = void (*)(const char*, std::uint32_t, plist_t*);

void write(benchmark::State& state, ToBytes toBytes)
{
    const Plist graph = graphOf(state.range());
    for (auto _ : state) {
        char* bytes = nullptr;
        std::uint32_t length = 0;
        toBytes(graph.get(), &bytes, &length);
        state.counters["bytes"] = length;
        plist_to_bin_free(bytes);
    }
}

void read(benchmark::State& state, ToBytes toBytes, FromBytes fromBytes)
{
    char* bytes = nullptr;
    std::uint32_t length = 0;
    toBytes(graphOf(state.range()).get(), &bytes, &length);
    for (auto _ : state) {
        plist_t graph = nullptr;
        fromBytes(bytes, length, &graph);
        plist_free(graph);
    }
    plist_to_bin_free(bytes);
}

constexpr std::int64_t kMegabyte = 1'000'000;

#define ROWS(path, function, ...)                                                                            \
    BENCHMARK_CAPTURE(function, path, __VA_ARGS__)                                                           \
        ->Name(#path "/libplist")                                                                            \
        ->Arg(kMegabyte / 10)                                                                                \
        ->Arg(kMegabyte)                                                                                     \
        ->Arg(100 * kMegabyte)                                                                               \
        ->Unit(benchmark::kMillisecond)

ROWS(PropertyListBinaryRead, read, plist_to_bin, plist_from_bin);
ROWS(PropertyListBinaryWrite, write, plist_to_bin);
ROWS(PropertyListXmlRead, read, plist_to_xml, plist_from_xml);
ROWS(PropertyListXmlWrite, write, plist_to_xml);

}
#endif
