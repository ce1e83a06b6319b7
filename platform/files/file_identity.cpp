#include "platform/files/file_identity.h"

#include <algorithm>

namespace platform {

namespace {

bool onOneDevice(std::uint64_t a, std::uint64_t b)
{
    return a == b || a == 0 || b == 0;
}

bool bornTogether(std::int64_t a, std::int64_t b)
{
    return a == b || a == FileAttributes::kUnknownTime || b == FileAttributes::kUnknownTime;
}

}

FileHandle::FileHandle(std::int32_t type, std::span<const std::byte> bytes)
{
    if (bytes.empty() || bytes.size() > kMaxLength)
        return;
    mType = type;
    mLength = static_cast<std::uint8_t>(bytes.size());
    std::ranges::copy(bytes, mBytes.begin());
}

FileIdentity::FileIdentity(std::uint64_t onVolume, const FileAttributes& attributes, const FileHandle& named)
    : volume(onVolume)
    , device(attributes.device)
    , inode(attributes.inode)
    , born(attributes.born)
    , kind(attributes.kind)
    , handle(named)
{
}

bool isSame(const FileIdentity& identity, const FileAttributes& attributes)
{
    return identity.inode == attributes.inode && identity.kind == attributes.kind
        && onOneDevice(identity.device, attributes.device) && bornTogether(identity.born, attributes.born);
}

bool isSame(const FileIdentity& a, const FileIdentity& b)
{
    return a.inode == b.inode && a.volume == b.volume && a.kind == b.kind && onOneDevice(a.device, b.device)
        && bornTogether(a.born, b.born) && (!a.handle || !b.handle || a.handle == b.handle);
}

}
