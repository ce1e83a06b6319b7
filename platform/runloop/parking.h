#pragma once

#include <atomic>
#include <cstdint>

namespace platform {

/// Where one thread waits until another lets it go on. Used once.
class Parking {
public:
    /// Returns once release() has been called, before or during the call.
    void wait();

    /// Lets the waiting thread go on. The parking may be gone by the time this returns.
    void release();

private:
    enum State : std::uint32_t { Empty, Waiting, Released };

    std::atomic<std::uint32_t> mState { Empty };
};

}
