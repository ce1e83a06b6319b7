#pragma once

#include <string>
#include <string_view>

namespace platform {

/// `path` with a leading "~" or "~user" replaced by that home directory and trailing slashes removed.
/// Unchanged when it begins otherwise, or when that user has no home.
std::u16string expandingTilde(std::u16string_view path);

/// Expands a tilde, squeezes slashes and drops "."; an absolute path also loses ".." and its symbolic links,
/// as far as it exists. Looks at the disk.
std::u16string standardizedPath(std::u16string_view path);

}
