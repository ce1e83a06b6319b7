#pragma once

#include <cstddef>
#include <string>

/// What the second process does: copies `count` files of this machine, from a few bytes to tens of megabytes,
/// into the folder, each in chunks under the extension of unfinished files and renamed when it is done. Makes
/// what the machine does not have. The process's exit status.
int feedFolder(const std::string& folder, std::size_t count);
