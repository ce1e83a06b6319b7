#pragma once

#include "LUMPlatform/NSExport.h"

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>

/// The main thread and others.
///
/// The main thread is the one that entered main(); in a child made by fork() it is the one that goes on.
/// Calls for it wait in one queue, first in, first out, and run when the main thread runs a loop that serves
/// the queue: GLib's default main context (so GTK's loop, and Qt's as it comes), NSRunLoop::main()->run(), or
/// any other that watches NSRunLoop's descriptor. Without one they wait for ever.
///
/// An empty function raises NSInvalidArgumentException. The first of these calls throws std::system_error
/// when the system has no descriptors left for the queue of the main thread. Threads: any, for all of these.
///
///     auto track = NSMake<Track>();
///     NSThread::detachNewThread([track] {
///         double seconds = track->measure();
///         NSThread::performOnMainThread([track, seconds] { track->show(seconds); });
///     });
class NS_EXPORT NSThread {
public:
    NSThread() = delete;

    /// Whether the caller is on the main thread.
    /// Selector: isMainThread
    static bool isMainThread();

    /// Starts a thread that runs `body` and ends with it. An exception out of `body` ends the process. Throws
    /// std::system_error when the system refuses a thread.
    static void detachNewThread(std::function<void()> body);

    /// Runs `call` on the main thread, waits for it, and returns its result; at once, inline, on the main
    /// thread. An exception of `call` is thrown here. Deadlocks when the main thread waits for this one.
    template<typename Call> static std::invoke_result_t<Call&> performOnMainThreadAndWait(Call&& call);

    /// Queues `call` for the main thread and returns: it runs at the earliest at the next turn of the loop,
    /// also when the caller is the main thread. An exception of it leaves the function that runs the loop,
    /// but ends the process where that is GLib's.
    static void performOnMainThread(std::function<void()> call);

    /// Does so once `seconds` have passed; 0 or less is performOnMainThread().
    static void performAfterDelay(double seconds, std::function<void()> call);

private:
    static void performAndWait(void (*function)(void*), void* context);
};

template<typename Call> std::invoke_result_t<Call&> NSThread::performOnMainThreadAndWait(Call&& call)
{
    using Result = std::invoke_result_t<Call&>;
    if constexpr (std::is_void_v<Result>) {
        auto* function = std::addressof(call);
        performAndWait([](void* context) { (**static_cast<decltype(function)*>(context))(); }, &function);
    } else if constexpr (std::is_reference_v<Result>) {
        return static_cast<Result>(*performOnMainThreadAndWait([&call] {
            Result result = call();
            return std::addressof(result);
        }));
    } else {
        std::optional<Result> result;
        performOnMainThreadAndWait([&call, &result] { result.emplace(call()); });
        return *std::move(result);
    }
}
