#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lum {

/// What a watcher needs from a system: changes of single files and folders, told one by one.
///
/// A queue belongs to one watcher thread, which waits; any other thread may add, remove and wake. An added
/// path is known by the token that its adder gives it. No token is used twice, so a late event cannot be
/// taken for another path's.
class KernelQueue {
public:
    using Token = std::uint64_t;

    /// What happened to one added path: VnodeChange bits, limited to those that were asked for and never
    /// none.
    struct Event {
        Token token;
        std::uint32_t changes;
    };

    /// A queue of the running system; null when the system refuses one.
    static std::unique_ptr<KernelQueue> open();

    KernelQueue() = default;
    virtual ~KernelQueue() = default;
    KernelQueue(const KernelQueue&) = delete;
    KernelQueue& operator=(const KernelQueue&) = delete;

    /// The system's descriptor of the queue, -1 once closed. Any thread.
    virtual int descriptor() const = 0;

    /// Starts reporting `changes` (VnodeChange bits) of what `path` names now, following symbolic links,
    /// under a token that was not used before. False when the path cannot be opened. A path that opens but
    /// cannot be watched, because a limit of the system is reached, is true and never reports. The same path
    /// may be added again. Events may come before this returns. Any thread.
    virtual bool add(Token token, const std::string& path, std::uint32_t changes) = 0;

    /// Ends the reports of a token; events that are waiting are dropped. An unknown token is no failure.
    /// Returns 0 or an errno value. Any thread.
    virtual int remove(Token token) = 0;

    /// Waits until something is reported, wake() is called or `limit` has passed, and returns the events in
    /// the order they happened, at most one per token. The watcher thread only.
    virtual std::vector<Event> wait(std::chrono::milliseconds limit) = 0;

    /// Ends the wait that is going on, or the next one. Does nothing on a closed queue. Any thread.
    virtual void wake() = 0;

    /// Gives the queue back to the system; it reports nothing from then on. Returns 0 or an errno value.
    /// The watcher thread only.
    virtual int close() = 0;
};

}
