#pragma once

namespace platform {

/// Whether the caller is on the main thread: the one that entered main().
///
/// In a child made by fork() the one thread that goes on is the main thread, whatever it was before.
/// Costs a load of a thread-local after the first call. Threads: any.
bool isMainThread();

}
