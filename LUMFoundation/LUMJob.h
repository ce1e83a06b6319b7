#pragma once

#include "LUMFoundation/LUMJobDelegate.h"
#include "LUMPlatform/NSLock.h"

#include <cstdint>
#include <memory>

class NSError;

namespace lum {
class JobIndex;
struct JobPlace;
}

/// Where a job stands. A failed job is a cancelled one with an error.
enum LUMJobState : std::int32_t {
    LUMJobStateIdle = 0,
    LUMJobStateRunning = 1,
    LUMJobStatePaused = 2,
    LUMJobStateCompleted = 3,
    LUMJobStateCancelled = 4,
};

/// A unit of background work, to be subclassed; a LUMJobQueue decides when it starts.
///
/// A subclass overrides start() and, as its work allows, cancel(), pause(), resume() and progress(). Where
/// the work runs is its own choice: this class starts no thread. It reports the end of the work by exactly
/// one of jobDidComplete(), jobDidCancel() and jobDidError(), from any thread.
///
///     class Copying : public LUMJob {
///     public:
///         bool start() override
///         {
///             LUMJob::start(); // reports that it started
///             NSThread::detachNewThread([self = NSShare(this)] {
///                 copyFiles();
///                 self->jobDidComplete(); // reports the end, from that thread
///             });
///             return true;
///         }
///     };
///
/// No call tests the state first: pausing a job that never started, or starting one twice, does as it is told
/// and reports. Threads: state, priority, delegate and error may be set, read and reported from any thread at
/// any time; what a subclass adds it guards itself, by lock() if it likes, which nothing in here takes. A
/// report keeps the delegate alive, so the owner of a queue may drop it while its jobs run.
class LUM_EXPORT LUMJob : public NSObject, public NSLocking {
public:
    static const NSClass& classObject();

    /// Replaces the error; null clears it.
    /// Selector: setError:
    virtual void setError(const NSRef<NSError>& error);
    /// Null unless the job failed.
    /// Selector: error
    virtual NSRef<NSError> error() const;

    /// For subclasses; not recursive. Raises NSInternalInconsistencyException when the caller has it.
    /// Selector: lock
    void lock() override;
    /// Raises NSInternalInconsistencyException when the caller does not hold it.
    /// Selector: unlock
    void unlock() override;

    /// Any value; 0.5 in a new job. A queue overwrites it with its own when it starts the job.
    /// Selector: setPriority:
    virtual void setPriority(double priority);
    virtual double priority() const; ///< Selector: priority

    /// Stores the state, a LUMJobState or any other number, and tells nobody. Every change of state made in
    /// here goes through this.
    /// Selector: setCurrentState:
    virtual void setCurrentState(std::int32_t state);
    virtual std::int32_t currentState() const; ///< Selector: currentState

    /// Sets who hears the reports, without owning it. Raises LUMJobDelegateException, and keeps the old one,
    /// for an object that does not declare LUMJobDelegate, null included: a delegate can be replaced, never
    /// cleared.
    /// Selector: setDelegate:
    virtual void setDelegate(const NSId& delegate);
    /// Null before one is set and once it has ended; then reports go nowhere. Every report made in here asks
    /// this.
    /// Selector: delegate
    virtual NSRef<LUMJobDelegate> delegate() const;

    /// Reports jobStateDidChange:, which nothing in here does by itself.
    /// Selector: stateChanged
    virtual void stateChanged();

    /// Enters the running state and reports it. Answers true, which promises that the start was reported; a
    /// subclass that cannot start answers false without a report.
    /// Selector: start
    virtual bool start();
    /// Asks the work to stop; nothing in this class. A subclass stops and then calls jobDidCancel(). A queue
    /// may hold its lock during the call, so do not wait in it for another thread's report.
    /// Selector: cancel
    virtual void cancel();
    virtual void pause(); ///< Enters the paused state and reports it. Selector: pause
    virtual void resume(); ///< Enters the running state and reports it as resumed. Selector: resume

    virtual void jobDidCancel(); ///< Enters the cancelled state and reports it. Selector: jobDidCancel
    virtual void jobDidComplete(); ///< Enters the completed state and reports it. Selector: jobDidComplete
    virtual double progress() const; ///< 0 unless a subclass measures it. Selector: progress
    /// Keeps the error, then does as jobDidCancel().
    /// Selector: jobDidError:
    virtual void jobDidError(const NSRef<NSError>& error);

protected:
    LUMJob();
    ~LUMJob() override;

private:
    friend class lum::JobIndex;
    class Fields;

    lum::JobPlace& placeInIndex() const;

    const std::unique_ptr<Fields> mFields;
};
