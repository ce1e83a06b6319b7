#pragma once

#include "watching/vnode_changes.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lum {

/// The system calls that InotifyQueue makes, one function each, so that tests can let any of them fail.
///
/// Results below zero are negated errno values. Every function may be called from any thread.
class InotifySystem {
public:
    /// The running system. Lives as long as the process.
    static InotifySystem& running();

    InotifySystem() = default;
    virtual ~InotifySystem() = default;
    InotifySystem(const InotifySystem&) = delete;
    InotifySystem& operator=(const InotifySystem&) = delete;

    /// A new event queue, not blocking; not handed on to other programs.
    virtual int openQueue() = 0;
    /// A new descriptor that wait() can be woken through.
    virtual int openWaker() = 0;
    /// A descriptor that only stands for what `path` names. `isReal` tells whether pathOf() of it is known to
    /// be `path` itself; asking costs more than opening.
    virtual int openPath(const std::string& path, bool& isReal) = 0;
    virtual int close(int descriptor) = 0;

    /// The watch number for what `path` names; `events` are added to those it has.
    virtual int addWatch(int queue, const std::string& path, std::uint32_t events) = 0;
    virtual int removeWatch(int queue, int watch) = 0;
    /// Numbers of the watches that are alive, ascending; empty when the system does not tell.
    virtual std::optional<std::vector<int>> liveWatches(int queue) = 0;

    /// The path that leads to the object of a descriptor without symbolic links; empty when there is none.
    virtual std::string pathOf(int descriptor) = 0;
    virtual int status(int descriptor, FileStatus& status) = 0;
    virtual int status(const std::string& path, FileStatus& status) = 0;

    enum Ready : int { kNothing = 0, kQueue = 1, kWaker = 2 };
    /// Waits until one of the two can be read; returns Ready bits. An interrupted wait ends with kNothing.
    virtual int wait(int queue, int waker, std::chrono::milliseconds limit) = 0;
    /// The number of bytes read.
    virtual std::ptrdiff_t read(int queue, std::span<std::byte> buffer) = 0;
    virtual void wake(int waker) = 0;
    /// Makes the waker wait for its next wake.
    virtual void rearm(int waker) = 0;
};

}
