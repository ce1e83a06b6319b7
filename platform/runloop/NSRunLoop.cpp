#include "LUMPlatform/NSRunLoop.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/objects/live_objects.h"
#include "platform/runloop/main_queue.h"
#include "platform/runloop/main_thread.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"run", &NSRunLoop::run>(),
    NSMethodOf<"stop", &NSRunLoop::stop>(),
};

platform::MainQueue& queueOfThisThread()
{
    if (!platform::isMainThread())
        throw NSException(
            NSInternalInconsistencyException, "only the main thread may run the main thread's loop");
    return platform::MainQueue::shared();
}

}

const NSClass& NSRunLoop::classObject()
{
    static const NSClass& type = NSClass::define("NSRunLoop", &NSObject::classObject(), kMethods);
    return type;
}

NSRef<NSRunLoop> NSRunLoop::main()
{
    static NSRunLoop* const loop = platform::makeImmortal(NSMake<NSRunLoop>());
    return NSShare(loop);
}

void NSRunLoop::run()
{
    queueOfThisThread().run();
}

bool NSRunLoop::runUntil(std::chrono::steady_clock::time_point deadline)
{
    return queueOfThisThread().run(deadline);
}

void NSRunLoop::stop()
{
    platform::MainQueue::shared().stop();
}

int NSRunLoop::mainQueueFD()
{
    return platform::MainQueue::shared().descriptor();
}

void NSRunLoop::drainMainQueue()
{
    platform::MainQueue::shared().drain();
}
