// Gives the root class the operations of this folder's extension sets, once, when the library is loaded.
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDelayedPerforming.h"
#include "LUMPlatform/NSThreadPerformAdditions.h"

namespace {

constexpr NSMethod kRootMethods[] = {
    NSMethodOf<"performSelectorOnMainThread:withObject:waitUntilDone:",
        &NSThreadPerformAdditions::performSelectorOnMainThread>(),
    NSMethodOf<"performSelector:withObject:afterDelay:", &NSDelayedPerforming::performSelector>(),
};

[[gnu::constructor]] void giveMethodTables()
{
    NSObject::classObject().extend(kRootMethods);
}

}
