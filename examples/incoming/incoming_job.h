#pragma once

#include "examples/incoming/intake_bundle.h"

#include "LUMFoundation/LUMJob.h"

#include <atomic>
#include <functional>

/// Runs a job's work on some thread of its choice.
using Executor = std::function<void(std::function<void()>)>;

/// Takes one completed file in: compress, digest, store, check, keep a record, move the source away.
///
/// The result and the record appear under their names in one step each, so whenever the work ends, by Ctrl-C
/// or by a power cut, what stands there is whole. The record is there before the source moves, and refers to
/// the file itself, not to its path; it is kept once more afterwards, to know the new place. Nothing that was
/// taken in before gives way to a file of the same name.
class IncomingJob : public LUMJob {
public:
    static const NSClass& classObject();
    static NSRef<IncomingJob> jobForFile(const std::string& file, const std::string& originals,
        const IntakeBundle& bundle, const Executor& executor);

    bool start() override; ///< Reports the start, then hands the work to the executor.
    void cancel() override; ///< What is not stored yet is given up, and reported as cancelled.
    double progress() const override;

    const std::string& file() const { return mFile; }
    const Receipt& receipt() const { return mReceipt; } ///< Whole once the job has ended.

protected:
    IncomingJob(const std::string& file, const std::string& originals, const IntakeBundle& bundle,
        const Executor& executor);
    ~IncomingJob() override;

private:
    void work();
    bool step(bool (IncomingJob::*what)()); ///< False when cancelled, or when it fails.
    bool finishingStep(bool (IncomingJob::*what)());
    bool read();
    bool digest();
    bool name();
    bool compress();
    bool store();
    bool check();
    bool keepRecord();
    bool moveSourceAway();
    bool copySourceAway(const std::string& target);
    bool fail(const std::string& why);

    const std::string mFile;
    const std::string mOriginals;
    const IntakeBundle mBundle;
    const Executor mExecutor;
    Receipt mReceipt;
    NSRef<LUMFileRef> mSource; // wherever the file is now
    NSRef<NSData> mBytes;
    NSRef<NSData> mCompressed;
    std::atomic<int> mStepsDone = 0;
    std::atomic<bool> mCancelled = false;
};
