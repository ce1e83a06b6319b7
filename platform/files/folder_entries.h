#pragma once

#include "platform/files/node_system.h"

#include <memory>
#include <string_view>

namespace platform {

struct FolderEntry {
    enum Kind { Unknown, Folder, Link, Other };

    std::uint64_t inode = 0; ///< Of a folder something is mounted on, the number of what is covered.
    Kind kind = Unknown; ///< Some file systems do not tell.
    std::string_view name; ///< Followed by a zero.
};

/// Takes the first entry off what NodeSystem::list() gave. False when there is none, or the bytes are broken.
bool takeFolderEntry(std::span<const std::byte>& bytes, FolderEntry& entry);

/// Reads the entries of a folder one by one, without "." and "..".
class FolderReader {
public:
    /// `folder` is from NodeSystem::openFolder(), and closed at the end.
    FolderReader(NodeSystem& system, int folder);
    ~FolderReader() { mSystem.close(mFolder); }
    FolderReader(const FolderReader&) = delete;
    FolderReader& operator=(const FolderReader&) = delete;

    int folder() const { return mFolder; }
    /// 1 for an entry, whose name is valid until the next call; 0 at the end, and from then on; a negative
    /// errno when the folder cannot be read on.
    int next(FolderEntry& entry);

private:
    static constexpr std::size_t kBufferSize = 64 * 1024;

    NodeSystem& mSystem;
    const int mFolder;
    const std::unique_ptr<std::byte[]> mBuffer;
    std::span<const std::byte> mUnread;
    bool mIsAtEnd = false;
};

}
