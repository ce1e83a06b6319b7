#include "LUMPlatform/NSThreadPerformAdditions.h"

#include "LUMPlatform/NSThread.h"
#include "platform/objects/method_tables.h"
#include "platform/runloop/perform.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"performSelectorOnMainThread:withObject:waitUntilDone:",
        &NSThreadPerformAdditions::performSelectorOnMainThread>(),
};

}

std::span<const NSMethod> platform::threadPerformingMethods()
{
    return kMethods;
}

void NSThreadPerformAdditions::performSelectorOnMainThread(
    const NSId& receiver, NSSelector selector, const NSId& argument, bool waitUntilDone)
{
    if (!receiver)
        return;
    if (waitUntilDone)
        NSThread::performOnMainThreadAndWait([&] { platform::perform(receiver, selector, argument); });
    else
        NSThread::performOnMainThread([=] { platform::perform(receiver, selector, argument); });
}
