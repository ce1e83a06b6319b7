#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSString.h"

class LUMFileRef;
class NSError;

/// What LUMFileManager does in ways that may surprise, without the surprise, and with errors. They are in
/// NSOSStatusErrorDomain; see NSFileManager for the codes. Nothing here removes or replaces what stood at a
/// place, or follows a link that is itself named. Threads: as for the references.
///
///     NSRef<NSError> error;
///     if (!LUMFileManager_Safe::duplicateFileRef(take, folder, "Take.aif", &error))
///         std::cerr << error << '\n'; // -48 when there is one, which stays
namespace LUMFileManager_Safe {

/// Copies the file, or the folder with all that is in it, into the folder; -48 when something of that name is
/// there, -43 when one of the two is gone, -37 for what is no name (empty, ".", "..", with a slash or NUL).
LUM_EXPORT NSRef<LUMFileRef> duplicateFileRef(const NSRef<LUMFileRef>& fileRef,
    const NSRef<LUMFileRef>& directory, const NSRef<NSString>& name, NSRef<NSError>* error = nullptr);
/// Moves likewise.
LUM_EXPORT NSRef<LUMFileRef> moveFileRef(const NSRef<LUMFileRef>& fileRef, const NSRef<LUMFileRef>& directory,
    const NSRef<NSString>& name, NSRef<NSError>* error = nullptr);

/// Moves what is at the path to the trash of the desktop, a link itself; -43 when nothing is there, -36 when
/// no trash takes it.
[[nodiscard]] LUM_EXPORT bool trashItemAtPath(const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);

/// The folder at the path, made when it is missing; a leading tilde is expanded. -43 when the one above is
/// missing, -48 when something else is there.
LUM_EXPORT NSRef<LUMFileRef> makeDirectoryAtPath(
    const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);

}
