// Apart from the other rows, because the names of Qt and GLib get in each other's way.
#ifdef LUM_PEER_QT
#include "benchmarks/watching_benchmark.h"

#include <QCoreApplication>
#include <QFileSystemWatcher>
#include <memory>

namespace {

QCoreApplication& application()
{
    static int count = 1;
    static char name[] = "watching_benchmark";
    static char* arguments[] = { name, nullptr };
    static QCoreApplication application(count, arguments);
    return application;
}

std::unique_ptr<QFileSystemWatcher> watcherOf(const WatchedFiles& files)
{
    application();
    QStringList paths;
    for (const std::string& path : files.paths)
        paths.append(QString::fromStdString(path));
    auto watcher = std::make_unique<QFileSystemWatcher>();
    watcher->addPaths(paths);
    return watcher;
}

void WriteToReport_Qt(benchmark::State& state)
{
    const WatchedFiles files(state.range(0));
    const auto watcher = watcherOf(files);
    bool isDone = false;
    QObject::connect(watcher.get(), &QFileSystemWatcher::fileChanged, [&] { isDone = true; });
    measureReports(state, files, [&](WatchingClock::time_point start) {
        for (isDone = false; !isDone;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return secondsSince(start);
    });
}

void AddFiles_Qt(benchmark::State& state)
{
    measureAdding(state, watcherOf);
}

BENCHMARK(WriteToReport_Qt)
    ->Name("WriteToReport/q_file_system_watcher")
    ->Arg(1)
    ->Arg(10'000)
    ->UseManualTime();
BENCHMARK(AddFiles_Qt)->Name("AddFiles/q_file_system_watcher")->Arg(10'000)->UseManualTime();

}
#endif
