#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

/// Splits a list of type codes into its codes; null when it is none. Digits between codes, the stack offsets
/// that compilers write, are passed over. Structures may nest up to a fixed depth.
/// The codes live as long as the process, as those of method tables do, since values on their way carry them.
std::optional<std::vector<const char*>> splitTypeCodes(std::string_view types);

/// Bytes a value of that code takes on the 64-bit platform, alignment included; 0 for "v" and for what is no
/// code.
std::size_t sizeOfTypeCode(std::string_view code);

}
