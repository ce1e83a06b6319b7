#pragma once

#include <string>

/// The path of `name`, a file or folder of this source tree. Only one source knows where the tree lies, so
/// that a compiler cache serves all copies of it.
std::string inSourceFolder(const std::string& name);
