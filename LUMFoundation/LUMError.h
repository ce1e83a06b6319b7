#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSError.h"

/// Errors for an application's own use. The library's own have no texts but where a header says
/// so: their code says it all.
///
///     if (OSStatus status = mountVolume())
///         error = LUMError::errorWithOSStatus(status, "The volume was not mounted.", "It is in use.");
namespace LUMError {

/// An error in NSOSStatusErrorDomain whose user information has `description` under NSLocalizedDescriptionKey
/// and `reason` under NSLocalizedFailureReasonErrorKey. A null reason is left out.
/// Deliberate: with a null description both are, and the user information is empty.
/// Threads: any.
/// Selector (of the class): errorWithOSStatus:description:reason:
LUM_EXPORT NSRef<NSError> errorWithOSStatus(
    OSStatus status, const NSRef<NSString>& description, const NSRef<NSString>& reason);

}
