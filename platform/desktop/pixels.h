#pragma once

#include <cstddef>
#include <vector>

namespace platform {

/// What an image shows: rows from the top, a pixel in four bytes, red, green, blue, opacity. Never without a
/// pixel.
struct Pixels {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<std::byte> bytes; ///< width * height * 4
};

}
