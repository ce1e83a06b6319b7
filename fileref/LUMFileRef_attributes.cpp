#include "LUMFoundation/LUMFileRef.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSFileAttributes.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSImage.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSWorkspace.h"

#include <algorithm>

NSUInteger LUMFileRef::hash() const
{
    if (!mHashSet) {
        mHashSet = true;
        const auto attributes = this->attributes();
        const auto volume = attributes ? attributes->objectForKey<NSNumber>(NSFileSystemNumber) : nullptr;
        mHash = volume ? static_cast<std::uint32_t>(volume->unsignedLongLongValue()) : 0;
    }
    return mHash;
}

NSRef<NSDictionary> LUMFileRef::attributes() const
{
    const auto path = this->path();
    return path ? NSFileManager::defaultManager()->attributesOfItemAtPath(path) : nullptr;
}

void LUMFileRef::setAttributes(const NSRef<NSDictionary>& attributes)
{
    if (const auto path = this->path())
        NSFileManager::defaultManager()->setAttributes(attributes, path);
}

FileInfo LUMFileRef::fileInfo() const
{
    FSCatalogInfo info;
    FSGetCatalogInfo(mFileRef, kFSCatInfoFinderInfo, &info);
    return info.finderInfo;
}

OSStatus LUMFileRef::setFileInfo(const FileInfo& fileInfo)
{
    FSCatalogInfo info;
    info.finderInfo = fileInfo;
    return FSSetCatalogInfo(mFileRef, kFSCatInfoFinderInfo, info);
}

NSRef<NSImage> LUMFileRef::icon() const
{
    return NSWorkspace::sharedWorkspace()->iconForFile(path());
}

bool LUMFileRef::isInTrash() const
{
    FSCatalogInfo info;
    FSRef parent;
    std::vector<FSRef> trash;
    return FSGetCatalogInfo(mFileRef, kFSCatInfoVolume, &info, nullptr, &parent) == 0
        && FSFindFolder(info.volume, kTrashFolderType, trash) == 0
        && std::ranges::any_of(
            trash, [&](const FSRef& folder) { return FSCompareFSRefs(parent, folder) == 0; });
}
