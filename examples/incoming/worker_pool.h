#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// A few threads that run what they are given, first in, first out. The destructor waits for all of it.
class WorkerPool {
public:
    explicit WorkerPool(std::size_t threads)
    {
        for (std::size_t at = 0; at < threads; ++at)
            mThreads.emplace_back([this] { serve(); });
    }
    ~WorkerPool() { finish(); }

    /// Waits for all the work and ends the threads.
    void finish()
    {
        {
            std::lock_guard lock(mMutex);
            mEnding = true;
        }
        mArrived.notify_all();
        for (std::thread& thread : mThreads)
            thread.join();
        mThreads.clear();
    }
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    void run(std::function<void()> work)
    {
        {
            std::lock_guard lock(mMutex);
            mWaiting.push_back(std::move(work));
        }
        mArrived.notify_one();
    }

private:
    void serve()
    {
        std::unique_lock lock(mMutex);
        while (true) {
            mArrived.wait(lock, [this] { return mEnding || !mWaiting.empty(); });
            if (mWaiting.empty())
                return;
            auto work = std::move(mWaiting.front());
            mWaiting.pop_front();
            lock.unlock();
            work();
            work = nullptr;
            lock.lock();
        }
    }

    std::mutex mMutex;
    std::condition_variable mArrived;
    std::deque<std::function<void()>> mWaiting;
    bool mEnding = false;
    std::vector<std::thread> mThreads;
};
