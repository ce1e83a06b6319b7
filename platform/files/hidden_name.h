#pragma once

#include <string>

namespace platform {

/// A new hidden name for what shall come to be called `name` in the same folder: ".NAME.NUMBER.tmp", of 255
/// bytes at most. Threads: any.
std::string hiddenNameFor(const std::string& name);

}
