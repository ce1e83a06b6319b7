#pragma once

#include "platform/files/alias_record.h"
#include "platform/files/reference_node.h"

namespace platform {

// 0 or a negative errno.

/// Tells where the object of a reference is now.
int describeAlias(ReferenceNode& node, AliasRecord& record);

/// What counts as the object of a record: only itself, or also what stands at its path in its place.
enum class AliasTarget { Itself, Replacement };

/// Finds the object of a record; -ENOENT when there is nothing.
int resolveAlias(const AliasRecord& record, AliasTarget target, NodeRef& found);

}
