#include "LUMPlatform/NSThread.h"
#include "platform/runloop/main_queue.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <functional>
#include <glib.h>
#include <semaphore>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr benchmark::IterationCount kHandOffs = 1000;

/// A thread that makes `handOff` a batch of times whenever it is told to, then calls `finished`.
class Sender {
public:
    Sender(std::function<void()> handOff, std::function<void()> finished)
        : mThread([this, handOff = std::move(handOff), finished = std::move(finished)] {
            for (;;) {
                mStart.acquire();
                if (mEnd)
                    return;
                for (benchmark::IterationCount i = 0; i < kHandOffs; ++i)
                    handOff();
                finished();
            }
        })
    {
    }

    ~Sender()
    {
        mEnd = true;
        mStart.release();
        mThread.join();
    }

    void start() { mStart.release(); }

private:
    std::binary_semaphore mStart { 0 };
    bool mEnd = false;
    std::thread mThread;
};

void measure(benchmark::State& state, Sender& sender, const std::function<void()>& serve)
{
    while (state.KeepRunningBatch(kHandOffs)) {
        sender.start();
        serve();
    }
}

void addOne()
{
    static int64_t calls = 0;
    benchmark::DoNotOptimize(++calls);
}

void BlockingHandOff_Own(benchmark::State& state)
{
    auto& queue = platform::MainQueue::shared();
    Sender sender([] { NSThread::performOnMainThreadAndWait(addOne); }, [&] { queue.stop(); });
    measure(state, sender, [&] { queue.run(); });
}

void BlockingHandOff_OwnInGLib(benchmark::State& state)
{
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    Sender sender([] { NSThread::performOnMainThreadAndWait(addOne); },
        [&] { NSThread::performOnMainThread([=] { g_main_loop_quit(loop); }); });
    measure(state, sender, [&] { g_main_loop_run(loop); });
    g_main_loop_unref(loop);
}

void BlockingHandOff_EventFD(benchmark::State& state)
{
    int there = eventfd(0, 0);
    int back = eventfd(0, 0);
    auto put = [](int fd) { eventfd_write(fd, 1); };
    auto take = [](int fd) {
        eventfd_t count;
        eventfd_read(fd, &count);
    };
    {
        Sender sender(
            [=] {
                put(there);
                take(back);
            },
            [] {});
        measure(state, sender, [=] {
            for (benchmark::IterationCount i = 0; i < kHandOffs; ++i) {
                take(there);
                addOne();
                put(back);
            }
        });
    }
    close(there);
    close(back);
}

BENCHMARK(BlockingHandOff_Own)->Name("BlockingHandOff/ours/1")->UseRealTime();
BENCHMARK(BlockingHandOff_OwnInGLib)->Name("BlockingHandOff/ours_in_glib/1")->UseRealTime();
BENCHMARK(BlockingHandOff_EventFD)->Name("BlockingHandOff/bare_eventfd/1")->UseRealTime();

}
