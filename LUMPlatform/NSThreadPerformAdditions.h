#pragma once

#include "LUMPlatform/NSObject.h"

/// Dynamic calls that run on the main thread (see NSThread for typed ones).
///
///     NSThreadPerformAdditions::performSelectorOnMainThread(view, NSSelector("setTitle:"), title, true);
namespace NSThreadPerformAdditions {

/// Has `receiver` perform `selector` on the main thread, with `argument` if the selector takes one.
///
/// With `waitUntilDone` it returns when that has run: at once, inline, on the main thread; an exception is
/// thrown here; and a caller for whom the main thread waits deadlocks. Without, it queues the call and
/// returns; receiver and argument are kept alive until it has run, and end on the main thread. A null
/// receiver does nothing. Raises NSInvalidArgumentException as a direct send would. Threads: any.
/// Selector: performSelectorOnMainThread:withObject:waitUntilDone:
NS_EXPORT void performSelectorOnMainThread(
    const NSId& receiver, NSSelector selector, const NSId& argument, bool waitUntilDone);

}
