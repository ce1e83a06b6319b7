#include "LUMPlatform/NSThread.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/runloop/main_queue.h"
#include "platform/runloop/main_thread.h"

#include <thread>

namespace {

// Where the mistake is made, not in the main loop, where nobody could handle it.
void checkCall(const std::function<void()>& call)
{
    if (!call)
        throw NSException(
            NSInvalidArgumentException, NSRef<NSString>("an empty function cannot be called later"));
}

}

bool NSThread::isMainThread()
{
    return platform::isMainThread();
}

void NSThread::detachNewThread(std::function<void()> body)
{
    checkCall(body);
    std::thread(std::move(body)).detach();
}

void NSThread::performOnMainThread(std::function<void()> call)
{
    checkCall(call);
    platform::MainQueue::shared().post(std::move(call));
}

void NSThread::performAfterDelay(double seconds, std::function<void()> call)
{
    checkCall(call);
    platform::MainQueue::shared().postAfter(std::chrono::duration<double>(seconds), std::move(call));
}

void NSThread::performAndWait(void (*function)(void*), void* context)
{
    platform::MainQueue::shared().callAndWait(function, context);
}
