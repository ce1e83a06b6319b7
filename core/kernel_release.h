#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace lum {

/// The first two numbers of a release such as "6.1.0-18-amd64". One that is missing, not a plain number, or
/// too large for 32 bits is none; without the first there is no second.
struct KernelRelease {
    std::optional<std::int32_t> majorNumber;
    std::optional<std::int32_t> minorNumber;

    static KernelRelease parse(std::string_view text);
};

}
