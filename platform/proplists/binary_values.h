#pragma once

#include "platform/proplists/binary_format.h"
#include "platform/proplists/property_list_kind.h"

#include <string>
#include <string_view>

namespace platform {

/// Appends a value that is no container, as it stands in a file.
void appendBinaryValue(std::string& bytes, const NSObject& value, PropertyListKind kind);

/// The same for what is no object yet.
void appendBinaryText(std::string& bytes, std::u16string_view text);
void appendBinaryInteger(std::string& bytes, std::int64_t value);
void appendBinaryUid(std::string& bytes, std::uint32_t value);

/// Appends the first byte of an object that has a count, and the count behind it if it needs one.
void appendBinaryCount(std::string& bytes, binary::Type type, std::uint64_t count);

}
