#pragma once

#include "platform/files/tree_system.h"

namespace platform {

/// Copies what is in one open file, whose status is `status`, to another, empty one; 0 or a negative errno.
///
/// It ends at the size that the status tells, however fast somebody appends. Holes stay holes where the
/// system can tell them.
int copyContent(TreeSystem& system, int from, const TreeSystem::Status& status, int to);

/// Gives the open file or folder `to` the permissions, times, extended attributes and, where the system lets
/// it be set, the owner of `from`, whose status is `status`; 0 or a negative errno.
///
/// Without the right to give files away the copy is the copier's, and permissions that act in the name of the
/// owner or group do not come along. Extended attributes that the file system cannot hold, or that only the
/// system may set, are left out.
int copyAttributes(TreeSystem& system, int from, const TreeSystem::Status& status, int to);

}
