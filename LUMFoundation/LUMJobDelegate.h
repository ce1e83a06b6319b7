#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSMethod.h"

#include <span>

class LUMJob;

/// What hears the reports of a LUMJob; normally the queue that holds it.
///
/// Each report comes on the thread that made it, before the job's call returns. A job refers to its delegate
/// weakly, and keeps it alive while it reports. There is no report of an error: a failed job reports that it
/// was cancelled, and its error() is not null. See LUMJob for an example; a LUMJobQueue is one.
class LUM_EXPORT LUMJobDelegate : public NSProtocol {
public:
    virtual void jobDidStart(LUMJob& job) = 0; ///< Selector: jobDidStart:
    virtual void jobDidPause(LUMJob& job) = 0; ///< Selector: jobDidPause:
    virtual void jobDidResume(LUMJob& job) = 0; ///< Selector: jobDidResume:
    virtual void jobDidComplete(LUMJob& job) = 0; ///< Selector: jobDidComplete:
    virtual void jobDidCancel(LUMJob& job) = 0; ///< Selector: jobDidCancel:
    /// Sent only by LUMJob::stateChanged().
    /// Selector: jobStateDidChange:
    virtual void jobStateDidChange(LUMJob& job) = 0;

    /// The table of these methods, for NSClass::define or NSClass::extend of a class that is to answer them
    /// in dynamic calls as well.
    static std::span<const NSMethod> methods();

protected:
    ~LUMJobDelegate() override = default;
};
