#pragma once

#include "platform/files/tree_system.h"

namespace platform {

/// Renames on file systems that cannot refuse to replace, which they tell by -EINVAL, and on systems that do
/// not know how to ask, by -ENOSYS. -EEXIST when something is there; after a failure all is as it was.
int renameByHand(TreeSystem& system, int in, const std::string& name, int to, const std::string& newName);

}
