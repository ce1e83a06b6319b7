#pragma once

#include "platform/files/file_system.h"

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace platform {

/// The bytes of a file, from malloc.
struct FileContent {
    struct Free {
        void operator()(std::byte* memory) const { std::free(memory); }
    };
    std::unique_ptr<std::byte[], Free> bytes;
    std::size_t length = 0;
};

/// What may be read. A link is refused whoever puts it there and whenever; folders above may be links.
struct ReadRules {
    LastLink link = LastLink::Followed;
    std::size_t largest = PTRDIFF_MAX; ///< How many bytes at most.
};

/// Reads a file to its end; 0 or a negative errno: -EISDIR for a folder, -EFBIG when it has more bytes than
/// it may have, -ENOMEM when it does not fit into memory. A file that grows or shrinks meanwhile gives what
/// there was to read.
int readFile(FileSystem& files, const std::string& path, FileContent& content, const ReadRules& rules = {});

/// Gives a file new content in one step; 0 or a negative errno.
///
/// Whoever looks, and whatever stops this at whatever point, sees the old content or the new one. The new one
/// is written to a hidden file in the same folder, brought to the disk, and renamed over the old; then the
/// folder is brought to the disk. The replaced file's permissions are kept, and its owner and group where the
/// system lets them be set. A symbolic link is written through, or refused, with nothing written; one that
/// somebody puts there meanwhile is replaced, never followed. On failure no hidden file stays.
int replaceFile(FileSystem& files, const std::string& path, std::span<const std::byte> bytes,
    LastLink link = LastLink::Followed);

/// Writes over a file in place; 0 or a negative errno.
int overwriteFile(FileSystem& files, const std::string& path, std::span<const std::byte> bytes);

}
