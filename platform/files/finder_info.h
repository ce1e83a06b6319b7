#pragma once

#include "LUMPlatform/FSCatalog.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>

namespace platform {

/// The stored form: what a FileInfo holds, highest bytes first, and 16 bytes more that belong to others.
using FinderBytes = std::array<std::byte, 32>;

FileInfo fileInfoFrom(const FinderBytes& bytes);
/// Puts the information in; the second half stays as it is.
void store(const FileInfo& info, FinderBytes& bytes);

// What file servers keep for their clients. Nothing for anything else.
std::optional<FinderBytes> finderBytesOfAppleDouble(std::span<const std::byte> value);
std::optional<FinderBytes> finderBytesOfAfpInfo(std::span<const std::byte> value);

}
