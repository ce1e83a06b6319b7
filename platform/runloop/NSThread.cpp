#include "LUMPlatform/NSThread.h"

#include "platform/runloop/main_queue.h"
#include "platform/runloop/main_thread.h"

#include <thread>

bool NSThread::isMainThread()
{
    return platform::isMainThread();
}

void NSThread::detachNewThread(std::function<void()> body)
{
    std::thread(std::move(body)).detach();
}

void NSThread::performOnMainThread(std::function<void()> call)
{
    platform::MainQueue::shared().post(std::move(call));
}

void NSThread::performAfterDelay(double seconds, std::function<void()> call)
{
    platform::MainQueue::shared().postAfter(std::chrono::duration<double>(seconds), std::move(call));
}

void NSThread::performAndWait(void (*function)(void*), void* context)
{
    platform::MainQueue::shared().callAndWait(function, context);
}
