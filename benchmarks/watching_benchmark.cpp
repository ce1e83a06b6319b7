#include "benchmarks/watching_benchmark.h"

#include "LUMFoundation/OVKQueue.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSRunLoop.h"
#include "LUMPlatform/NSString.h"

#include <functional>
#include <gio/gio.h>
#include <memory>
#include <semaphore>
#include <sys/inotify.h>
#include <thread>

namespace {

/// The delegate of a watcher; does what it is told to when a report comes.
class Listener : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"watcher:receivedNotification:forPath:", &Listener::received>()
        };
        static const NSClass& type = NSClass::define("Listener", &NSObject::classObject(), kMethods);
        return type;
    }
    void received(const NSId& /*watcher*/, const NSRef<NSString>& /*name*/, const NSRef<NSString>& /*path*/)
    {
        whenReceived();
    }

    std::function<void()> whenReceived;

protected:
    Listener() = default;
    ~Listener() override = default;
};

NSRef<OVKQueue> watcherOf(const WatchedFiles& files)
{
    auto watcher = OVKQueue::init();
    for (const std::string& path : files.paths)
        watcher->addPath(path);
    return watcher;
}

void measureOurs(benchmark::State& state, const std::function<void()>& run, const std::function<void()>& stop)
{
    const WatchedFiles files(state.range(0));
    const auto listener = NSMake<Listener>();
    const auto watcher = watcherOf(files);
    watcher->setDelegate(listener);
    WatchingClock::time_point received;
    listener->whenReceived = [&] {
        received = WatchingClock::now();
        stop();
    };
    measureReports(state, files, [&](WatchingClock::time_point start) {
        run();
        return std::chrono::duration<double>(received - start).count();
    });
}

void WriteToReport_Ours(benchmark::State& state)
{
    const auto loop = NSRunLoop::main();
    measureOurs(
        state, [&] { loop->run(); }, [&] { loop->stop(); });
}

void WriteToReport_OursInGLib(benchmark::State& state)
{
    bool isDone = false;
    measureOurs(
        state,
        [&] {
            for (isDone = false; !isDone;)
                g_main_context_iteration(nullptr, TRUE);
        },
        [&] { isDone = true; });
}

/// A thread that does nothing but read, and tells when it has.
void WriteToReport_Inotify(benchmark::State& state)
{
    const WatchedFiles files(state.range(0));
    const int queue = inotify_init1(IN_CLOEXEC);
    for (const std::string& path : files.paths)
        inotify_add_watch(queue, path.c_str(), IN_MODIFY | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF);
    WatchingClock::time_point received;
    std::binary_semaphore done { 0 };
    std::thread reader([&] {
        char buffer[4096];
        while (read(queue, buffer, sizeof(buffer)) > 0) {
            received = WatchingClock::now();
            if (reinterpret_cast<const inotify_event*>(buffer)->mask & IN_IGNORED)
                return;
            done.release();
        }
    });
    measureReports(state, files, [&](WatchingClock::time_point start) {
        done.acquire();
        return std::chrono::duration<double>(received - start).count();
    });
    inotify_rm_watch(queue, 1);
    reader.join();
    close(queue);
}

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
using Monitor = std::unique_ptr<GFileMonitor, Unref>;

std::vector<Monitor> monitorsOf(const WatchedFiles& files)
{
    std::vector<Monitor> monitors;
    for (const std::string& path : files.paths) {
        const std::unique_ptr<GFile, Unref> file(g_file_new_for_path(path.c_str()));
        monitors.emplace_back(g_file_monitor_file(file.get(), G_FILE_MONITOR_NONE, nullptr, nullptr));
    }
    return monitors;
}

void WriteToReport_GFileMonitor(benchmark::State& state)
{
    const WatchedFiles files(state.range(0));
    const auto monitors = monitorsOf(files);
    g_file_monitor_set_rate_limit(monitors.front().get(), 0);
    bool isDone = false;
    const auto changed = +[](GFileMonitor*, GFile*, GFile*, GFileMonitorEvent event, gpointer done) {
        if (event == G_FILE_MONITOR_EVENT_CHANGED)
            *static_cast<bool*>(done) = true;
    };
    g_signal_connect(monitors.front().get(), "changed", G_CALLBACK(changed), &isDone);
    measureReports(state, files, [&](WatchingClock::time_point start) {
        for (isDone = false; !isDone;)
            g_main_context_iteration(nullptr, TRUE);
        return secondsSince(start);
    });
}

void AddFiles_Ours(benchmark::State& state)
{
    measureAdding(state, watcherOf);
}

void AddFiles_GFileMonitor(benchmark::State& state)
{
    measureAdding(state, monitorsOf);
}

void AddFiles_Inotify(benchmark::State& state)
{
    measureAdding(state, [](const WatchedFiles& files) {
        struct Queue {
            int number = inotify_init1(IN_CLOEXEC);
            ~Queue() { close(number); }
        };
        auto queue = std::make_unique<Queue>();
        for (const std::string& path : files.paths)
            inotify_add_watch(queue->number, path.c_str(), IN_MODIFY);
        return queue;
    });
}

void StartAndStop_Ours(benchmark::State& state)
{
    for ([[maybe_unused]] auto iteration : state)
        static_cast<void>(OVKQueue::init());
}

BENCHMARK(WriteToReport_Ours)->Name("WriteToReport/ours")->Arg(1)->Arg(10'000)->UseManualTime();
BENCHMARK(WriteToReport_OursInGLib)->Name("WriteToReport/ours_in_glib")->Arg(1)->Arg(10'000)->UseManualTime();
BENCHMARK(WriteToReport_Inotify)
    ->Name("WriteToReport/bare_inotify_read")
    ->Arg(1)
    ->Arg(10'000)
    ->UseManualTime();
BENCHMARK(WriteToReport_GFileMonitor)
    ->Name("WriteToReport/g_file_monitor")
    ->Arg(1)
    ->Arg(10'000)
    ->UseManualTime();
BENCHMARK(AddFiles_Ours)->Name("AddFiles/ours")->Arg(10'000)->UseManualTime();
BENCHMARK(AddFiles_Inotify)->Name("AddFiles/bare_inotify")->Arg(10'000)->UseManualTime();
BENCHMARK(AddFiles_GFileMonitor)->Name("AddFiles/g_file_monitor")->Arg(10'000)->UseManualTime();
BENCHMARK(StartAndStop_Ours)->Name("StartAndStop/ours/1")->UseRealTime();

}
