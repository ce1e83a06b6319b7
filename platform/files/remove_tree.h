#pragma once

#include "platform/files/tree_system.h"

namespace platform {

/// Whether folders that their owner may not write to stand in the way, or are made writable first.
enum class Folders { AsTheyAre, MadeWritable };

/// Removes `name` in the folder `in` with all that is in it; 0 or a negative errno.
///
/// A symbolic link is removed, never followed. What somebody else removes meanwhile is no failure, except
/// `name` itself. It ends at the first failure; what it had removed by then is gone. Depth costs memory
/// alone, neither stack nor descriptors.
int removeTree(TreeSystem& system, int in, const std::string& name, Folders folders = Folders::AsTheyAre);

}
