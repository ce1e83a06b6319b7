#pragma once

#include "platform/files/file_identity.h"

#include <string>
#include <vector>

namespace platform {

/// What an alias record tells; docs/formats/alias-record.md has its bytes.
struct AliasRecord {
    FileIdentity identity; ///< Without the device, which may have another number next time.
    std::uint64_t volumeType = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;
    FileHandle finding; ///< By which the system finds the object.
    FileHandle folder; ///< By which the system finds the folder it was in.
    std::vector<std::uint64_t> ancestors; ///< Inodes of the folders above, the nearest first.
    std::string path;
};

/// Empty when the record is larger than the format allows, which no path of the system is.
std::vector<std::byte> encodeAlias(const AliasRecord& record);

/// False for anything but a whole record; then `record` is of no use.
bool decodeAlias(std::span<const std::byte> bytes, AliasRecord& record);

}
