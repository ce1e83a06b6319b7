#include "LUMPlatform/NSFileAttributes.h"

const NSStringConstant NSFileType("NSFileType");
const NSStringConstant NSFileSize("NSFileSize");
const NSStringConstant NSFileModificationDate("NSFileModificationDate");
const NSStringConstant NSFileCreationDate("NSFileCreationDate");
const NSStringConstant NSFilePosixPermissions("NSFilePosixPermissions");
const NSStringConstant NSFileReferenceCount("NSFileReferenceCount");
const NSStringConstant NSFileSystemNumber("NSFileSystemNumber");
const NSStringConstant NSFileSystemFileNumber("NSFileSystemFileNumber");
const NSStringConstant NSFileOwnerAccountID("NSFileOwnerAccountID");
const NSStringConstant NSFileGroupOwnerAccountID("NSFileGroupOwnerAccountID");

const NSStringConstant NSFileTypeDirectory("NSFileTypeDirectory");
const NSStringConstant NSFileTypeRegular("NSFileTypeRegular");
const NSStringConstant NSFileTypeSymbolicLink("NSFileTypeSymbolicLink");
const NSStringConstant NSFileTypeSocket("NSFileTypeSocket");
const NSStringConstant NSFileTypeCharacterSpecial("NSFileTypeCharacterSpecial");
const NSStringConstant NSFileTypeBlockSpecial("NSFileTypeBlockSpecial");
const NSStringConstant NSFileTypeUnknown("NSFileTypeUnknown");
