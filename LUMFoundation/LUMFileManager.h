#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSString.h"

#include <cstdint>

class LUMFileRef;
class NSURL;

/// Files by reference: free names, copies, moves, the trash, and folders made on demand.
///
/// Every file manager answers these as dynamic calls too; a class derived from NSFileManager that has a
/// method of the same selector is asked instead. A null manager answers null, false or 0. Null references,
/// names and paths are those of nothing. A `handler` is accepted and never called. Failures are told by null,
/// false or 0 alone, but for createDirectoryAtPath. Threads: as for the references.
///
/// Copies and moves under a name answer null and touch nothing when it is no name: empty, ".", "..", or with
/// a slash or NUL in it.
///
/// Some of these do what nobody expects at first sight, and are kept that way for those who count on it;
/// LUMFileManager_Safe.h has calls that do not.
///
///     auto manager = NSFileManager::defaultManager();
///     auto folder = LUMFileManager::createDirectoryAtPath(manager, "~/Takes", true, &error);
///     auto copy = LUMFileManager::duplicateFileRefWithEnumeratedName(
///         manager, take, folder, take->name(), 1000); // Take 1.aif, if there is a Take.aif
namespace LUMFileManager {

/// The first of "Take.aif", "Take 1.aif", "Take 2.aif", ... that is no child of the folder; null when the
/// first `maxTries` of them are taken. A name without an extension stays without. Links are followed, so one
/// that dangles leaves its name free; in what is no folder every name is. About 10 µs a name.
/// Selector: enumeratedName:inDirectory:maxTries:handler:
LUM_EXPORT NSRef<NSString> enumeratedName(const NSRef<NSFileManager>& manager, const NSRef<NSString>& name,
    const NSRef<LUMFileRef>& directory, std::uint64_t maxTries, const NSId& handler = nullptr);

/// Copies the file, or the folder with all that is in it, under this name into the folder. Answers a handle
/// on the copy, or null.
///
/// Deliberate: when the copy fails, whatever is at its place is removed, and that is also what stood there
/// before, or, when that is a link, what it leads to. Use LUMFileManager_Safe::duplicateFileRef where
/// something may.
/// Selector: duplicateFileRef:inDirectory:withName:handler:
LUM_EXPORT NSRef<LUMFileRef> duplicateFileRefWithName(const NSRef<NSFileManager>& manager,
    const NSRef<LUMFileRef>& fileRef, const NSRef<LUMFileRef>& directory, const NSRef<NSString>& name,
    const NSId& handler = nullptr);
/// The same under the name that enumeratedName gives; null when there is none.
/// Selector: duplicateFileRef:inDirectory:withEnumeratedName:maxTries:handler:
LUM_EXPORT NSRef<LUMFileRef> duplicateFileRefWithEnumeratedName(const NSRef<NSFileManager>& manager,
    const NSRef<LUMFileRef>& fileRef, const NSRef<LUMFileRef>& directory, const NSRef<NSString>& name,
    std::uint64_t maxTries, const NSId& handler = nullptr);

/// Moves what is at a path, a link itself, to one where nothing is; see NSFileManager::moveItemAtPath, which
/// tells why it failed.
/// Selector: fastMovePath:toPath:handler:
[[nodiscard]] LUM_EXPORT bool fastMovePath(const NSRef<NSFileManager>& manager, const NSRef<NSString>& path,
    const NSRef<NSString>& toPath, const NSId& handler = nullptr);
/// Moves the file under this name into the folder, if nothing of that name is there. Answers a handle on what
/// is there then, or null.
/// Selector: moveFileRef:toDirectory:withName:handler:
LUM_EXPORT NSRef<LUMFileRef> moveFileRefWithName(const NSRef<NSFileManager>& manager,
    const NSRef<LUMFileRef>& fileRef, const NSRef<LUMFileRef>& directory, const NSRef<NSString>& name,
    const NSId& handler = nullptr);
/// The same under the name that enumeratedName gives; null when there is none.
/// Selector: moveFileRef:toDirectory:withEnumeratedName:maxTries:handler:
LUM_EXPORT NSRef<LUMFileRef> moveFileRefWithEnumeratedName(const NSRef<NSFileManager>& manager,
    const NSRef<LUMFileRef>& fileRef, const NSRef<LUMFileRef>& directory, const NSRef<NSString>& name,
    std::uint64_t maxTries, const NSId& handler = nullptr);

/// Moves the file to the trash of the desktop, if it is still there.
/// Selector: trashFileRef:
LUM_EXPORT void trashFileRef(const NSRef<NSFileManager>& manager, const NSRef<LUMFileRef>& fileRef);
/// The same by path. Deliberate: a link is followed, so its target goes to the trash and the link stays. Use
/// LUMFileManager_Safe::trashItemAtPath for links.
/// Selector: trashFileAtPath:
LUM_EXPORT void trashFileAtPath(const NSRef<NSFileManager>& manager, const NSRef<NSString>& path);

/// Makes an empty file or folder where nothing is; a leading tilde is expanded. Null when something is there
/// or it cannot be made.
/// Selector: createFileRefAtPath:asDirectory:
LUM_EXPORT NSRef<LUMFileRef> createFileRefAtPath(
    const NSRef<NSFileManager>& manager, const NSRef<NSString>& path, bool asDirectory);
/// The same by folder and name.
/// Selector: createFileRefWithName:inDirectory:asDirectory:
LUM_EXPORT NSRef<LUMFileRef> createFileRefWithName(const NSRef<NSFileManager>& manager,
    const NSRef<NSString>& name, const NSRef<LUMFileRef>& directory, bool asDirectory);
/// The folder at a path, links followed and a leading tilde expanded; made with those above it when it is
/// missing and `createIntermediates`.
///
/// Deliberate: without `createIntermediates` it never makes one, and -120 is stored for a missing folder. For
/// anything else that is there the error 0x21446972 is stored, and a handle on that is answered all the same:
/// test the error. Null otherwise: the error of the path or of the making; -120 when there is none; -37 for a
/// path of more than 10240 characters. `error` is untouched when all is well. See
/// LUMFileManager_Safe::makeDirectoryAtPath.
/// Selector: createDirectoryAtPath:withIntermediateDirectories:error:
LUM_EXPORT NSRef<LUMFileRef> createDirectoryAtPath(const NSRef<NSFileManager>& manager,
    const NSRef<NSString>& path, bool createIntermediates, NSRef<NSError>* error = nullptr);

/// The bytes in a file, or in all files of a folder at any depth, whatever their names; links in it count
/// with their own size, and folders with none. 0 when nothing is there. About 5 µs a file.
/// Selector: sizeAtPath:
LUM_EXPORT std::uint64_t sizeAtPath(const NSRef<NSFileManager>& manager, const NSRef<NSString>& path);

/// The URL of a new name in the folder for temporary files: BASE_UUID.EXTENSION. Nothing is made there. Null
/// for a null base or extension.
/// Selector: tempFileURLWithBase:extension:
LUM_EXPORT NSRef<NSURL> tempFileURLWithBase(
    const NSRef<NSFileManager>& manager, const NSRef<NSString>& base, const NSRef<NSString>& extension);

}
