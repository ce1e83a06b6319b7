#pragma once

#include "LUMPlatform/NSStringConstant.h"

// The keys of what NSFileManager::attributesOfItemAtPath tells of a file, and the values of NSFileType.
//
//     auto attributes = manager->attributesOfItemAtPath("/home/me/Take 1.aif");
//     if (attributes && NSEqual(attributes->objectForKey(NSFileType), NSFileTypeRegular))
//         std::cout << attributes->objectForKey(NSFileSize) << " bytes\n";

/// What it is: one of the NSFileType... texts below.
extern NS_EXPORT const NSStringConstant NSFileType;
/// Its length in bytes, a number; of a folder what the file system says.
extern NS_EXPORT const NSStringConstant NSFileSize;
/// When its content last changed, an NSDate.
extern NS_EXPORT const NSStringConstant NSFileModificationDate;
/// When it came into being, an NSDate; not there where the file system does not keep it.
extern NS_EXPORT const NSStringConstant NSFileCreationDate;
/// Who may do what, a number: the lower twelve bits of the mode.
extern NS_EXPORT const NSStringConstant NSFilePosixPermissions;
/// How many names (hard links) it has, a number.
extern NS_EXPORT const NSStringConstant NSFileReferenceCount;
/// Which volume it is on, a number of 32 bits made of the file system's id: equal for all files of a volume,
/// also where their device numbers differ.
extern NS_EXPORT const NSStringConstant NSFileSystemNumber;
/// Its number on the volume (the inode), a number.
extern NS_EXPORT const NSStringConstant NSFileSystemFileNumber;
/// Who owns it, a number.
extern NS_EXPORT const NSStringConstant NSFileOwnerAccountID;
/// Which group it belongs to, a number.
extern NS_EXPORT const NSStringConstant NSFileGroupOwnerAccountID;

extern NS_EXPORT const NSStringConstant NSFileTypeDirectory; ///< A folder.
extern NS_EXPORT const NSStringConstant NSFileTypeRegular; ///< A plain file.
extern NS_EXPORT const NSStringConstant NSFileTypeSymbolicLink;
extern NS_EXPORT const NSStringConstant NSFileTypeSocket;
extern NS_EXPORT const NSStringConstant NSFileTypeCharacterSpecial;
extern NS_EXPORT const NSStringConstant NSFileTypeBlockSpecial;
extern NS_EXPORT const NSStringConstant NSFileTypeUnknown; ///< Anything else, as a pipe.
