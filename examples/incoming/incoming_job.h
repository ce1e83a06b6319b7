#pragma once

#include "examples/incoming/receipt.h"

#include "LUMFoundation/LUMJob.h"
#include "LUMPlatform/NSData.h"

#include <atomic>
#include <functional>

/// Runs a job's work on some thread of its choice.
using Executor = std::function<void(std::function<void()>)>;

/// Takes one completed file in: compress, digest, store, check, move the source away.
///
/// The result appears under its name in one step, so whenever the work ends, by Ctrl-C or by a power cut,
/// what stands there is whole.
class IncomingJob : public LUMJob {
public:
    static const NSClass& classObject();
    static NSRef<IncomingJob> jobForFile(
        const std::string& file, const std::string& into, const Executor& executor);

    bool start() override; ///< Reports the start, then hands the work to the executor.
    void cancel() override; ///< What is not stored yet is given up, and reported as cancelled.
    double progress() const override;

    const std::string& file() const { return mFile; }
    const Receipt& receipt() const { return mReceipt; } ///< Whole once the job has ended.

protected:
    IncomingJob(const std::string& file, const std::string& into, const Executor& executor);
    ~IncomingJob() override;

private:
    void work();
    bool step(bool (IncomingJob::*what)()); ///< False when cancelled, or when it fails.
    bool finishingStep(bool (IncomingJob::*what)());
    bool read();
    bool digest();
    bool compress();
    bool store();
    bool check();
    bool moveSourceAway();
    bool fail(const std::string& why);
    std::string resultPath() const;

    const std::string mFile;
    const std::string mInto;
    const Executor mExecutor;
    Receipt mReceipt;
    NSRef<NSData> mBytes;
    NSRef<NSData> mCompressed;
    std::atomic<int> mStepsDone = 0;
    std::atomic<bool> mCancelled = false;
};
