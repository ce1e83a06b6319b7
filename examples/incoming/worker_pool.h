#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

/// A few threads that run what they are given, first in, first out. The destructor waits for all of it. Where
/// the system has no room for as many, fewer do the same work; for none at all the constructor throws.
class WorkerPool {
public:
    explicit WorkerPool(std::size_t threads)
    {
        try {
            for (std::size_t at = 0; at < threads; ++at)
                mThreads.emplace_back([this] { serve(); });
        } catch (const std::system_error&) {
            if (mThreads.empty())
                throw;
        }
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
