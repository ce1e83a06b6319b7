// Sums blocks of numbers on other threads, as many at once as there are processors, and tells how it went.

#include "LUMFoundation/LUMByteCountFormatter.h"
#include "LUMFoundation/LUMDurationFormatter.h"
#include "LUMFoundation/LUMJobQueue.h"
#include "LUMFoundation/LUMRateReporter.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSThread.h"

#include <chrono>
#include <condition_variable>
#include <iostream>
#include <mutex>
#include <numeric>
#include <vector>

namespace {

constexpr std::size_t kJobs = 20;
constexpr std::size_t kBytesPerJob = 1 << 20;

/// One block: the work of a job, on a thread of its own.
class Summing : public LUMJob {
public:
    bool start() override
    {
        LUMJob::start(); // reports the start
        NSThread::detachNewThread([self = NSShare(this)] {
            const std::vector<unsigned char> block(kBytesPerJob, 1);
            self->mSum = std::accumulate(block.begin(), block.end(), std::size_t { 0 });
            self->jobDidComplete(); // reports the end, from this thread
        });
        return true;
    }
    std::size_t sum() const { return mSum; }

private:
    std::size_t mSum = 0;
};

/// Hears of each end, on the thread of the job, and waits for the last.
class Overseer : public NSObject, public LUMJobQueueDelegate {
public:
    void jobQueueDidStartJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidPauseJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidResumeJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidCancelJob(LUMJobQueue& queue, LUMJob& job) override
    {
        jobQueueDidCompleteJob(queue, job);
    }
    void jobQueueDidCompleteJob(LUMJobQueue&, LUMJob& job) override
    {
        std::lock_guard<std::mutex> lock(mLock);
        mBytes += static_cast<Summing&>(job).sum();
        mReporter->addSample(static_cast<double>(mBytes));
        ++mEnded;
        mChanged.notify_all();
    }

    std::size_t waitForAll()
    {
        std::unique_lock<std::mutex> lock(mLock);
        mChanged.wait(lock, [this] { return mEnded == kJobs; });
        return mBytes;
    }
    double rate()
    {
        std::lock_guard<std::mutex> lock(mLock);
        return mReporter->rate();
    }

private:
    std::mutex mLock;
    std::condition_variable mChanged;
    NSRef<LUMRateReporter> mReporter = LUMRateReporter::initWithTimeWindow(0.05); // seconds
    std::size_t mBytes = 0;
    std::size_t mEnded = 0;
};

}

int main()
{
    const auto began = std::chrono::steady_clock::now();
    auto overseer = NSMake<Overseer>();
    auto queue = NSMake<LUMJobQueue>();
    queue->setDelegate(overseer); // not owned by the queue
    queue->setMaxConcurrentJobs(LUMJobQueue::numCores());
    for (std::size_t i = 0; i < kJobs; ++i)
        queue->addJob(NSMake<Summing>());
    queue->startNextJobIfNeeded(); // adding starts nothing

    const std::size_t bytes = overseer->waitForAll();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - began;

    auto clock = NSMake<LUMDurationFormatter>();
    clock->setIncludeMilliseconds(true); // hundredths
    const double rate = overseer->rate();
    std::cout << kJobs << " jobs, " << LUMByteCountFormatter::stringWithByteCount(bytes) << " in "
              << clock->stringForObjectValue(NSNumber::numberWithDouble(seconds.count())) << ", lately "
              << LUMByteCountFormatter::stringWithByteCount(static_cast<std::uint64_t>(rate))
              << " a second\n";
    return bytes == kJobs * kBytesPerJob ? 0 : 1;
}
