#pragma once

#include "tests/watching/change_names.h"
#include "watching/kernel_queue.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <set>

namespace lum {

/// A kernel queue without a kernel, steered and watched from outside while a watcher owns it.
class FakeKernelQueue : public KernelQueue {
public:
    /// What the test holds of the queue.
    class Control {
    public:
        /// Lets the next wait give these events: a path as it was added, and VnodeChange bits.
        void send(std::vector<std::pair<std::string, std::uint32_t>> events)
        {
            {
                const std::lock_guard lock(mLock);
                std::vector<Event> batch;
                for (const auto& [path, changes] : events)
                    batch.push_back({ mTokens[path], changes });
                mBatches.emplace_back([batch] { return batch; });
            }
            mChanged.notify_all();
        }
        /// Lets the next wait do this.
        void sendResult(std::function<std::vector<Event>()> wait)
        {
            {
                const std::lock_guard lock(mLock);
                mBatches.push_back(std::move(wait));
            }
            mChanged.notify_all();
        }
        /// The calls since the last take(), as in "add(/a, WRITE) close ".
        std::string take()
        {
            const std::lock_guard lock(mLock);
            return std::exchange(mCalls, {});
        }
        /// Whether the queue, and all that its watcher shared with the thread, has gone in good time.
        bool hasEnded()
        {
            std::unique_lock lock(mLock);
            return mChanged.wait_for(lock, std::chrono::seconds(30), [this] { return mHasEnded; });
        }
        bool isClosed()
        {
            const std::lock_guard lock(mLock);
            return mIsClosed;
        }

        std::set<std::string> missingPaths;
        int removeError = 0;
        int closeError = 0;
        std::chrono::milliseconds lastLimit {};

    private:
        friend class FakeKernelQueue;
        void say(const std::string& call) { mCalls += call + " "; }

        std::mutex mLock;
        std::condition_variable mChanged;
        std::deque<std::function<std::vector<Event>()>> mBatches;
        std::map<std::string, Token> mTokens;
        std::map<Token, std::string> mPaths;
        std::string mCalls;
        bool mIsWoken = false;
        bool mIsClosed = false;
        bool mHasEnded = false;
    };

    explicit FakeKernelQueue(std::shared_ptr<Control> control) : mControl(std::move(control)) { }
    ~FakeKernelQueue() override
    {
        {
            const std::lock_guard lock(mControl->mLock);
            mControl->mHasEnded = true;
        }
        mControl->mChanged.notify_all();
    }

    int descriptor() const override { return 77; }

    bool add(Token token, const std::string& path, std::uint32_t changes) override
    {
        const std::lock_guard lock(mControl->mLock);
        mControl->say("add(" + path + ", " + changeNames(changes) + ")");
        if (mControl->missingPaths.count(path))
            return false;
        mControl->mTokens[path] = token;
        mControl->mPaths[token] = path;
        return true;
    }

    int remove(Token token) override
    {
        const std::lock_guard lock(mControl->mLock);
        mControl->say("remove(" + mControl->mPaths[token] + ")");
        return mControl->removeError;
    }

    std::vector<Event> wait(std::chrono::milliseconds limit) override
    {
        std::unique_lock lock(mControl->mLock);
        mControl->lastLimit = limit;
        mControl->mChanged.wait_for(
            lock, limit, [this] { return mControl->mIsWoken || !mControl->mBatches.empty(); });
        mControl->mIsWoken = false;
        if (mControl->mBatches.empty())
            return {};
        const auto batch = std::move(mControl->mBatches.front());
        mControl->mBatches.pop_front();
        lock.unlock();
        return batch();
    }

    void wake() override
    {
        {
            const std::lock_guard lock(mControl->mLock);
            mControl->mIsWoken = true;
        }
        mControl->mChanged.notify_all();
    }

    int close() override
    {
        const std::lock_guard lock(mControl->mLock);
        mControl->say("close");
        mControl->mIsClosed = true;
        return mControl->closeError;
    }

private:
    const std::shared_ptr<Control> mControl;
};

}
