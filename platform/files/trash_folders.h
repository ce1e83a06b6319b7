#pragma once

#include "platform/files/reference_node.h"

#include <string>
#include <vector>

namespace platform {

/// The user's trash folders on a volume, those that exist. A folder at the top counts as desktops agree that
/// it does: one shared by all users must be a real folder with the sticky bit.
std::vector<NodeRef> trashFolders(std::uint64_t volume, const std::string& topFolder);

/// The highest folder above `path`, or `path` itself, that is on the volume without another in between.
std::string topFolderOf(const std::string& path, std::uint64_t volume);

}
