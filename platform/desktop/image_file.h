#pragma once

#include "platform/desktop/pixels.h"

#include <memory>
#include <string>

namespace platform {

/// The picture of a file, made smaller where a side is longer than `longestSide`; a drawing that has no size
/// of its own is drawn as large as that. Null when it is no picture, or one that is larger than an icon has
/// reason to be.
std::shared_ptr<const Pixels> readImageFile(const std::string& path, int longestSide);

}
