#pragma once

#include <cstddef>
#include <span>

namespace platform {

/// Fills `bytes` (256 at most) from the system's source of randomness; false when it gives none.
bool fillWithRandomBytes(std::span<std::byte> bytes);

}
