#pragma once

#include "platform/files/tree_system.h"

namespace platform {

// One file, link, or folder with all that is in it, by its path. The path's last name is never followed if it
// is a link; slashes at the end do not count. 0 or a negative errno: -ENOENT for an empty path, -EINVAL for
// the root and for "." and "..".

/// What copyTree does, but nothing is seen at `to` before it is all there, and nothing stays after a failure.
int copyItem(TreeSystem& system, const std::string& from, const std::string& to);

/// Moves without ever replacing: -EEXIST when something is at `to`.
///
/// To another file system it is copied, brought to the disk, and then removed at `from`. When the removal
/// fails the copy stays, since it may by then be the only one.
int moveItem(TreeSystem& system, const std::string& from, const std::string& to);

/// What removeTree does.
int removeItem(TreeSystem& system, const std::string& path);

}
