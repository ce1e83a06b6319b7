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

FileIdentity::FileIdentity(
    const VolumeAttributes& on, const FileAttributes& attributes, const FileHandle& named)
    : volume(on.id)
    , device(attributes.device)
    , inode(attributes.inode)
    , born(attributes.born)
    , kind(attributes.kind)
    , isLayered(on.isLayered)
    , handle(named)
{
}

bool isSame(const FileIdentity& identity, const FileAttributes& attributes)
{
    return identity.inode == attributes.inode && identity.kind == attributes.kind
        && onOneDevice(identity.device, attributes.device)
        && (identity.isLayered || bornTogether(identity.born, attributes.born));
}

bool isSame(const FileIdentity& identity, const FileAttributes& attributes, const FileHandle& handle)
{
    const VolumeAttributes same { identity.volume, 0, identity.isLayered };
    return isSame(identity, FileIdentity(same, attributes, handle));
}

bool isSame(const FileIdentity& a, const FileIdentity& b)
{
    if (a.inode != b.inode || a.volume != b.volume || a.kind != b.kind || !onOneDevice(a.device, b.device))
        return false;
    const bool haveHandles = a.handle && b.handle;
    if (haveHandles && a.handle != b.handle)
        return false;
    return (haveHandles && (a.isLayered || b.isLayered)) || bornTogether(a.born, b.born);
}

}
