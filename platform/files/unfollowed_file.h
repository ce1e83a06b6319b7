#pragma once

#include "LUMPlatform/NSData.h"

#include <cstdint>
#include <string>

namespace platform {

/// How it went with a file by its path, where a symbolic link as the last name is never followed, whoever
/// puts it there and whenever: for a link nothing was done.
enum class Unfollowed { Done, Link, Failed };

/// The bytes of a file, of which there may be `largest`.
NS_EXPORT Unfollowed readUnfollowed(const std::string& path, NSRef<NSData>& data,
    NSRef<NSError>* error = nullptr, std::size_t largest = PTRDIFF_MAX);

/// Gives a file new bytes in one step, as NSData::writeToFile does.
NS_EXPORT Unfollowed replaceUnfollowed(
    const std::string& path, const NSData& data, NSRef<NSError>* error = nullptr);

}
