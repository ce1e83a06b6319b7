#pragma once

#include <chrono>
#include <memory>
#include <optional>

namespace platform {

/// What the main queue needs from a system: a descriptor that becomes readable when there is work.
///
/// Threads: raise() any; all else as the queue orders it.
class MainQueueWake {
public:
    using Clock = std::chrono::steady_clock;

    /// Throws std::system_error when the system gives no descriptor.
    static std::unique_ptr<MainQueueWake> open();

    virtual ~MainQueueWake() = default;

    /// Makes the descriptor readable until clear().
    virtual void raise() = 0;
    /// Takes back every raise().
    virtual void clear() = 0;
    /// Makes the descriptor readable at `due`, or never when that is empty, in place of any alarm before it.
    virtual void setAlarm(std::optional<Clock::time_point> due) = 0;
    virtual Clock::time_point now() const = 0;
    /// Returns when the descriptor is readable or `deadline` has passed; may return earlier.
    virtual void wait(std::optional<Clock::time_point> deadline) = 0;

    /// The two descriptors that together are the one: raised, and alarm.
    virtual int raisedDescriptor() const = 0;
    virtual int alarmDescriptor() const = 0;
    /// One descriptor for both, made when first asked for; throws std::system_error when there is none.
    virtual int descriptor() = 0;

    /// In the child of a fork(): stops sharing the descriptors with the parent, under the same numbers.
    virtual void renewAfterFork() = 0;
};

}
