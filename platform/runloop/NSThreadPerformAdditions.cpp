#include "LUMPlatform/NSThreadPerformAdditions.h"

#include "LUMPlatform/NSThread.h"
#include "platform/runloop/perform.h"

namespace NSThreadPerformAdditions {

void performSelectorOnMainThread(
    const NSId& receiver, NSSelector selector, const NSId& argument, bool waitUntilDone)
{
    if (!receiver)
        return;
    if (waitUntilDone)
        NSThread::performOnMainThreadAndWait([&] { platform::perform(receiver, selector, argument); });
    else
        NSThread::performOnMainThread([=] { platform::perform(receiver, selector, argument); });
}

}
