#include "LUMPlatform/NSThread.h"
#include "platform/runloop/main_queue.h"

#include <benchmark/benchmark.h>
#include <cstdint>
#include <functional>
#include <glib.h>
#include <pthread.h>
#include <sched.h>
#include <semaphore>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>

#ifdef LUM_PEER_QT
#include <QCoreApplication>
#include <QEventLoop>
#endif

namespace {

constexpr benchmark::IterationCount kHandOffs = 1000;

/// Keeps a thread on one processor. Where the system puts the two threads of a hand-off decides its time more
/// than anything they do, so each row names the number of processors they share: 1 shows the work, 2 adds the
/// wake of an idle processor.
class OnProcessor {
public:
    explicit OnProcessor(int processor)
    {
        pthread_getaffinity_np(pthread_self(), sizeof mBefore, &mBefore);
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(static_cast<std::size_t>(processor), &one);
        pthread_setaffinity_np(pthread_self(), sizeof one, &one);
    }
    ~OnProcessor() { pthread_setaffinity_np(pthread_self(), sizeof mBefore, &mBefore); }
    OnProcessor(const OnProcessor&) = delete;
    OnProcessor& operator=(const OnProcessor&) = delete;

private:
    cpu_set_t mBefore;
};

/// A thread that makes `handOff` a batch of times whenever it is told to, then calls `finished`.
class Sender {
public:
    Sender(std::int64_t processors, std::function<void()> handOff, std::function<void()> finished)
        : mThread([this, processors, handOff = std::move(handOff), finished = std::move(finished)] {
            OnProcessor here(processors == 1 ? 0 : 1);
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
    OnProcessor here(0);
    while (state.KeepRunningBatch(kHandOffs)) {
        sender.start();
        serve();
    }
}

void addOne()
{
    static std::int64_t calls = 0;
    benchmark::DoNotOptimize(++calls);
}

void BlockingHandOff_Own(benchmark::State& state)
{
    auto& queue = platform::MainQueue::shared();
    Sender sender(
        state.range(), [] { NSThread::performOnMainThreadAndWait(addOne); }, [&] { queue.stop(); });
    measure(state, sender, [&] { queue.run(); });
}

void BlockingHandOff_InGLib(benchmark::State& state)
{
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    Sender sender(
        state.range(), [] { NSThread::performOnMainThreadAndWait(addOne); },
        [&] { NSThread::performOnMainThread([=] { g_main_loop_quit(loop); }); });
    measure(state, sender, [&] { g_main_loop_run(loop); });
    g_main_loop_unref(loop);
}

void BlockingHandOff_GLib(benchmark::State& state)
{
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    static std::binary_semaphore done { 0 };
    auto handOff = [] {
        g_main_context_invoke(
            nullptr,
            [](gpointer) -> gboolean {
                addOne();
                done.release();
                return G_SOURCE_REMOVE;
            },
            nullptr);
        done.acquire();
    };
    Sender sender(
        state.range(), handOff, [&] { NSThread::performOnMainThread([=] { g_main_loop_quit(loop); }); });
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
            state.range(),
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

#ifdef LUM_PEER_QT
void BlockingHandOff_Qt(benchmark::State& state)
{
    static int count = 1;
    static char name[] = "runloop_benchmark";
    static char* names[] = { name, nullptr };
    QCoreApplication application(count, names);
    QObject receiver;
    QEventLoop loop;
    Sender sender(
        state.range(), [&] { QMetaObject::invokeMethod(&receiver, addOne, Qt::BlockingQueuedConnection); },
        [&] {
            QMetaObject::invokeMethod(
                &loop, [&] { loop.quit(); }, Qt::QueuedConnection);
        });
    measure(state, sender, [&] { loop.exec(); });
}
BENCHMARK(BlockingHandOff_Qt)->Name("BlockingHandOff/qt")->Arg(1)->Arg(2)->UseRealTime();
#endif

BENCHMARK(BlockingHandOff_Own)->Name("BlockingHandOff/ours")->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(BlockingHandOff_InGLib)->Name("BlockingHandOff/ours_in_glib")->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(BlockingHandOff_GLib)->Name("BlockingHandOff/g_main_context_invoke")->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(BlockingHandOff_EventFD)->Name("BlockingHandOff/bare_eventfd")->Arg(1)->Arg(2)->UseRealTime();

}
