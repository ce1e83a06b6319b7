#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace lum {

/// The creator and the type of a document, four characters each, the first in the most significant byte.
struct PackageInfo {
    std::uint32_t creator = 0;
    std::uint32_t type = 0;
};

/// The codes in the bytes of a PkgInfo file. Of more than 8 bytes the first 8 count, of fewer the rest is
/// zeros. Both are 0 when the bytes are no UTF-8.
PackageInfo readPackageInfo(std::span<const std::byte> bytes);

/// The bytes of a PkgInfo file: of each code the characters before its first zero byte. Null when one is no
/// UTF-8.
std::optional<std::string> writePackageInfo(const PackageInfo& info);

}
