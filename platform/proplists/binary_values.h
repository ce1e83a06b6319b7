#pragma once

#include "platform/proplists/binary_format.h"
#include "platform/proplists/property_list_kind.h"

#include <string>

namespace platform {

/// Appends a value that is no container, as it stands in a file.
void appendBinaryValue(std::string& bytes, const NSObject& value, PropertyListKind kind);

/// Appends the first byte of an object that has a count, and the count behind it if it needs one.
void appendBinaryCount(std::string& bytes, binary::Type type, std::uint64_t count);

}
