#include "LUMPlatform/NSDelayedPerforming.h"

#include "LUMPlatform/NSThread.h"
#include "platform/objects/method_tables.h"
#include "platform/runloop/perform.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"performSelector:withObject:afterDelay:", &NSDelayedPerforming::performSelector>(),
};

}

std::span<const NSMethod> platform::delayedPerformingMethods()
{
    return kMethods;
}

void NSDelayedPerforming::performSelector(
    const NSId& receiver, NSSelector selector, const NSId& argument, double delay)
{
    if (receiver)
        NSThread::performAfterDelay(delay, [=] { platform::perform(receiver, selector, argument); });
}
