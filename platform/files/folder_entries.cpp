#include "platform/files/folder_entries.h"

#include <cstring>

namespace platform {

namespace {

// The kernel's layout: inode, offset, length of the entry, kind, name and zero.
constexpr std::size_t kLengthAt = 16;
constexpr std::size_t kKindAt = 18;
constexpr std::size_t kNameAt = 19;

FolderEntry::Kind kindOf(std::byte type)
{
    switch (std::to_integer<int>(type)) {
    case 0:
        return FolderEntry::Unknown;
    case 4:
        return FolderEntry::Folder;
    case 10:
        return FolderEntry::Link;
    default:
        return FolderEntry::Other;
    }
}

}

bool takeFolderEntry(std::span<const std::byte>& bytes, FolderEntry& entry)
{
    if (bytes.size() <= kNameAt)
        return false;
    std::uint16_t length = 0;
    std::memcpy(&length, bytes.data() + kLengthAt, sizeof length);
    if (length <= kNameAt || length > bytes.size())
        return false;
    const auto name = bytes.subspan(kNameAt, length - kNameAt);
    const void* const end = std::memchr(name.data(), 0, name.size());
    if (!end)
        return false;
    const char* const text = reinterpret_cast<const char*>(name.data());
    entry.name = { text, static_cast<std::size_t>(static_cast<const char*>(end) - text) };
    entry.kind = kindOf(bytes[kKindAt]);
    std::memcpy(&entry.inode, bytes.data(), sizeof entry.inode);
    bytes = bytes.subspan(length);
    return true;
}

FolderReader::FolderReader(NodeSystem& system, int folder)
    : mSystem(system), mFolder(folder), mBuffer(std::make_unique_for_overwrite<std::byte[]>(kBufferSize))
{
}

int FolderReader::next(FolderEntry& entry)
{
    while (!mIsAtEnd) {
        while (takeFolderEntry(mUnread, entry)) {
            if (entry.name != "." && entry.name != "..")
                return 1;
        }
        const std::ptrdiff_t length = mSystem.list(mFolder, { mBuffer.get(), kBufferSize });
        if (length < 0)
            return static_cast<int>(length);
        mIsAtEnd = length == 0;
        mUnread = { mBuffer.get(), static_cast<std::size_t>(length) };
    }
    return 0;
}

}
