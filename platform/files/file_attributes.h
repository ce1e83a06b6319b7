#pragma once

#include "LUMPlatform/NSDictionary.h"
#include "platform/files/tree_system.h"

namespace platform {

/// What the keys of NSFileAttributes.h tell of these details.
NSRef<NSDictionary> attributesOf(const TreeSystem::Details& details);

/// Sets what `attributes` tells of the open file; 0 or a negative errno.
int applyAttributes(TreeSystem& system, const std::string& path, const NSDictionary& attributes);

}
