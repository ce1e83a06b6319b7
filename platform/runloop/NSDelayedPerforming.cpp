#include "LUMPlatform/NSDelayedPerforming.h"

#include "LUMPlatform/NSThread.h"
#include "platform/runloop/perform.h"

namespace NSDelayedPerforming {

void performSelector(const NSId& receiver, NSSelector selector, const NSId& argument, double delay)
{
    if (receiver)
        NSThread::performAfterDelay(delay, [=] { platform::perform(receiver, selector, argument); });
}

}
