#include "LUMFoundation/LUMJobQueue.h"

#include <benchmark/benchmark.h>
#include <deque>
#include <glib.h>
#include <mutex>
#include <vector>

namespace {

/// Hears of every job, and does no more than count.
class Counter : public NSObject, public LUMJobQueueDelegate {
public:
    std::int64_t started = 0;
    std::int64_t ended = 0;

    void jobQueueDidStartJob(LUMJobQueue&, LUMJob&) override { ++started; }
    void jobQueueDidPauseJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidResumeJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidCancelJob(LUMJobQueue&, LUMJob&) override { ++ended; }
    void jobQueueDidCompleteJob(LUMJobQueue&, LUMJob&) override { ++ended; }
};

/// Jobs that go round: while one is active and `pending` wait, each that ends is added again.
struct Rounds {
    explicit Rounds(std::size_t pending)
    {
        queue->setDelegate(counter);
        for (std::size_t i = 0; i <= pending + 1; ++i)
            jobs.push_back(NSMake<LUMJob>());
        for (std::size_t i = 0; i <= pending; ++i)
            queue->addJob(jobs[i]);
        queue->startNextJobIfNeeded();
        next = pending + 1;
    }
    const NSRef<LUMJob>& at(std::size_t& position)
    {
        const auto& job = jobs[position];
        position = position + 1 == jobs.size() ? 0 : position + 1;
        return job;
    }

    NSRef<LUMJobQueue> queue = NSMake<LUMJobQueue>();
    NSRef<Counter> counter = NSMake<Counter>();
    std::vector<NSRef<LUMJob>> jobs;
    std::size_t active = 0;
    std::size_t next;
};

void JobAddStartComplete_Own(benchmark::State& state)
{
    Rounds rounds(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        rounds.queue->addJob(rounds.at(rounds.next));
        rounds.at(rounds.active)->jobDidComplete(); // which starts the next
    }
    if (rounds.counter->ended != state.iterations() || rounds.counter->started != rounds.counter->ended + 1)
        state.SkipWithError("jobs were lost");
    state.SetItemsProcessed(state.iterations());
}

void JobAddCancel_Own(benchmark::State& state)
{
    Rounds rounds(static_cast<std::size_t>(state.range(0)));
    const NSRef<LUMJob> job = rounds.jobs.back();
    for (auto _ : state) {
        rounds.queue->addJob(job);
        rounds.queue->cancelJob(job); // from the end
    }
    state.SetItemsProcessed(state.iterations());
}

/// What a program would write by hand: a list of tasks under a mutex.
struct Task {
    virtual ~Task() = default;
    virtual bool start()
    {
        state = 1;
        return true;
    }
    std::atomic<int> state { 0 };
    std::atomic<double> priority { 0.5 };
};

class DequeQueue {
public:
    std::int64_t started = 0;
    std::int64_t ended = 0;

    void add(std::shared_ptr<Task> task)
    {
        std::lock_guard<std::mutex> lock(mLock);
        mPending.push_back(std::move(task));
    }
    void startNext()
    {
        std::shared_ptr<Task> task;
        {
            std::lock_guard<std::mutex> lock(mLock);
            if (!mActive.empty() || mPending.empty())
                return;
            task = std::move(mPending.front());
            mPending.pop_front();
            mActive.push_back(task);
        }
        task->priority = 1.0;
        if (task->start())
            ++started;
    }
    void complete(const std::shared_ptr<Task>& task)
    {
        task->state = 3;
        {
            std::lock_guard<std::mutex> lock(mLock);
            std::erase(mActive, task);
        }
        ++ended;
        startNext();
    }

private:
    std::mutex mLock;
    std::deque<std::shared_ptr<Task>> mPending;
    std::vector<std::shared_ptr<Task>> mActive;
};

void JobAddStartComplete_Deque(benchmark::State& state)
{
    DequeQueue queue;
    std::vector<std::shared_ptr<Task>> tasks(static_cast<std::size_t>(state.range(0)) + 2);
    for (auto& task : tasks)
        task = std::make_shared<Task>();
    for (std::size_t i = 0; i + 1 < tasks.size(); ++i)
        queue.add(tasks[i]);
    queue.startNext();
    std::size_t active = 0;
    std::size_t next = tasks.size() - 1;
    auto after = [&](std::size_t position) { return position + 1 == tasks.size() ? 0 : position + 1; };
    for (auto _ : state) {
        queue.add(tasks[next]);
        next = after(next);
        queue.complete(tasks[active]);
        active = after(active);
    }
    state.SetItemsProcessed(state.iterations());
}

#define SIZES Arg(1)->Arg(1000)->Arg(1'000'000)
BENCHMARK(JobAddStartComplete_Own)->Name("JobAddStartComplete/ours")->SIZES;
BENCHMARK(JobAddStartComplete_Deque)->Name("JobAddStartComplete/std_deque")->SIZES;
BENCHMARK(JobAddCancel_Own)->Name("JobAddCancel/ours")->SIZES;

}
