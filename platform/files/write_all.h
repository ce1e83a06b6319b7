#pragma once

#include <cerrno>
#include <span>
#include <sys/types.h>

namespace platform {

/// Writes all of the bytes to an open file, however many the system takes at a time. `System` has a
/// `write(file, bytes)` that answers a count or a negated errno value. Returns 0 or a negated errno value.
template<typename System> int writeAll(System& system, int file, std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = system.write(file, bytes);
        if (written < 0)
            return static_cast<int>(written);
        if (written == 0)
            return -EIO; // else this would never end
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return 0;
}

}
