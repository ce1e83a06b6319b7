#include "LUMPlatform/FSCatalog.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSString.h"
#include "platform/files/finder_attributes.h"
#include "platform/files/reference_opening.h"
#include "platform/files/reference_path.h"
#include "platform/files/trash_folders.h"
#include "platform/values/errno_status.h"

#include <algorithm>

namespace {

using platform::kStatusBadParameter;
using platform::kStatusNotFound;
using platform::NodeRef;
using platform::statusFromErrno;

constexpr OSStatus kStatusBadName = -37;

OSStatus fillSpec(
    const platform::FileIdentity& identity, const std::string& path, const FSRef& parent, FSSpec& spec)
{
    const auto name = NSString::stringWithUTF8String(platform::nameOf(path));
    const auto bytes = name ? name->dataUsingEncoding(NSMacOSRomanStringEncoding) : nullptr;
    if (!bytes || bytes->length() >= sizeof spec.name)
        return kStatusBadName;
    FSSpec filled;
    filled.vRefNum = static_cast<std::int16_t>(identity.volume);
    filled.parID = parent ? static_cast<std::int32_t>(parent.node()->inode()) : 0;
    filled.name[0] = static_cast<std::uint8_t>(bytes->length());
    std::ranges::transform(
        bytes->bytes(), filled.name + 1, [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
    spec = filled;
    return 0;
}

OSStatus findParent(const std::string& path, FSRef& parent)
{
    parent = FSRef();
    return path == "/" ? 0 : FSPathMakeRef(platform::folderOf(path), parent);
}

}

OSStatus FSGetCatalogInfo(
    const FSRef& ref, FSCatalogInfoBitmap which, FSCatalogInfo* info, FSSpec* spec, FSRef* parent)
{
    if (!ref)
        return kStatusNotFound;
    if (info && (which & kFSCatInfoFinderInfo)) {
        platform::FinderBytes bytes;
        if (const int problem = platform::readFinderBytes(*ref.node(), bytes); problem != 0)
            return statusFromErrno(-problem);
        info->finderInfo = platform::fileInfoFrom(bytes);
    }
    const bool wantsVolume = info && (which & kFSCatInfoVolume);
    if (!wantsVolume && !spec && !parent)
        return 0;
    std::string path;
    if (const int problem = platform::locate(*ref.node(), path); problem != 0)
        return statusFromErrno(-problem);
    const platform::FileIdentity identity = ref.node()->identity();
    if (wantsVolume)
        info->volume = { identity.volume, platform::topFolderOf(path, identity.volume) };
    if (!spec && !parent)
        return 0;
    FSRef found;
    if (const OSStatus status = findParent(path, found); status != 0)
        return status;
    if (spec) {
        if (const OSStatus status = fillSpec(identity, path, found, *spec); status != 0)
            return status;
    }
    if (parent)
        *parent = std::move(found);
    return 0;
}

OSStatus FSSetCatalogInfo(const FSRef& ref, FSCatalogInfoBitmap which, const FSCatalogInfo& info)
{
    if (!ref)
        return kStatusNotFound;
    if ((which & ~kFSCatInfoFinderInfo) != 0)
        return kStatusBadParameter;
    return which ? statusFromErrno(-platform::writeFinderInfo(*ref.node(), info.finderInfo)) : 0;
}

OSStatus FSFindFolder(const FSVolumeRef& volume, OSType folderType, std::vector<FSRef>& folders)
{
    std::vector<FSRef> found;
    if (folderType == kTrashFolderType)
        for (NodeRef& folder : platform::trashFolders(volume.identifier, volume.topFolder))
            found.emplace_back(std::move(folder));
    if (found.empty())
        return kStatusNotFound;
    folders = std::move(found);
    return 0;
}
