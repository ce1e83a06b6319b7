#pragma once

#include "examples/incoming/incoming_job.h"
#include "examples/incoming/worker_pool.h"

#include "LUMFoundation/LUMIncomingFolderWatcher.h"
#include "LUMFoundation/LUMJobQueue.h"
#include "LUMPlatform/NSNotification.h"

#include <unordered_map>

/// The road of a file: noticed in the drop folder, queued once, worked on by a job, its receipt handed on.
///
/// Lives on the main thread: reports of jobs, which end on worker threads, are brought there.
class Intake : public NSObject, public LUMJobQueueDelegate {
public:
    static const NSClass& classObject();
    /// Null when the folder cannot be made. `ended` hears of every file, on the main thread.
    static NSRef<Intake> intakeForFolder(const std::string& folder, const std::string& originals,
        const IntakeBundle& bundle, std::size_t jobs, std::function<void(const Receipt&)> ended);

    /// Takes no more files in; `idle` is called on the main thread once all that was begun has ended.
    void stop(std::function<void()> idle);
    /// Ends the worker threads, each of which may still hold this object for the report it has just made.
    void finish() { mWorkers.finish(); }
    std::size_t filesInWork() const { return mJobs.size(); }
    NSUInteger filesWaiting() const { return mQueue->numberOfPendingJobs(); }

    void fileArrived(const NSRef<NSNotification>& notification); ///< Selector: fileArrived:

    void jobQueueDidStartJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidPauseJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidResumeJob(LUMJobQueue&, LUMJob&) override { }
    void jobQueueDidCancelJob(LUMJobQueue&, LUMJob& job) override { bringToMainThread(job); }
    void jobQueueDidCompleteJob(LUMJobQueue&, LUMJob& job) override { bringToMainThread(job); }

protected:
    Intake(const std::string& originals, const IntakeBundle& bundle, std::size_t jobs,
        std::function<void(const Receipt&)> ended);
    ~Intake() override;

private:
    void bringToMainThread(LUMJob& job);
    void jobEnded(const NSRef<IncomingJob>& job);
    void becomeIdleIfDone();

    const std::string mOriginals;
    const IntakeBundle mBundle;
    const std::function<void(const Receipt&)> mEnded;
    WorkerPool mWorkers;
    NSRef<LUMJobQueue> mQueue;
    NSRef<LUMIncomingFolderWatcher> mWatcher;
    // Every scan reports every file again; a failed one stays known, so that it is tried only once.
    std::unordered_map<std::string, NSRef<IncomingJob>> mJobs;
    std::unordered_map<std::string, std::string> mFailed;
    std::function<void()> mIdle;
    bool mStopping = false;
};
