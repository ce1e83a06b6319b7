#pragma once

#include "platform/files/tree_system.h"

namespace platform {

/// Copies `name` in the folder `in`, with all that is in it, to `newName` in the folder `to`; 0 or a negative
/// errno: -EEXIST when something is there, -EINVAL when that is inside of what is copied.
///
/// Symbolic links are copied as links, pipes and sockets made anew. Files and folders keep what
/// copyAttributes keeps; hard links become files of their own. On failure nothing stays at `newName`. Until
/// it ends a part can be seen there. Depth costs memory alone, neither stack nor descriptors.
int copyTree(TreeSystem& system, int in, const std::string& name, int to, const std::string& newName);

}
