#pragma once

#include "platform/files/finder_info.h"
#include "platform/files/reference_node.h"

namespace platform {

// Finder information in extended attributes of an object. 0 or a negative errno.

/// All zero when the object has none.
int readFinderBytes(ReferenceNode& node, FinderBytes& bytes);
/// Changes the first half of what is stored; removes it when all of it is zero.
int writeFinderInfo(ReferenceNode& node, const FileInfo& info);

}
