#include "LUMFoundation/LUMFileManager_Safe.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSWorkspace.h"
#include "core/status_error.h"
#include "core/statuses.h"
#include "fileref/entry_name.h"

namespace {

using Change = bool (NSFileManager::*)(const NSRef<NSString>&, const NSRef<NSString>&, NSRef<NSError>*) const;

/// Copies or moves, and answers a handle on what has come into the folder, on a link itself.
NSRef<LUMFileRef> broughtInto(Change change, const NSRef<LUMFileRef>& fileRef,
    const NSRef<LUMFileRef>& directory, const NSRef<NSString>& name, NSRef<NSError>* error)
{
    if (!lum::isEntryName(name))
        return lum::fail(error, lum::kStatusBadName);
    const auto from = fileRef ? fileRef->path() : nullptr;
    const auto folder = directory ? directory->path() : nullptr;
    if (!from || !folder)
        return lum::fail(error, lum::kStatusNotFound);
    const auto to = folder->stringByAppendingPathComponent(name);
    const auto manager = NSFileManager::defaultManager();
    if (!((*manager).*change)(from, to, error))
        return nullptr;
    return LUMFileRef::fileRefWithPathResolveAlias(to, false, error);
}

}

NSRef<LUMFileRef> LUMFileManager_Safe::duplicateFileRef(const NSRef<LUMFileRef>& fileRef,
    const NSRef<LUMFileRef>& directory, const NSRef<NSString>& name, NSRef<NSError>* error)
{
    return broughtInto(&NSFileManager::copyItemAtPath, fileRef, directory, name, error);
}

NSRef<LUMFileRef> LUMFileManager_Safe::moveFileRef(const NSRef<LUMFileRef>& fileRef,
    const NSRef<LUMFileRef>& directory, const NSRef<NSString>& name, NSRef<NSError>* error)
{
    return broughtInto(&NSFileManager::moveItemAtPath, fileRef, directory, name, error);
}

bool LUMFileManager_Safe::trashItemAtPath(const NSRef<NSString>& path, NSRef<NSError>* error)
{
    if (!NSFileManager::defaultManager()->attributesOfItemAtPath(path, error))
        return false;
    const auto above = path->stringByDeletingLastPathComponent();
    const bool isGone = NSWorkspace::sharedWorkspace()->performFileOperation(NSWorkspaceRecycleOperation,
        above->length() > 0 ? above : NSRef<NSString>("."), "", NSArray::of(path->lastPathComponent()));
    return isGone || lum::fail(error, lum::kStatusIO);
}

NSRef<LUMFileRef> LUMFileManager_Safe::makeDirectoryAtPath(const NSRef<NSString>& path, NSRef<NSError>* error)
{
    NSRef<NSError> problem;
    const auto expanded = path ? path->stringByExpandingTildeInPath() : nullptr;
    const bool isMade =
        NSFileManager::defaultManager()->createDirectoryAtPath(expanded, false, nullptr, &problem);
    if (!isMade && problem->code() != lum::kStatusExists) {
        if (error)
            *error = problem;
        return nullptr;
    }
    auto folder = LUMFileRef::fileRefWithPath(expanded, error);
    if (folder && !folder->isDirectory())
        return lum::fail(error, lum::kStatusExists);
    return folder;
}
