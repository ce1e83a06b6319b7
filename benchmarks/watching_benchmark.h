#pragma once

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <malloc.h>
#include <string>
#include <unistd.h>
#include <vector>

/// A folder of files to watch, the first of which is written to.
class WatchedFiles {
public:
    explicit WatchedFiles(long count)
    {
        char name[] = "/tmp/lum-watching-XXXXXX";
        mFolder = mkdtemp(name);
        for (long i = 0; i < count; ++i) {
            paths.push_back(mFolder + "/" + std::to_string(i));
            close(open(paths.back().c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        }
        mDescriptor = open(paths.front().c_str(), O_WRONLY | O_CLOEXEC);
    }
    ~WatchedFiles()
    {
        close(mDescriptor);
        std::filesystem::remove_all(mFolder);
    }
    WatchedFiles(const WatchedFiles&) = delete;
    WatchedFiles& operator=(const WatchedFiles&) = delete;

    void write() const { benchmark::DoNotOptimize(pwrite(mDescriptor, "x", 1, 0)); }

    std::vector<std::string> paths;

private:
    std::string mFolder;
    int mDescriptor;
};

using WatchingClock = std::chrono::steady_clock;

inline double secondsSince(WatchingClock::time_point start)
{
    return std::chrono::duration<double>(WatchingClock::now() - start).count();
}

/// Times from a write to its report: `wait` returns when the report has come, with the seconds since `start`.
template<typename Wait> void measureReports(benchmark::State& state, const WatchedFiles& files, Wait wait)
{
    for ([[maybe_unused]] auto iteration : state) {
        const auto start = WatchingClock::now();
        files.write();
        state.SetIterationTime(wait(start));
    }
}

/// Times the adding of all files by `add`, which returns what holds the watches; ending them does not count.
template<typename Add> void measureAdding(benchmark::State& state, Add add)
{
    const WatchedFiles files(state.range(0));
    double bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const std::size_t before = mallinfo2().uordblks;
        const auto start = WatchingClock::now();
        const auto watches = add(files);
        state.SetIterationTime(secondsSince(start));
        bytes = static_cast<double>(mallinfo2().uordblks) - static_cast<double>(before);
    }
    state.counters["bytes/watch"] = bytes / static_cast<double>(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
