#pragma once

#include "platform/files/descriptor_pool.h"
#include "platform/files/object_search.h"

namespace platform {

/// Where the object of a reference is at this moment: a path that was just seen to lead to that very object.
/// 0 or a negative errno: -ENOENT when it is gone, or out of reach.
int locate(ReferenceNode& node, std::string& path, SearchLimits limits = kGlance);

/// The object with a descriptor that stands for it, if the process can have one, and its path.
struct LocatedNode {
    std::string path;
    DescriptorPool::Lease lease;
};
int locate(ReferenceNode& node, LocatedNode& located, SearchLimits limits = kGlance);

}
