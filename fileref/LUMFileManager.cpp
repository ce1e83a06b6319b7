#include "LUMFoundation/LUMFileManager.h"

#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSDirectoryEnumerator.h"
#include "LUMPlatform/NSFileAttributes.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSPathUtilities.h"
#include "LUMPlatform/NSURL.h"
#include "LUMPlatform/NSUUID.h"
#include "LUMPlatform/NSWorkspace.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"
#include "fileref/entry_name.h"

namespace {

using Manager = NSRef<NSFileManager>;
using Reference = NSRef<LUMFileRef>;
using Text = NSRef<NSString>;

Text pathOf(const Reference& fileRef)
{
    return fileRef ? fileRef->path() : nullptr;
}

/// Null when the folder is gone or there is no name.
Text pathInside(const Reference& directory, const Text& name)
{
    const auto path = pathOf(directory);
    return path && name ? path->stringByAppendingPathComponent(name) : nullptr;
}

bool isFolder(const NSRef<NSDictionary>& attributes)
{
    return attributes && NSEqual(attributes->objectForKey(NSFileType), NSFileTypeDirectory);
}

std::uint64_t sizeIn(const NSRef<NSDictionary>& attributes)
{
    const auto size = attributes ? attributes->objectForKey<NSNumber>(NSFileSize) : nullptr;
    return size ? size->unsignedLongLongValue() : 0;
}

Text freeName(const Manager& /*manager*/, const Text& name, const Reference& directory,
    std::uint64_t maxTries, const NSId& /*handler*/)
{
    if (!name)
        return nullptr;
    const auto extension = name->pathExtension();
    const auto base = extension->length() > 0 ? name->stringByDeletingPathExtension() : name;
    for (std::uint64_t i = 0; i < maxTries; ++i) {
        const auto numbered = i == 0 ? base : base->stringByAppendingFormat(" %d", i);
        auto candidate = numbered->stringByAppendingPathExtension(extension);
        if (candidate && (!directory || !directory->childWithName(candidate)))
            return candidate;
    }
    return nullptr;
}

/// A free name for what is to come into the folder; numbers do not make a name of what is none.
Text freeEntryName(
    const Manager& manager, const Text& name, const Reference& directory, std::uint64_t maxTries)
{
    return lum::isEntryName(name) ? LUMFileManager::enumeratedName(manager, name, directory, maxTries)
                                  : nullptr;
}

Reference duplicate(const Manager& manager, const Reference& fileRef, const Reference& directory,
    const Text& name, const NSId& /*handler*/)
{
    if (!lum::isEntryName(name)) // it would be the folder itself, or one above, that is removed below
        return nullptr;
    const auto destination = pathInside(directory, name);
    const bool isCopied = manager->copyItemAtPath(pathOf(fileRef), destination);
    auto result = destination ? LUMFileRef::fileRefWithPath(destination) : nullptr;
    if (isCopied || !result)
        return result;
    // Deliberate: what is there now goes, even if it stood there before; of a link, what it leads to.
    manager->removeItemAtPath(result->path());
    return nullptr;
}

Reference duplicateEnumerated(const Manager& manager, const Reference& fileRef, const Reference& directory,
    const Text& name, std::uint64_t maxTries, const NSId& handler)
{
    const auto chosen = freeEntryName(manager, name, directory, maxTries);
    return chosen ? LUMFileManager::duplicateFileRefWithName(manager, fileRef, directory, chosen, handler)
                  : nullptr;
}

bool fastMove(const Manager& /*manager*/, const Text& path, const Text& toPath, const NSId& /*handler*/)
{
    return NSFileManager::defaultManager()->moveItemAtPath(path, toPath);
}

Reference move(const Manager& manager, const Reference& fileRef, const Reference& directory, const Text& name,
    const NSId& handler)
{
    if (!lum::isEntryName(name))
        return nullptr;
    const auto destination = pathInside(directory, name);
    const bool isMoved = LUMFileManager::fastMovePath(manager, pathOf(fileRef), destination, handler);
    return isMoved ? LUMFileRef::fileRefWithPath(destination) : nullptr;
}

Reference moveEnumerated(const Manager& manager, const Reference& fileRef, const Reference& directory,
    const Text& name, std::uint64_t maxTries, const NSId& handler)
{
    const auto chosen = freeEntryName(manager, name, directory, maxTries);
    return chosen ? LUMFileManager::moveFileRefWithName(manager, fileRef, directory, chosen, handler)
                  : nullptr;
}

void trash(const Manager& /*manager*/, const Reference& fileRef)
{
    const auto path = pathOf(fileRef);
    if (!path)
        return;
    NSWorkspace::sharedWorkspace()->performFileOperation(
        NSWorkspaceRecycleOperation, pathOf(fileRef->parent()), "", NSArray::of(path->lastPathComponent()));
}

void trashAtPath(const Manager& manager, const Text& path)
{
    // Deliberate: the reference follows a link, so it is the target that goes.
    LUMFileManager::trashFileRef(manager, LUMFileRef::fileRefWithPath(path));
}

/// Makes a new file and never empties one that comes into being meanwhile.
bool createFile(const Text& path)
{
    const auto above = path->stringByDeletingLastPathComponent();
    const auto folder = LUMFileRef::fileRefWithPath(above->length() > 0 ? above : Text("."));
    return folder && folder->createChildWithName(path->lastPathComponent(), false);
}

Reference createAtPath(const Manager& manager, const Text& path, bool asDirectory)
{
    if (!path || manager->fileExistsAtPath(path))
        return nullptr;
    const auto expanded = path->stringByExpandingTildeInPath();
    const bool isMade = asDirectory ? manager->createDirectoryAtPath(expanded, false) : createFile(expanded);
    return isMade ? LUMFileRef::fileRefWithPath(path) : nullptr;
}

Reference createNamed(const Manager& manager, const Text& name, const Reference& directory, bool asDirectory)
{
    return LUMFileManager::createFileRefAtPath(manager, pathInside(directory, name), asDirectory);
}

std::uint64_t sizeOfItem(const Manager& /*manager*/, const Text& path)
{
    const auto manager = NSFileManager::defaultManager();
    const auto attributes =
        manager->attributesOfItemAtPath(NSPathUtilities::stringByResolvingSymlinksInPath(path));
    if (!isFolder(attributes))
        return sizeIn(attributes);
    const auto files = manager->enumeratorAtPath(path);
    std::uint64_t size = 0;
    while (files && files->step()) { // also to names that are no text
        const auto found = files->fileAttributes();
        if (!isFolder(found))
            size += sizeIn(found);
    }
    return size;
}

NSRef<NSURL> temporaryURL(const Manager& manager, const Text& base, const Text& extension)
{
    const auto uuid = base && extension ? NSUUID::UUID() : nullptr;
    if (!uuid)
        return nullptr;
    const auto name = NSString::stringWithFormat("%@_%@", base, uuid->UUIDString());
    const auto path =
        NSTemporaryDirectory()->stringByAppendingPathComponent(name)->stringByAppendingPathExtension(
            extension);
    return path && !manager->fileExistsAtPath(path) ? NSURL::fileURLWithPath(path) : nullptr;
}

using lum::ExtensionOperation;
using EnumeratedName = ExtensionOperation<"enumeratedName:inDirectory:maxTries:handler:", &freeName>;
using Duplicate = ExtensionOperation<"duplicateFileRef:inDirectory:withName:handler:", &duplicate>;
using DuplicateEnumerated =
    ExtensionOperation<"duplicateFileRef:inDirectory:withEnumeratedName:maxTries:handler:",
        &duplicateEnumerated>;
using FastMove = ExtensionOperation<"fastMovePath:toPath:handler:", &fastMove>;
using Move = ExtensionOperation<"moveFileRef:toDirectory:withName:handler:", &move>;
using MoveEnumerated =
    ExtensionOperation<"moveFileRef:toDirectory:withEnumeratedName:maxTries:handler:", &moveEnumerated>;
using Trash = ExtensionOperation<"trashFileRef:", &trash>;
using TrashAtPath = ExtensionOperation<"trashFileAtPath:", &trashAtPath>;
using CreateAtPath = ExtensionOperation<"createFileRefAtPath:asDirectory:", &createAtPath>;
using CreateNamed = ExtensionOperation<"createFileRefWithName:inDirectory:asDirectory:", &createNamed>;
using SizeAtPath = ExtensionOperation<"sizeAtPath:", &sizeOfItem>;
using TempFileURL = ExtensionOperation<"tempFileURLWithBase:extension:", &temporaryURL>;

constexpr NSMethod kMethods[] = {
    DuplicateEnumerated::method(),
    MoveEnumerated::method(),
    EnumeratedName::method(),
    Duplicate::method(),
    FastMove::method(),
    Move::method(),
    Trash::method(),
    TrashAtPath::method(),
    CreateAtPath::method(),
    CreateNamed::method(),
    SizeAtPath::method(),
    TempFileURL::method(),
};

}

std::span<const NSMethod> lum::fileManagerMethods()
{
    return kMethods;
}

namespace LUMFileManager {

Text enumeratedName(const Manager& manager, const Text& name, const Reference& directory,
    std::uint64_t maxTries, const NSId& handler)
{
    return EnumeratedName::call(manager, name, directory, maxTries, handler);
}

Reference duplicateFileRefWithName(const Manager& manager, const Reference& fileRef,
    const Reference& directory, const Text& name, const NSId& handler)
{
    return Duplicate::call(manager, fileRef, directory, name, handler);
}

Reference duplicateFileRefWithEnumeratedName(const Manager& manager, const Reference& fileRef,
    const Reference& directory, const Text& name, std::uint64_t maxTries, const NSId& handler)
{
    return DuplicateEnumerated::call(manager, fileRef, directory, name, maxTries, handler);
}

bool fastMovePath(const Manager& manager, const Text& path, const Text& toPath, const NSId& handler)
{
    return FastMove::call(manager, path, toPath, handler);
}

Reference moveFileRefWithName(const Manager& manager, const Reference& fileRef, const Reference& directory,
    const Text& name, const NSId& handler)
{
    return Move::call(manager, fileRef, directory, name, handler);
}

Reference moveFileRefWithEnumeratedName(const Manager& manager, const Reference& fileRef,
    const Reference& directory, const Text& name, std::uint64_t maxTries, const NSId& handler)
{
    return MoveEnumerated::call(manager, fileRef, directory, name, maxTries, handler);
}

void trashFileRef(const Manager& manager, const Reference& fileRef)
{
    Trash::call(manager, fileRef);
}

void trashFileAtPath(const Manager& manager, const Text& path)
{
    TrashAtPath::call(manager, path);
}

Reference createFileRefAtPath(const Manager& manager, const Text& path, bool asDirectory)
{
    return CreateAtPath::call(manager, path, asDirectory);
}

Reference createFileRefWithName(
    const Manager& manager, const Text& name, const Reference& directory, bool asDirectory)
{
    return CreateNamed::call(manager, name, directory, asDirectory);
}

std::uint64_t sizeAtPath(const Manager& manager, const Text& path)
{
    return SizeAtPath::call(manager, path);
}

NSRef<NSURL> tempFileURLWithBase(const Manager& manager, const Text& base, const Text& extension)
{
    return TempFileURL::call(manager, base, extension);
}

}
