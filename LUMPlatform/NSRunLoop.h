#pragma once

#include "LUMPlatform/NSObject.h"

#include <chrono>

/// The loop of the main thread: it runs the calls that wait for the main thread (see NSThread), one after
/// another.
///
/// A program without a loop of its own runs this one:
///
///     int main()
///     {
///         startWork();
///         NSRunLoop::main()->run(); // until something calls NSRunLoop::main()->stop()
///         return 0;
///     }
///
/// A program that runs GLib's default main context needs nothing of this: the calls are served there. Any
/// other loop watches mainQueueFD() and calls drainMainQueue():
///
///     QSocketNotifier notifier(NSRunLoop::mainQueueFD(), QSocketNotifier::Read);
///     QObject::connect(&notifier, &QSocketNotifier::activated, [] { NSRunLoop::drainMainQueue(); });
class NS_EXPORT NSRunLoop : public NSObject {
public:
    static const NSClass& classObject();

    /// Always the same object. Threads: any.
    /// Selector: mainRunLoop
    static NSRef<NSRunLoop> main();

    /// Serves the calls for the main thread, and nothing else, until stop(). May be called again from within
    /// a call. An exception of a call that nobody waits for passes through; the loop may then be run again.
    /// Raises NSInternalInconsistencyException on any other thread.
    /// Selector: run
    void run();

    /// The same until `deadline` at most; at least what is queued now runs, even if that has passed. Returns
    /// whether it was stopped.
    bool runUntil(std::chrono::steady_clock::time_point deadline);

    /// Ends the innermost run() or runUntil() once the calls queued before this have run; does nothing when
    /// none runs by then. Threads: any.
    /// Selector: stop
    void stop();

    /// A descriptor that is readable while a call waits, until drainMainQueue() has run it. It stays the same
    /// and is never closed; do not read it. Throws std::system_error when the system gives none. Threads:
    /// any.
    static int mainQueueFD();

    /// Runs the calls that wait now, but none that they queue in turn. Does nothing on another thread than
    /// the main one. An exception of a call that nobody waits for passes through; the calls behind it stay
    /// queued.
    static void drainMainQueue();

protected:
    NSRunLoop() = default;
    ~NSRunLoop() override = default;
};
