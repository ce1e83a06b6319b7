#pragma once

#include <optional>
#include <string>

namespace platform {

/// The home directory of the user of that name; the empty name is this process's own user, for whom the
/// environment's HOME goes first. Null when there is no such user.
std::optional<std::string> homeDirectory(const std::string& user);

}
