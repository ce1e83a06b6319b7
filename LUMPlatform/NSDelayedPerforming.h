#pragma once

#include "LUMPlatform/NSObject.h"

/// Dynamic calls that run later.
///
///     NSDelayedPerforming::performSelector(view, NSSelector("blink"), nullptr, 0.5);
namespace NSDelayedPerforming {

/// Has `receiver` perform `selector` on the main thread after `delay` seconds, with `argument` if the
/// selector takes one. A delay of 0 or less means the next turn of the main thread's loop, never before this
/// returns. Receiver and argument are kept alive until the call has run, and end on the main thread. A null
/// receiver does nothing. Threads: any.
/// Selector: performSelector:withObject:afterDelay:
NS_EXPORT void performSelector(const NSId& receiver, NSSelector selector, const NSId& argument, double delay);

}
