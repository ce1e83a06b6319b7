#include "LUMPlatform/NSLog.h"

#include "platform/objects/mutex.h"
#include "platform/runloop/log_line.h"

#include <cerrno>
#include <memory>
#include <utility>

namespace {

class CurrentSink {
public:
    static CurrentSink& shared()
    {
        // Never destroyed: lines are logged until the very end of the process.
        static CurrentSink& current = *new CurrentSink;
        return current;
    }

    std::shared_ptr<const NSLogSink> get()
    {
        platform::MutexLock lock(mLock);
        return mSink;
    }

    std::shared_ptr<const NSLogSink> exchange(std::shared_ptr<const NSLogSink> sink)
    {
        platform::MutexLock lock(mLock);
        return std::exchange(mSink, std::move(sink));
    }

private:
    platform::Mutex mLock;
    std::shared_ptr<const NSLogSink> mSink NS_GUARDED_BY(mLock);
};

}

NSLogSink NSSetLogSink(NSLogSink sink)
{
    auto next = sink ? std::make_shared<const NSLogSink>(std::move(sink)) : nullptr;
    auto before = CurrentSink::shared().exchange(std::move(next));
    return before ? *before : NSLogSink();
}

void NSLogDetail::write(const NSRef<NSString>& text)
{
    int error = errno;
    if (auto sink = CurrentSink::shared().get())
        (*sink)(text);
    else
        platform::writeToStandardError(
            platform::logLine(platform::LogOrigin::here(), text ? text->utf8() : "(null)"));
    errno = error;
}
