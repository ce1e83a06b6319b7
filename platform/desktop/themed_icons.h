#pragma once

#include "platform/desktop/pixels.h"

#include <memory>
#include <span>
#include <string>

namespace platform {

inline constexpr int kIconSide = 32; // in pixels

/// The first icon of these names in the user's icon theme; null when it has none of them, or when the library
/// was built without a reader of pictures. Remembers what it has found, and what it has not. Threads: any.
std::shared_ptr<const Pixels> themedIcon(std::span<const std::string> names);

}
