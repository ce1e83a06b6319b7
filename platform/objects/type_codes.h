#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Splits a list of type codes into its codes; null when it is none. Digits between codes, the stack offsets
/// that compilers write, are passed over. Structures may nest up to a fixed depth.
std::optional<std::vector<std::string>> splitTypeCodes(std::string_view types);

/// Bytes a value of that code takes on the 64-bit platform, alignment included; 0 for "v" and for what is no
/// code.
std::size_t sizeOfTypeCode(std::string_view code);

}
